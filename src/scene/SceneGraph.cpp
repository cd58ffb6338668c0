#include "scene/SceneGraph.h"

namespace Velun {

SceneGraph::SceneGraph(int id) : SceneRoot(id) {}

SceneGraph::~SceneGraph() {}

}  // namespace Velun
