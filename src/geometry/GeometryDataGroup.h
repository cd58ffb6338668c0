#pragma once

#include "geometry/GeometryGroup.h"
#include "velun_export.h"

namespace Velun {

class ElementData;

// A group that owns its elements.
class VELUN_EXPORT GeometryDataGroup : public GeometryGroup {
public:
    explicit GeometryDataGroup(unsigned int groupIndex);
    ~GeometryDataGroup() override;

    unsigned int getMaterialIndex() const override;
    Dorvan::Vector<GeometryElement*>& getElementList(int) override;
    const Dorvan::Vector<GeometryElement*>& getElementList() const;

    void setMaterialIndex(unsigned int index);
    // Position of the group in its geometry.
    unsigned int getGroupIndex() const;

    // Appends the element and takes ownership of it.
    void addElement(ElementData& element);
    // Deletes every element.
    void clearElements();

    GeometryDataGroup(const GeometryDataGroup&) = delete;
    GeometryDataGroup& operator=(const GeometryDataGroup&) = delete;

private:
    Dorvan::Vector<GeometryElement*> mElements;
    unsigned int mMaterialIndex;
    unsigned int mGroupIndex;
};

}  // namespace Velun
