#pragma once

#include <string>

#include "foundation/SharedPtr.h"
#include "scene/BoundingBox.h"
#include "scene/CameraSettings.h"
#include "scene/Leaf.h"
#include "velun_export.h"

namespace Velun {

class Overlay;
class View;

// The eye of a viewport. A camera sits at the origin of its node and looks along its
// local -Z axis with Y up; move it by placing it below a TransformationNode. It makes
// a culled View of its scene for each viewport and frame, and optionally a second one
// of an Overlay, seen by a fixed camera, that is drawn over the scene.
class VELUN_EXPORT Camera : public Leaf {
public:
    Camera();
    explicit Camera(std::string const& name);
    Camera(std::string const& name, std::string const& uniqueName);
    ~Camera() override;

    // Always empty: a camera adds nothing to the volumes above it.
    BoundingVolume const* getBoundingVolume() const override;
    // Null: a camera has no body.
    virtual BoundingVolume const* getPhysicsVolume() const;

    // Perspective settings for the scene.
    CameraSettings& getCamSettings() { return mCamSettings; }
    CameraSettings const& getCamSettings() const { return mCamSettings; }
    // Orthographic settings for the overlay.
    CameraSettings& getOverlaySettings() { return mOverlaySettings; }
    CameraSettings const& getOverlaySettings() const { return mOverlaySettings; }

    // The overlay is not owned; the camera forgets it when the overlay is deleted.
    void setOverlay(Overlay& overlay);
    void unsetOverlay();
    Overlay* getOverlay() const { return mOverlay; }
    void setUseOverlay(bool use) { mUseOverlay = use; }
    // True only if switched on and there is an overlay.
    bool useOverlay() const { return mUseOverlay && mOverlay; }
    // Distance of the overlay camera from the overlay's origin along +Z.
    float getOverlayZOffset() const { return mOverlayZOffset; }
    void setOverlayZOffset(float offset) { mOverlayZOffset = offset; }

    // A new view of the camera's scene for a viewport of this aspect (width over
    // height), from the camera's world transformation of the last update pass. Null if
    // the camera is in no scene, or for an aspect that is not positive.
    Dorvan::SharedPtr<View> getView(float aspect) const;
    // A new view of the overlay, whether or not it is switched on; null without one.
    Dorvan::SharedPtr<View> getOverlayView(float aspect) const;

private:
    friend class Overlay;

    CameraSettings mCamSettings;
    CameraSettings mOverlaySettings;
    Overlay* mOverlay;
    float mOverlayZOffset;
    bool mUseOverlay;
    BoundingBox mBoundingVolume;
};

// A camera that stands for another: the same behaviour under its own class.
class VELUN_EXPORT MetaCamera : public Camera {
public:
    MetaCamera();
    explicit MetaCamera(std::string const& name);
    MetaCamera(std::string const& name, std::string const& uniqueName);
    ~MetaCamera() override;
};

}  // namespace Velun
