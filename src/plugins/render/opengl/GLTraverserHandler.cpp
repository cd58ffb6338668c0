#include "plugins/render/opengl/GLTraverserHandler.h"

#include "geometry/Drawable.h"
#include "plugins/render/opengl/GLObjectRenderer.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "scene/Light.h"
#include "scene/Node.h"
#include "scene/ObjectNode.h"

namespace Velun {

GLTraverserHandler::GLTraverserHandler(GLSceneManager* sceneManager, GLObjectRenderer* objectRenderer,
                                       View::ViewFilter* filter)
    : mSceneManager(sceneManager), mObjectRenderer(objectRenderer), mCurrentObject(nullptr), mFilter(filter) {
}

GLTraverserHandler::~GLTraverserHandler() {}

void GLTraverserHandler::reset(Node&) { mCurrentObject = nullptr; }

void GLTraverserHandler::detach() {
    mSceneManager = nullptr;
    mObjectRenderer = nullptr;
    mFilter = nullptr;
    mCurrentObject = nullptr;
}

Traverser::StatusResult GLTraverserHandler::handle(Node& node, Traverser::Direction direction,
                                                   Node* previous) {
    if (!mObjectRenderer)
        return Traverser::ResultContinue;
    if (direction == Traverser::DirectionUp) {
        if (mCurrentObject && &node == static_cast<Node*>(mCurrentObject))
            mCurrentObject = nullptr;
        return Traverser::ResultContinue;
    }
    if (direction == Traverser::DirectionDown && previous && !mCurrentObject &&
        previous->getNodeType() == Node::TypeObject)
        mCurrentObject = dynamic_cast<ObjectNode*>(previous);

    switch (node.getNodeType()) {
    case Node::TypeLight:
        if (Light* light = dynamic_cast<Light*>(&node))
            mSceneManager->addLight(light);
        break;
    case Node::TypeObject:
        if (mCurrentObject) {
            if (Drawable* drawable = dynamic_cast<Drawable*>(&node))
                mObjectRenderer->addDrawable(mCurrentObject, drawable,
                                             mFilter ? mFilter->getDistance() : 0.0f);
        }
        break;
    default:
        break;
    }
    return Traverser::ResultContinue;
}

}  // namespace Velun
