#include "particle/ParticleData.h"

#include <algorithm>
#include <limits>

#include "geometry/GeometryDataGroup.h"
#include "scene/BoundingBox.h"

namespace Velun {

namespace {

const int kInitialVertices = 12;

}  // namespace

ParticleData::ParticleIndexData::ParticleIndexData() : AbstractGeometryData(true), mCount(0) {}

ParticleData::ParticleIndexData::~ParticleIndexData() {}

const void* ParticleData::ParticleIndexData::getIndexList() const { return mIndexList.get(); }

unsigned int ParticleData::ParticleIndexData::getCount() const { return mCount; }

DataType::Type ParticleData::ParticleIndexData::getIndexType() const { return DataType::UnsignedInt; }

std::uint32_t* ParticleData::ParticleIndexData::beginRebuild(unsigned int slots) {
    const unsigned int bytes = slots * sizeof(std::uint32_t);
    if (mIndexList.isNull())
        mIndexList.alloc(bytes);
    else if (mIndexList.getByteSize() != bytes)
        mIndexList.resize(bytes);
    return static_cast<std::uint32_t*>(mIndexList.get());
}

void ParticleData::ParticleIndexData::endRebuild(unsigned int count) {
    mCount = count;
    setModified();
}

ParticleData::ParticleIndexElement::ParticleIndexElement() : ElementData(Points) {}

ParticleData::ParticleIndexElement::~ParticleIndexElement() {}

IndexDataSet& ParticleData::ParticleIndexElement::getIndexList() { return mIndexData; }

ParticleData::ParticleData()
    : mGeometry(new GeometryData("particles")), mIndexElement(nullptr), mCurrentIndex(-1) {}

ParticleData::~ParticleData() {}

void ParticleData::initialize() {
    mGeometry->clearGroups();
    mActive.clear();
    mVelocities.clear();
    mDeathTime.clear();
    mSizes.clear();
    mFreeSlots = Dorvan::Stack<unsigned int>();
    mCurrentIndex = -1;

    mVertexData = Dorvan::SharedPtr<VertexData>(new VertexData());
    mVertexData->setUseColor(false);
    mVertexData->setUseTexCoordinates(true);
    mVertexData->addTextureIndex(0);
    mVertexData->initialize(kInitialVertices, kInitialVertices);
    mIndexElement = new ParticleIndexElement();
    mGeometry->createGroup().addElement(*mIndexElement);
    mGeometry->setIndexedVertexData(mVertexData);
    mGeometry->setBoundingVolume(new BoundingBox());
    mGeometry->volumeChanged();
}

Dorvan::SharedPtr<Geometry> ParticleData::getGeometryData() const {
    return Dorvan::SharedPtr<Geometry>(mGeometry);
}

unsigned int ParticleData::takeSlot() {
    if (!mFreeSlots.isEmpty()) {
        unsigned int slot = mFreeSlots.top();
        mFreeSlots.pop();
        return slot;
    }
    // Growing by the present capacity keeps filling linear in the number of particles.
    if (mVertexData->getCount() >= mVertexData->getCapacity())
        mVertexData->setGrowth(static_cast<int>(std::max(mVertexData->getCapacity(), 1u)));
    mVertexData->addVertex();
    mVertexData->setTexCoordinate(0, 0, 0);
    mActive.push_back(0);
    mVelocities.insert(mVelocities.end(), 3, 0.0f);
    mDeathTime.push_back(0);
    mSizes.push_back(1.0f);
    return getSlotCount() - 1;
}

int ParticleData::addParticle(Dorvan::TVector<float, 3> const& position, std::int64_t deathTime) {
    if (!isInitialized())
        return -1;
    const unsigned int slot = takeSlot();
    mCurrentIndex = static_cast<int>(slot);
    mActive[slot] = 1;
    mDeathTime[slot] = deathTime;
    mSizes[slot] = 1.0f;
    std::fill_n(mVelocities.begin() + 3 * slot, 3, 0.0f);
    setPosition(position);
    return mCurrentIndex;
}

void ParticleData::deleteParticle() {
    if (!hasCurrent() || !mActive[mCurrentIndex])
        return;
    mActive[mCurrentIndex] = 0;
    mFreeSlots.push(static_cast<unsigned int>(mCurrentIndex));
}

bool ParticleData::setParticle(int i) {
    if (i >= static_cast<int>(getSlotCount()))
        return false;
    mCurrentIndex = i < 0 ? -1 : i;
    return true;
}

bool ParticleData::nextParticle() {
    const unsigned int slots = getSlotCount();
    for (unsigned int i = static_cast<unsigned int>(mCurrentIndex + 1); i < slots; ++i) {
        if (mActive[i]) {
            mCurrentIndex = static_cast<int>(i);
            return true;
        }
    }
    mCurrentIndex = -1;
    return false;
}

float* ParticleData::getPositionArray() { return isInitialized() ? mVertexData->getVertexArray() : nullptr; }

void ParticleData::setPosition(Dorvan::TVector<float, 3> const& position) {
    float* positions = getPositionArray();
    if (!hasCurrent() || !positions)
        return;
    std::copy(position.m, position.m + 3, positions + 3 * mCurrentIndex);
}

Dorvan::TVector<float, 3> ParticleData::getPosition() const {
    if (!hasCurrent())
        return Dorvan::TVector<float, 3>(0, 0, 0);
    const float* p = static_cast<const float*>(mVertexData->getVertices()) + 3 * mCurrentIndex;
    return Dorvan::TVector<float, 3>(p[0], p[1], p[2]);
}

void ParticleData::setVelocity(Dorvan::TVector<float, 3> const& velocity) {
    if (hasCurrent())
        std::copy(velocity.m, velocity.m + 3, mVelocities.begin() + 3 * mCurrentIndex);
}

Dorvan::TVector<float, 3> ParticleData::getVelocity() const {
    if (!hasCurrent())
        return Dorvan::TVector<float, 3>(0, 0, 0);
    const float* v = mVelocities.data() + 3 * mCurrentIndex;
    return Dorvan::TVector<float, 3>(v[0], v[1], v[2]);
}

void ParticleData::setSize(float size) {
    if (hasCurrent())
        mSizes[mCurrentIndex] = size;
}

void ParticleData::setMaxTime(std::int64_t deathTime) {
    if (hasCurrent())
        mDeathTime[mCurrentIndex] = deathTime;
}

std::int64_t ParticleData::getMaxTime() const { return hasCurrent() ? mDeathTime[mCurrentIndex] : 0; }

bool ParticleData::isActive() const { return hasCurrent() && mActive[mCurrentIndex]; }

ParticleData::Particle ParticleData::getParticle() const {
    Particle particle{isActive(), getVelocity(), getMaxTime(), hasCurrent() ? mSizes[mCurrentIndex] : 0.0f};
    return particle;
}

void ParticleData::setColor(Color const&) {}

unsigned int ParticleData::getParticleCount(bool) const { return getSlotCount() - mFreeSlots.size(); }

unsigned int ParticleData::updateData(std::int64_t) {
    if (!isInitialized())
        return 0;
    const unsigned int slots = getSlotCount();
    std::uint32_t* list = mIndexElement->getParticleIndexData().beginRebuild(mVertexData->getCapacity());
    const float* positions = static_cast<const float*>(mVertexData->getVertices());
    const unsigned char* active = mActive.data();
    // The extent in six scalars, which stay in registers through the loop.
    const float inf = std::numeric_limits<float>::infinity();
    float loX = inf, loY = inf, loZ = inf, hiX = -inf, hiY = -inf, hiZ = -inf;
    unsigned int count = 0;
    for (unsigned int i = 0; i < slots; ++i) {
        if (!active[i])
            continue;
        list[count++] = i;
        const float* p = positions + 3 * i;
        loX = std::min(loX, p[0]);
        loY = std::min(loY, p[1]);
        loZ = std::min(loZ, p[2]);
        hiX = std::max(hiX, p[0]);
        hiY = std::max(hiY, p[1]);
        hiZ = std::max(hiZ, p[2]);
    }
    mIndexElement->getParticleIndexData().endRebuild(count);
    const float lo[3] = {loX, loY, loZ}, hi[3] = {hiX, hiY, hiZ};
    setBox(count, lo, hi);
    mVertexData->setModified();
    return count;
}

void ParticleData::setBox(unsigned int count, float const* lo, float const* hi) {
    BoundingBox* box = static_cast<BoundingBox*>(mGeometry->getBoundingVolume());
    const bool wasEmpty = box->getState() == BoundingVolume::StateEmpty;
    if (count == 0) {
        box->setEmpty();
        if (!wasEmpty)
            mGeometry->volumeChanged();
        return;
    }
    const Point& oldMin = box->getMin();
    const Point& oldMax = box->getMax();
    if (!wasEmpty && std::equal(lo, lo + 3, oldMin.m) && std::equal(hi, hi + 3, oldMax.m))
        return;
    box->setEmpty();
    box->merge(Point(lo[0], lo[1], lo[2]));
    box->merge(Point(hi[0], hi[1], hi[2]));
    mGeometry->volumeChanged();
}

void ParticleData::clear() {
    if (!isInitialized())
        return;
    const unsigned int slots = getSlotCount();
    for (unsigned int i = 0; i < slots; ++i) {
        if (mActive[i]) {
            mActive[i] = 0;
            mFreeSlots.push(i);
        }
    }
    updateData(0);
}

}  // namespace Velun
