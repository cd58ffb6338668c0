#include "geometry/GeometryDataGroup.h"

#include "geometry/ElementData.h"

namespace Velun {

GeometryDataGroup::GeometryDataGroup(unsigned int groupIndex) : mMaterialIndex(0), mGroupIndex(groupIndex) {}

GeometryDataGroup::~GeometryDataGroup() { clearElements(); }

unsigned int GeometryDataGroup::getMaterialIndex() const { return mMaterialIndex; }

Dorvan::Vector<GeometryElement*>& GeometryDataGroup::getElementList(int) { return mElements; }

const Dorvan::Vector<GeometryElement*>& GeometryDataGroup::getElementList() const { return mElements; }

void GeometryDataGroup::setMaterialIndex(unsigned int index) { mMaterialIndex = index; }

unsigned int GeometryDataGroup::getGroupIndex() const { return mGroupIndex; }

void GeometryDataGroup::addElement(ElementData& element) {
    mElements.add(static_cast<GeometryElement*>(&element));
}

void GeometryDataGroup::clearElements() {
    for (unsigned int i = 0; i < mElements.size(); ++i)
        delete mElements.get(i);
    mElements.clear();
}

}  // namespace Velun
