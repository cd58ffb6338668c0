#pragma once

#include <cstdint>
#include <vector>

#include "core/Process.h"
#include "core/Subsystem.h"
#include "foundation/IdMap.h"
#include "velun_export.h"

namespace Velun {

class Overlay;
class SceneGraph;
class SceneRoot;

// Owns the scenes and overlays, runs their update pass once per pass in order of
// creation, and hands out node and scene ids. Scenes left when the manager ends are
// destroyed with it; their nodes are detached and stay with whoever made them.
class VELUN_EXPORT SceneManager : public Subsystem {
public:
    // Runs the update pass of one scene.
    class VELUN_EXPORT UpdateAdapter : public Process {
    public:
        explicit UpdateAdapter(SceneRoot* sceneRoot);
        int run(std::int64_t timestamp) override;
        ~UpdateAdapter() override;
        SceneRoot* getSceneRoot() const { return mSceneRoot; }

    private:
        SceneRoot* mSceneRoot;
    };

    SceneManager();
    ~SceneManager() override;

    // A new node id: 1 for the first node of the process, never reused.
    std::uint64_t createNodeId();

    // A new, empty scene, updated in every pass from now on. Graphs and overlays share
    // one counter of scene ids, starting at 1.
    SceneGraph& createSceneGraph();
    Overlay& createOverlay();

    int getSceneGraphCount();
    int getOverlayCount();
    // By position in order of creation; unchecked.
    SceneGraph* getSceneGraph(int position);
    Overlay* getOverlay(int position);
    // Null for an unknown id.
    SceneGraph* getSceneGraphById(int id);
    Overlay* getOverlayById(int id);

    // Destroys the scene and its update adapter; its nodes are detached and left to
    // their makers. False if the scene is not one of this manager's.
    bool deleteSceneGraph(SceneGraph& graph);
    bool deleteOverlay(Overlay& overlay);

    std::vector<Process*>* getProcessList() override;

private:
    int createSceneId();
    void removeUpdateAdapter(SceneRoot* root);

    std::uint64_t mLastNodeId;
    int mLastSceneId;
    std::vector<Process*> mProcesses;
    Dorvan::IdMap<SceneGraph*, int> mSceneGraphs;
    Dorvan::IdMap<Overlay*, int> mOverlays;
};

}  // namespace Velun
