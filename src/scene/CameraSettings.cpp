#include "scene/CameraSettings.h"

namespace Velun {

namespace {
const double DegreesPerRadian = 57.29577951308232;
}

CameraSettings::CameraSettings(ProjectionMode mode)
    : mNearDistance(mode == Perspective ? 0.1 : 1.0),
      mFarDistance(mode == Perspective ? 1000.0 : 10.0),
      mFovX(mode == Perspective ? 90.0f : 0.0f),
      mFovY(mode == Perspective ? 90.0f : 0.0f),
      mProjectionMode(mode),
      mAspectMode(AspectFovXFromY) {}

CameraSettings::~CameraSettings() {}

void CameraSettings::setFovXRadian(float radians) { mFovX = static_cast<float>(radians * DegreesPerRadian); }

void CameraSettings::setFovYRadian(float radians) { mFovY = static_cast<float>(radians * DegreesPerRadian); }

}  // namespace Velun
