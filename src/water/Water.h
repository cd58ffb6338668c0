#pragma once

#include <string>

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "geometry/Drawable.h"
#include "material/Material.h"
#include "scene/BoundingBox.h"
#include "scene/Leaf.h"
#include "scene/Matrix.h"
#include "scene/ObjectNode.h"
#include "scene/Point.h"
#include "scene/Point2D.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

class GeometryData;
class GeometrySubobject;
class IndexedQuadStrip;
class Terrain;
class VertexData;

// A river, canal or lake built as a ribbon: the application adds cross-section lines
// one after the other, each with the flow velocity across it, and every line after the
// first closes a quad with the one before. The ribbon is drawn as a translucent blue
// surface wherever the node is attached, and answers queries at world points: is the
// point over the water, where is the surface, how far above or below it is the point,
// how fast the water flows there and how deep it is over a terrain. Nothing moves: the
// flow field interpolates the velocities of the lines.
//
// Quads may be added at any time, also after the ribbon was first drawn. A quad that
// is collapsed, twisted or not convex enough to map logs one error line on "water" and
// is drawn but never found by a query.
class VELUN_EXPORT Water : public ObjectNode {
public:
    class LineSegment;
    class QuadSegment;
    class PointHandle;
    class Patch;

    Water();
    explicit Water(std::string const& name);
    ~Water() override;

    // Nothing to prepare: the constructor builds the whole drawing chain.
    void initialize();

    // The ground under the water; getDepth measures against it. The terrain must live
    // as long as it is set.
    void setTerrain(Terrain& terrain);
    Terrain* getTerrain() const { return mTerrain; }

    // Adds the next cross-section line from `start` to `end` (divided by w, in the
    // water's own coordinates) with the flow `velocity` there. The first call only
    // places the first line; each later one adds a quad.
    void addQuad(Dorvan::TVector<float, 4> const& start, Dorvan::TVector<float, 4> const& end,
                 Dorvan::TVector<float, 3> const& velocity);
    // The same with flow at right angles to the line in the x-z plane, to the left of
    // the line's direction seen from above: (dz, 0, -dx) times `speed` for the unit
    // direction (dx, dy, dz) from start to end.
    void addQuad(Dorvan::TVector<float, 4> const& start, Dorvan::TVector<float, 4> const& end, float speed);

    unsigned int getQuadCount() const { return mQuads.size(); }
    // In the order of adding; unchecked: the caller stays below the count.
    QuadSegment* getQuad(unsigned int index) const { return mQuads.get(index); }
    // The line of the first addQuad, or null before it.
    LineSegment* getFirstLine() const { return mFirstLine; }

    // Locates a world point: the quad under or over it (the oldest where quads overlap)
    // and its position on that quad.
    PointHandle getPointHandle(Dorvan::TVector<float, 4> const& point) const;

    // The surface point above or below, in world coordinates; the point itself where
    // there is no water.
    Point getSurfacePoint(PointHandle const& handle) const;
    Point getSurfacePoint(Point const& point) const;
    // Distance to the surface point, negative below the surface; 0 where there is no water.
    float getDistance(PointHandle const& handle) const;
    float getDistance(Point const& point) const;
    // Always straight up: the surface carries no waves.
    Dorvan::TVector<float, 3> getNormal(PointHandle const& handle) const;
    Dorvan::TVector<float, 3> getNormal(Point const& point) const;
    // The flow in world axes; (0, 0, 0) where there is no water.
    Dorvan::TVector<float, 3> getVelocity(PointHandle const& handle) const;
    Dorvan::TVector<float, 3> getVelocity(Point const& point) const;
    // -1 where there is no water. Over a terrain set with setTerrain: the height of the
    // surface above the ground there, 0 where the ground rises above the surface;
    // without a terrain, or beyond its edges, 10.
    float getDepth(PointHandle const& handle) const;
    float getDepth(Point const& point) const;

    // The water's material, whatever the index.
    Dorvan::SharedPtr<Material> getDefaultMaterial(unsigned int index) override;
    Dorvan::SharedPtr<Material> const getDefaultMaterial(unsigned int index) const;

private:
    void buildDrawing();
    void appendVertices(Point const& start, Point const& end);
    QuadSegment* findSegment(Point const& local, float& u, float& v) const;

    Terrain* mTerrain;
    Dorvan::Vector<QuadSegment*> mQuads;
    LineSegment* mFirstLine;
    Dorvan::SharedPtr<GeometryData> mGeometry;
    Dorvan::SharedPtr<VertexData> mVertices;
    Dorvan::SharedPtr<Material> mMaterial;
    // Owned by the geometry's one group.
    IndexedQuadStrip* mStrip;
    // The water's one child, which draws the ribbon.
    GeometrySubobject* mSubobject;
};

// One cross-section line of the ribbon with the flow velocity across it.
class VELUN_EXPORT Water::LineSegment {
public:
    // Each point is divided by its w; a point with w = 0 becomes the origin.
    LineSegment(Water* owner, Dorvan::TVector<float, 4> const& start, Dorvan::TVector<float, 4> const& end,
                Dorvan::TVector<float, 3> const& velocity);
    virtual ~LineSegment();

    LineSegment(LineSegment const&) = delete;
    LineSegment& operator=(LineSegment const&) = delete;

    Water* getOwner() const { return mOwner; }
    Dorvan::TVector<float, 3> const& getVelocity() const { return mVelocity; }
    Point const& getStart() const { return mStart; }
    Point const& getEnd() const { return mEnd; }

private:
    Water* mOwner;
    Dorvan::TVector<float, 3> mVelocity;
    Point mStart;
    Point mEnd;
};

// The quad between the previous line and this one. Its corners are P0, P1 (the previous
// line's start and end) and P2, P3 (this line's). On a quad, u runs along the lines from
// start to end and v across, from the previous line (0) to this one (1). The quad is
// mapped in the x-z plane onto a frame in which P0, P1 and P2 are the unit corners.
class VELUN_EXPORT Water::QuadSegment : public Water::LineSegment {
public:
    QuadSegment(Water* owner, LineSegment* previous, unsigned int index,
                Dorvan::TVector<float, 4> const& start, Dorvan::TVector<float, 4> const& end,
                Dorvan::TVector<float, 3> const& velocity);
    ~QuadSegment() override;

    LineSegment* getPrevious() const { return mPrevious; }
    // The number of quads added before this one.
    unsigned int getIndex() const { return mIndex; }
    // Takes (x, z, 1) into the frame of the unit corners.
    Dorvan::Matrix<float, 3> const& getMapping() const { return mMapping; }
    // False for a quad that could not be mapped; no query ever finds it.
    bool isValid() const { return mValid; }

    // Whether the point (in the water's coordinates) lies over or under the quad,
    // edges included, and if so its exact (u, v) on the quad's bilinear shape.
    bool locate(Point const& local, float& u, float& v) const;
    // The surface height at (u, v).
    float getHeight(float u, float v) const;
    // The flow at v, between the previous line's velocity and this line's.
    Dorvan::TVector<float, 3> getVelocityAt(float v) const;

private:
    void buildMapping();
    void reportInvalid(float p, float q) const;

    LineSegment* mPrevious;
    Dorvan::Matrix<float, 3> mMapping;
    // P3 in the frame of the unit corners.
    Point2D mFarCorner;
    unsigned int mIndex;
    bool mValid;
};

// Where a point lies relative to the water; made by Water::getPointHandle and handed
// back to its queries, so that one point is located once for several of them.
class VELUN_EXPORT Water::PointHandle {
public:
    // Null where the point is not over or under the water.
    QuadSegment* getQuad() const { return mQuad; }
    bool hasQuad() const { return mQuad != nullptr; }
    // The point in the water's coordinates.
    Point const& getLocalPoint() const { return mLocalPoint; }
    // The local point moved onto the surface; the local point itself without a quad.
    Point const& getLocalSurfacePoint() const { return mLocalSurfacePoint; }
    // The point as given, divided by w.
    Point const& getOrigPoint() const { return mOrigPoint; }
    // u and v on the quad; 0 without a quad.
    float getX() const { return mX; }
    float getY() const { return mY; }

private:
    friend class Water;
    PointHandle(QuadSegment* quad, Point const& local, Point const& localSurface, Point const& orig, float x,
                float y);

    QuadSegment* mQuad;
    Point mLocalPoint;
    Point mLocalSurfacePoint;
    Point mOrigPoint;
    float mX;
    float mY;
};

// A drawable leaf that belongs to a water and carries a box of its own, for pieces an
// application wants to cull apart from the ribbon. It draws nothing by itself: it has
// no geometry and no material.
class VELUN_EXPORT Water::Patch : public Leaf, public Drawable {
public:
    explicit Patch(Water& owner);
    ~Patch() override;

    Water& getOwner() const { return mOwner; }
    // The box the patch is culled by, in its local coordinates; empty at first.
    BoundingBox& getBox() { return mBox; }

    Dorvan::SharedPtr<Material> const getMaterial(unsigned int index) const override;
    Dorvan::SharedPtr<Material> getMaterial(unsigned int index) override;
    Dorvan::SharedPtr<Geometry> const getGeometry(int index) const override;
    Dorvan::SharedPtr<Geometry> getGeometry(int index) override;
    BoundingVolume const* getPhysicsVolume() const override;
    BoundingVolume const* getBoundingVolume() const override;

private:
    Water& mOwner;
    BoundingBox mBox;
};

}  // namespace Velun
