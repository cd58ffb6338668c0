#include "scene/Overlay.h"

#include "scene/Camera.h"

namespace Velun {

Overlay::Overlay(int id) : SceneRoot(id) {}

Overlay::~Overlay() {
    std::set<Camera*> cameras;
    cameras.swap(mCameras);
    for (std::set<Camera*>::iterator it = cameras.begin(); it != cameras.end(); ++it)
        (*it)->mOverlay = nullptr;
}

}  // namespace Velun
