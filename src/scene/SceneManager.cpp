#include "scene/SceneManager.h"

#include "scene/Overlay.h"
#include "scene/SceneGraph.h"
#include "scene/UpdateTraverser.h"

namespace Velun {

SceneManager::UpdateAdapter::UpdateAdapter(SceneRoot* sceneRoot) : mSceneRoot(sceneRoot) {}

SceneManager::UpdateAdapter::~UpdateAdapter() {}

int SceneManager::UpdateAdapter::run(std::int64_t timestamp) {
    return mSceneRoot->getUpdateTraverser()->run(timestamp);
}

SceneManager::SceneManager() : mLastNodeId(0), mLastSceneId(0) { setSubsystemId(3); }

SceneManager::~SceneManager() {
    for (std::size_t i = 0; i < mProcesses.size(); ++i)
        delete mProcesses[i];
    mProcesses.clear();
    // Overlays first: cameras in the graphs may still point to them, and an overlay
    // tells its cameras when it goes.
    while (mOverlays.size() > 0)
        delete mOverlays.removeAt(0);
    while (mSceneGraphs.size() > 0)
        delete mSceneGraphs.removeAt(0);
}

std::uint64_t SceneManager::createNodeId() { return ++mLastNodeId; }

int SceneManager::createSceneId() { return ++mLastSceneId; }

SceneGraph& SceneManager::createSceneGraph() {
    int id = createSceneId();
    SceneGraph* graph = new SceneGraph(id);
    mSceneGraphs.put(id, graph);
    mProcesses.push_back(new UpdateAdapter(graph));
    return *graph;
}

Overlay& SceneManager::createOverlay() {
    int id = createSceneId();
    Overlay* overlay = new Overlay(id);
    mOverlays.put(id, overlay);
    mProcesses.push_back(new UpdateAdapter(overlay));
    return *overlay;
}

int SceneManager::getSceneGraphCount() { return static_cast<int>(mSceneGraphs.size()); }

int SceneManager::getOverlayCount() { return static_cast<int>(mOverlays.size()); }

SceneGraph* SceneManager::getSceneGraph(int position) { return mSceneGraphs.valueAt(position); }

Overlay* SceneManager::getOverlay(int position) { return mOverlays.valueAt(position); }

SceneGraph* SceneManager::getSceneGraphById(int id) {
    return mSceneGraphs.indexOf(id) < 0 ? 0 : mSceneGraphs.get(id);
}

Overlay* SceneManager::getOverlayById(int id) { return mOverlays.indexOf(id) < 0 ? 0 : mOverlays.get(id); }

void SceneManager::removeUpdateAdapter(SceneRoot* root) {
    for (std::vector<Process*>::iterator it = mProcesses.begin(); it != mProcesses.end(); ++it) {
        if (static_cast<UpdateAdapter*>(*it)->getSceneRoot() == root) {
            delete *it;
            mProcesses.erase(it);
            return;
        }
    }
}

bool SceneManager::deleteSceneGraph(SceneGraph& graph) {
    int id = graph.getSceneId();
    if (getSceneGraphById(id) != &graph)
        return false;
    mSceneGraphs.remove(id);
    removeUpdateAdapter(&graph);
    delete &graph;
    return true;
}

bool SceneManager::deleteOverlay(Overlay& overlay) {
    int id = overlay.getSceneId();
    if (getOverlayById(id) != &overlay)
        return false;
    mOverlays.remove(id);
    removeUpdateAdapter(&overlay);
    delete &overlay;
    return true;
}

std::vector<Process*>* SceneManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
