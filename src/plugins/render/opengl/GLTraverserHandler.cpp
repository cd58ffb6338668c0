#include "plugins/render/opengl/GLTraverserHandler.h"

#include <typeinfo>

#include "geometry/Drawable.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"
#include "plugins/render/opengl/GLObjectRenderer.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "scene/Light.h"
#include "scene/Node.h"
#include "scene/ObjectNode.h"

namespace Velun {

namespace {

// The engine's own object and drawable classes are recognised by their exact type, which
// is much cheaper than a cast across the hierarchy; other classes are cast.
ObjectNode* toObjectNode(Node& node) {
    if (typeid(node) == typeid(GeometryObject))
        return static_cast<GeometryObject*>(&node);
    return dynamic_cast<ObjectNode*>(&node);
}

Drawable* toDrawable(Node& node) {
    if (typeid(node) == typeid(GeometrySubobject))
        return static_cast<GeometrySubobject*>(&node);
    return dynamic_cast<Drawable*>(&node);
}

}  // namespace

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
        mCurrentObject = toObjectNode(*previous);

    switch (node.getNodeType()) {
    case Node::TypeLight:
        if (Light* light = dynamic_cast<Light*>(&node))
            mSceneManager->addLight(light);
        break;
    case Node::TypeObject:
        if (mCurrentObject) {
            if (Drawable* drawable = toDrawable(node))
                mObjectRenderer->addDrawable(mCurrentObject, node, drawable,
                                             mFilter ? mFilter->getDistance() : 0.0f);
        }
        break;
    default:
        break;
    }
    return Traverser::ResultContinue;
}

}  // namespace Velun
