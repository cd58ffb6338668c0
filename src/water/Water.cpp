#include "water/Water.h"

#include <algorithm>

#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometrySubobject.h"
#include "geometry/IndexedQuadStrip.h"
#include "geometry/VertexData.h"
#include "terrain/Terrain.h"

namespace Velun {

namespace {

// Room for six lines at first; appendVertices doubles the arrays from there.
const int kArrayStep = 12;

}  // namespace

Water::Water() : mTerrain(nullptr), mFirstLine(nullptr), mStrip(nullptr), mSubobject(nullptr) {
    buildDrawing();
}

Water::Water(std::string const& name)
    : ObjectNode(name), mTerrain(nullptr), mFirstLine(nullptr), mStrip(nullptr), mSubobject(nullptr) {
    buildDrawing();
}

Water::~Water() {
    detachChilds();
    delete mSubobject;
    for (unsigned int i = 0; i < mQuads.size(); ++i)
        delete mQuads.get(i);
    delete mFirstLine;
}

// The whole chain exists before the first quad, so an empty water can be attached and
// drawn; the subobject has no material, so the renderer takes the water's.
void Water::buildDrawing() {
    mGeometry = Dorvan::SharedPtr<GeometryData>(new GeometryData("water"));
    mGeometry->setBoundingVolume(new BoundingBox());
    mVertices = Dorvan::SharedPtr<VertexData>(new VertexData());
    mVertices->setUseNormal(true);
    mVertices->initialize(kArrayStep, kArrayStep);
    mGeometry->setIndexedVertexData(mVertices);
    mStrip = new IndexedQuadStrip();
    mGeometry->createGroup().addElement(*mStrip);
    mSubobject = new GeometrySubobject("water");
    mSubobject->setGeometry(Dorvan::SharedPtr<Geometry>(mGeometry), 0);
    attachChild(*mSubobject);

    mMaterial = Dorvan::SharedPtr<Material>(new Material());
    mMaterial->setUseMaterialColor(true);
    mMaterial->setUseDefaultVertexColor(true);
    mMaterial->setDefaultVertexColor(Color(0.05f, 0.25f, 0.4f, 1.0f));
    mMaterial->setUseBlending(true);
    mMaterial->setBlendMode(Material::ConstantAlphaBlend);
    mMaterial->setBlendColor(Color(0.05f, 0.25f, 0.4f, 0.88f));
}

void Water::initialize() {}

void Water::setTerrain(Terrain& terrain) { mTerrain = &terrain; }

void Water::addQuad(Dorvan::TVector<float, 4> const& start, Dorvan::TVector<float, 4> const& end,
                    Dorvan::TVector<float, 3> const& velocity) {
    if (!mFirstLine) {
        mFirstLine = new LineSegment(this, start, end, velocity);
    } else {
        LineSegment* previous = mQuads.isEmpty() ? mFirstLine : mQuads.get(mQuads.size() - 1);
        mQuads.add(new QuadSegment(this, previous, mQuads.size(), start, end, velocity));
    }
    appendVertices(Point(start), Point(end));
}

void Water::addQuad(Dorvan::TVector<float, 4> const& start, Dorvan::TVector<float, 4> const& end,
                    float speed) {
    Dorvan::TVector<float, 3> direction =
        Dorvan::TVector<float, 3>(Point(end)) - Dorvan::TVector<float, 3>(Point(start));
    direction = direction.normalized();
    addQuad(start, end, Dorvan::TVector<float, 3>(direction[2] * speed, 0.0f, -direction[0] * speed));
}

// Both arrays double before they fill up, so a long ribbon is built in linear time. The
// change is announced, so that a ribbon already drawn is uploaded again and culled by
// its new box.
void Water::appendVertices(Point const& start, Point const& end) {
    mGeometry->getBoundingVolume()->merge(start);
    mGeometry->getBoundingVolume()->merge(end);
    if (mVertices->getCount() + 2 > mVertices->getCapacity())
        mVertices->setGrowth(int(std::max(mVertices->getGrowth(), mVertices->getCapacity())));
    IndexData& indices = mStrip->getIndexList();
    if (indices.getCount() + 2 > indices.getCapacity())
        indices.setGrowth(int(std::max(indices.getGrowth(), indices.getCapacity())));
    unsigned int first = mVertices->addVertex();
    mVertices->setNormal(0.0f, 1.0f, 0.0f);
    mVertices->setVertex(start[0], start[1], start[2]);
    unsigned int second = mVertices->addVertex();
    mVertices->setNormal(0.0f, 1.0f, 0.0f);
    mVertices->setVertex(end[0], end[1], end[2]);
    mStrip->addQuad(first, second);
    mVertices->setModified();
    indices.setModified();
    mGeometry->volumeChanged();
}

Water::QuadSegment* Water::findSegment(Point const& local, float& u, float& v) const {
    for (unsigned int i = 0; i < mQuads.size(); ++i) {
        QuadSegment* quad = mQuads.get(i);
        if (quad->locate(local, u, v))
            return quad;
    }
    return nullptr;
}

Water::PointHandle Water::getPointHandle(Dorvan::TVector<float, 4> const& point) const {
    Point local(getTransformedNode().getInverseWorldTransformation() * point);
    float u = 0.0f, v = 0.0f;
    QuadSegment* quad = findSegment(local, u, v);
    Point surface = local;
    if (quad)
        surface[1] = quad->getHeight(u, v);
    return PointHandle(quad, local, surface, Point(point), u, v);
}

Point Water::getSurfacePoint(PointHandle const& handle) const {
    if (!handle.hasQuad())
        return handle.getOrigPoint();
    return Point(getTransformedNode().getWorldTransformation() * handle.getLocalSurfacePoint());
}

Point Water::getSurfacePoint(Point const& point) const { return getSurfacePoint(getPointHandle(point)); }

float Water::getDistance(PointHandle const& handle) const {
    if (!handle.hasQuad())
        return 0.0f;
    float distance = (getSurfacePoint(handle) - handle.getOrigPoint()).length();
    return handle.getLocalPoint()[1] < handle.getLocalSurfacePoint()[1] ? -distance : distance;
}

float Water::getDistance(Point const& point) const { return getDistance(getPointHandle(point)); }

Dorvan::TVector<float, 3> Water::getNormal(PointHandle const&) const {
    return Dorvan::TVector<float, 3>(0.0f, 1.0f, 0.0f);
}

Dorvan::TVector<float, 3> Water::getNormal(Point const&) const {
    return Dorvan::TVector<float, 3>(0.0f, 1.0f, 0.0f);
}

Dorvan::TVector<float, 3> Water::getVelocity(PointHandle const& handle) const {
    if (!handle.hasQuad())
        return Dorvan::TVector<float, 3>(0.0f, 0.0f, 0.0f);
    Dorvan::TVector<float, 3> local = handle.getQuad()->getVelocityAt(handle.getY());
    Dorvan::Matrix<float, 4> const& world = getTransformedNode().getWorldTransformation();
    if (world.isIdentity())
        return local;
    Dorvan::TVector<float, 3> turned;
    for (int r = 0; r < 3; ++r)
        turned[r] = world.m[r * 4] * local[0] + world.m[r * 4 + 1] * local[1] + world.m[r * 4 + 2] * local[2];
    return turned;
}

Dorvan::TVector<float, 3> Water::getVelocity(Point const& point) const {
    return getVelocity(getPointHandle(point));
}

float Water::getDepth(PointHandle const& handle) const {
    if (!handle.hasQuad())
        return -1.0f;
    if (!mTerrain)
        return 10.0f;
    Terrain::PointHandle ground = mTerrain->getPointHandle(handle.getOrigPoint());
    if (!ground.inTerrain())
        return 10.0f;
    float depth = getSurfacePoint(handle)[1] - mTerrain->getSurfacePoint(ground)[1];
    return depth > 0.0f ? depth : 0.0f;
}

float Water::getDepth(Point const& point) const { return getDepth(getPointHandle(point)); }

Dorvan::SharedPtr<Material> Water::getDefaultMaterial(unsigned int) { return mMaterial; }

Dorvan::SharedPtr<Material> const Water::getDefaultMaterial(unsigned int) const { return mMaterial; }

Water::PointHandle::PointHandle(QuadSegment* quad, Point const& local, Point const& localSurface,
                                Point const& orig, float x, float y)
    : mQuad(quad), mLocalPoint(local), mLocalSurfacePoint(localSurface), mOrigPoint(orig), mX(x), mY(y) {}

Water::Patch::Patch(Water& owner) : Leaf(TypeObject), mOwner(owner) {}

Water::Patch::~Patch() {}

Dorvan::SharedPtr<Material> const Water::Patch::getMaterial(unsigned int) const {
    return Dorvan::SharedPtr<Material>();
}

Dorvan::SharedPtr<Material> Water::Patch::getMaterial(unsigned int) { return Dorvan::SharedPtr<Material>(); }

Dorvan::SharedPtr<Geometry> const Water::Patch::getGeometry(int) const {
    return Dorvan::SharedPtr<Geometry>();
}

Dorvan::SharedPtr<Geometry> Water::Patch::getGeometry(int) { return Dorvan::SharedPtr<Geometry>(); }

BoundingVolume const* Water::Patch::getPhysicsVolume() const { return nullptr; }

BoundingVolume const* Water::Patch::getBoundingVolume() const { return &mBox; }

}  // namespace Velun
