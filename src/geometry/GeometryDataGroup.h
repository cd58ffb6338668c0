#pragma once

#include "geometry/GeometryGroup.h"
#include "velun_export.h"

namespace Velun {

class ElementData;

// A group that owns its elements.
class VELUN_EXPORT GeometryDataGroup : public GeometryGroup {
public:
    explicit GeometryDataGroup(unsigned int groupIndex);
    virtual ~GeometryDataGroup();

    virtual unsigned int getMaterialIndex() const;
    virtual Dorvan::Vector<GeometryElement*>& getElementList(int);
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
