#pragma once

#include "scene/SceneRoot.h"
#include "velun_export.h"

namespace Velun {

// The world that cameras stand in. Made and owned by SceneManager::createSceneGraph.
class VELUN_EXPORT SceneGraph : public SceneRoot {
public:
    explicit SceneGraph(int id);
    ~SceneGraph() override;
};

}  // namespace Velun
