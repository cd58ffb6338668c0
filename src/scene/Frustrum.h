#pragma once

#include "scene/CameraSettings.h"
#include "scene/Matrix.h"
#include "scene/Plane.h"
#include "velun_export.h"

namespace Velun {

// The viewing volume of a camera for one viewport: view and projection matrix and
// the six planes, whose normals point inside.
class VELUN_EXPORT Frustrum {
public:
    enum PlaneIndex {
        PlaneRight = 0,
        PlaneLeft = 1,
        PlaneBottom = 2,
        PlaneTop = 3,
        PlaneFar = 4,
        PlaneNear = 5
    };

    // `view` maps world to view space (the inverse world transformation of the
    // camera); fields of view in degrees, aspect as width over height. With
    // AspectFovXFromY or AspectFovYFromX the derived field keeps the tangent ratio
    // of the aspect, so non-square viewports are not distorted.
    Frustrum(Dorvan::Matrix<float, 4> const& view, CameraSettings::ProjectionMode mode,
             CameraSettings::AspectMode aspectMode, double nearDistance, double farDistance, float fovX,
             float fovY, float aspect);
    virtual ~Frustrum();

    CameraSettings::ProjectionMode getProjectionMode() const { return mProjectionMode; }
    Dorvan::Matrix<float, 4> const& getViewMatrix() const { return mViewMatrix; }
    // Identity for an orthographic frustum.
    Dorvan::Matrix<float, 4> getProjectionMatrix() const { return mProjectionMatrix; }
    double getNearDistance() const { return mNear; }
    double getFarDistance() const { return mFar; }
    float getAspect() const { return mAspect; }
    float getFovX() const { return mFovX; }
    float getFovY() const { return mFovY; }
    // Extents at the near plane.
    float getRight() const { return mRight; }
    float getLeft() const { return mLeft; }
    float getTop() const { return mTop; }
    float getBottom() const { return mBottom; }

    // The six planes in the order of PlaneIndex, normalised as 4-vectors: distances
    // keep their sign and order but are no world units.
    Plane const* getPlanes() const { return mPlanes; }
    Plane const& getPlane(int index) const { return mPlanes[index]; }
    // The same coefficients by component, for testing four planes at once: a of the
    // six planes from offset 0, b from 8, c from 16, d from 24; entries 6 and 7 of
    // each repeat the near plane.
    float const* getPlaneComponents() const { return mPlaneComponents; }

private:
    CameraSettings::ProjectionMode mProjectionMode;
    Dorvan::Matrix<float, 4> mViewMatrix;
    Dorvan::Matrix<float, 4> mProjectionMatrix;
    double mNear;
    double mFar;
    float mAspect;
    float mFovX;
    float mFovY;
    float mRight;
    float mLeft;
    float mTop;
    float mBottom;
    Plane mPlanes[6];
    float mPlaneComponents[32];
};

}  // namespace Velun
