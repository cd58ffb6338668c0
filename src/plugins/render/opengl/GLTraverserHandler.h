#pragma once
#include "scene/Traverser.h"
#include "scene/View.h"
#include "velun_export.h"

namespace Velun {
class GLObjectRenderer;
class GLSceneManager;
class ObjectNode;

// The bridge from a view's walk to a GL pass: hands lights to the scene manager and
// drawables, with the distance the view filter computed for them, to the object
// renderer. Makes no GL call and never prunes; culling is the filter's business.
// A drawable belongs to the outermost object node above it; one outside any object is
// not drawn.
class VELUN_EXPORT GLTraverserHandler : public Traverser::Handler {
public:
    // `filter` may be null (an orthographic view has none): all distances are then 0.
    GLTraverserHandler(GLSceneManager* sceneManager, GLObjectRenderer* objectRenderer,
                       View::ViewFilter* filter);
    ~GLTraverserHandler() override;

    void reset(Node& start) override;
    Traverser::StatusResult handle(Node& node, Traverser::Direction direction, Node* previous) override;

    // Cuts the links to the pass, for a view that outlives its pass: later walks of it
    // then collect nothing.
    void detach();

private:
    GLSceneManager* mSceneManager;
    GLObjectRenderer* mObjectRenderer;
    ObjectNode* mCurrentObject;
    View::ViewFilter* mFilter;
};

}  // namespace Velun
