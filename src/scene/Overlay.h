#pragma once

#include <set>

#include "scene/SceneRoot.h"
#include "velun_export.h"

namespace Velun {

class Camera;

// A scene laid over another by a camera (Camera::setOverlay), seen by a fixed camera
// with orthographic settings: heads-up displays, menus. Made and owned by
// SceneManager::createOverlay. Cameras that show it forget it when it is deleted.
class VELUN_EXPORT Overlay : public SceneRoot {
public:
    explicit Overlay(int id);
    ~Overlay() override;

private:
    friend class Camera;

    std::set<Camera*> mCameras;
};

}  // namespace Velun
