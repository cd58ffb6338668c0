#pragma once

#include "foundation/SharedPtr.h"
#include "scene/Matrix.h"
#include "scene/RenderSettings.h"
#include "velun_export.h"

namespace Velun {

class Frustrum;

// How a camera projects: near and far distances, fields of view in degrees, how the
// viewport's aspect enters them, and the render settings of its passes.
class VELUN_EXPORT CameraSettings {
public:
    enum ProjectionMode {
        Perspective = 0,
        Orthographic = 1  // the render side uses the unit square; any value but 0 acts alike
    };
    // How the viewport's aspect (width over height) enters the field of view.
    enum AspectMode {
        AspectFixed = 0,      // both fields as they are
        AspectFovXFromY = 1,  // fovY stays; fovX follows from it through the aspect
        AspectFovYFromX = 2   // fovX stays; fovY follows from it through the aspect
    };

    // The defaults depend on the mode: perspective near 0.1, far 1000, both fields 90;
    // orthographic near 1, far 10, both fields 0.
    explicit CameraSettings(ProjectionMode mode);
    virtual ~CameraSettings();

    ProjectionMode getProjectionMode() const { return mProjectionMode; }
    // Changes the mode only; distances and fields stay.
    void setProjectionMode(ProjectionMode mode) { mProjectionMode = mode; }
    AspectMode getAspectMode() const { return mAspectMode; }
    void setAspectMode(AspectMode mode) { mAspectMode = mode; }
    double getNearDistance() const { return mNearDistance; }
    void setNearDistance(double distance) { mNearDistance = distance; }
    double getFarDistance() const { return mFarDistance; }
    void setFarDistance(double distance) { mFarDistance = distance; }
    float getFovX() const { return mFovX; }
    void setFovX(float degrees) { mFovX = degrees; }
    float getFovY() const { return mFovY; }
    void setFovY(float degrees) { mFovY = degrees; }
    // The same fields, given in radians.
    void setFovXRadian(float radians);
    void setFovYRadian(float radians);
    // Null means the defaults of the pass.
    Dorvan::SharedPtr<RenderSettings> getRenderSettings() const { return mRenderSettings; }
    void setRenderSettings(Dorvan::SharedPtr<RenderSettings> settings) { mRenderSettings = settings; }

    // A new frustum of these settings for the view matrix `view` (world to camera) and
    // a viewport of this aspect, width over height.
    Dorvan::SharedPtr<Frustrum> getFrustrum(Dorvan::Matrix<float, 4> const& view, float aspect) const;

private:
    double mNearDistance;
    double mFarDistance;
    float mFovX;
    float mFovY;
    ProjectionMode mProjectionMode;
    AspectMode mAspectMode;
    Dorvan::SharedPtr<RenderSettings> mRenderSettings;
};

}  // namespace Velun
