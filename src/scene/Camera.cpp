#include "scene/Camera.h"

#include <cmath>
#include <sstream>

#include "core/VelunCore.h"
#include "scene/Overlay.h"
#include "scene/SceneRoot.h"
#include "scene/View.h"

namespace Velun {

Camera::Camera()
    : Leaf(TypeCamera), mCamSettings(CameraSettings::Perspective),
      mOverlaySettings(CameraSettings::Orthographic), mOverlay(nullptr), mOverlayZOffset(2.0f),
      mUseOverlay(true) {}

Camera::Camera(std::string const& name)
    : Leaf(TypeCamera, name), mCamSettings(CameraSettings::Perspective),
      mOverlaySettings(CameraSettings::Orthographic), mOverlay(nullptr), mOverlayZOffset(2.0f),
      mUseOverlay(true) {}

Camera::Camera(std::string const& name, std::string const& uniqueName)
    : Leaf(TypeCamera, name, uniqueName), mCamSettings(CameraSettings::Perspective),
      mOverlaySettings(CameraSettings::Orthographic), mOverlay(nullptr), mOverlayZOffset(2.0f),
      mUseOverlay(true) {}

Camera::~Camera() { unsetOverlay(); }

BoundingVolume const* Camera::getBoundingVolume() const { return &mBoundingVolume; }

BoundingVolume const* Camera::getPhysicsVolume() const { return nullptr; }

void Camera::setOverlay(Overlay& overlay) {
    unsetOverlay();
    mOverlay = &overlay;
    overlay.mCameras.insert(this);
}

void Camera::unsetOverlay() {
    if (mOverlay)
        mOverlay->mCameras.erase(this);
    mOverlay = nullptr;
}

namespace {

bool checkAspect(float aspect, char const* operation) {
    if (aspect > 0.0f && std::isfinite(aspect))
        return true;
    std::ostringstream text;
    text << "Camera::" << operation << ": the aspect must be a positive number, not " << aspect;
    VelunCore::getLogger("scene")->error(text.str());
    return false;
}

}  // namespace

Dorvan::SharedPtr<View> Camera::getView(float aspect) const {
    SceneRoot* root = getSceneRoot();
    if (!root || !checkAspect(aspect, "getView"))
        return Dorvan::SharedPtr<View>();
    Dorvan::SharedPtr<Frustrum> frustrum =
        mCamSettings.getFrustrum(getTransformedNode().getInverseWorldTransformation(), aspect);
    return root->getView(frustrum, mCamSettings.getRenderSettings());
}

Dorvan::SharedPtr<View> Camera::getOverlayView(float aspect) const {
    if (!mOverlay || !checkAspect(aspect, "getOverlayView"))
        return Dorvan::SharedPtr<View>();
    // The overlay's camera is fixed in front of the overlay's origin; the camera's own
    // place plays no part.
    Dorvan::Matrix<float, 4> view = Dorvan::Matrix<float, 4>::identity();
    view(2, 3) = -mOverlayZOffset;
    Dorvan::SharedPtr<Frustrum> frustrum = mOverlaySettings.getFrustrum(view, aspect);
    return mOverlay->getView(frustrum, mOverlaySettings.getRenderSettings());
}

MetaCamera::MetaCamera() {}

MetaCamera::MetaCamera(std::string const& name) : Camera(name) {}

MetaCamera::MetaCamera(std::string const& name, std::string const& uniqueName) : Camera(name, uniqueName) {}

MetaCamera::~MetaCamera() {}

}  // namespace Velun
