#include "scene/CameraSettings.h"

#include "scene/Frustrum.h"

namespace Velun {

namespace {
const double DegreesPerRadian = 57.29577951308232;
}

CameraSettings::CameraSettings(ProjectionMode mode)
    : mNearDistance(mode == Perspective ? 0.1 : 1.0), mFarDistance(mode == Perspective ? 1000.0 : 10.0),
      mFovX(mode == Perspective ? 90.0f : 0.0f), mFovY(mode == Perspective ? 90.0f : 0.0f),
      mProjectionMode(mode), mAspectMode(AspectFovXFromY) {}

CameraSettings::~CameraSettings() {}

void CameraSettings::setFovXRadian(float radians) { mFovX = static_cast<float>(radians * DegreesPerRadian); }

void CameraSettings::setFovYRadian(float radians) { mFovY = static_cast<float>(radians * DegreesPerRadian); }

Dorvan::SharedPtr<Frustrum> CameraSettings::getFrustrum(Dorvan::Matrix<float, 4> const& view,
                                                        float aspect) const {
    return Dorvan::SharedPtr<Frustrum>(
        new Frustrum(view, mProjectionMode, mAspectMode, mNearDistance, mFarDistance, mFovX, mFovY, aspect));
}

}  // namespace Velun
