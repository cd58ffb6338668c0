#pragma once

// Small helpers that build the showcase's scene from the engine's public classes: an
// owner for the nodes it makes, placed transformations, shapes, lights, materials and
// running logic elements.

#include <memory>
#include <string>
#include <vector>

#include "Velun.h"

namespace Showcase {

// Owns the nodes the showcase makes and deletes them last-made first, so that children
// leave their parents before the parents go.
class Nodes {
public:
    Nodes() = default;
    Nodes(const Nodes&) = delete;
    Nodes& operator=(const Nodes&) = delete;
    ~Nodes() {
        while (!mNodes.empty())
            mNodes.pop_back();
    }

    template <class T>
    T& keep(T* node) {
        mNodes.emplace_back(node);
        return *node;
    }

private:
    std::vector<std::unique_ptr<Velun::Node>> mNodes;
};

// A transformation node at (x, y, z) below a scene's root or another transformation.
Velun::TransformationNode& place(Nodes& nodes, Velun::Branch& parent, float x, float y, float z);
Velun::TransformationNode& place(Nodes& nodes, Velun::TransformationNode& parent, float x, float y, float z);

// An object node with one subobject of `geometry`, drawn with `material`.
Velun::GeometryObject& shape(Nodes& nodes, Velun::TransformationNode& parent,
                             Dorvan::SharedPtr<Velun::Geometry> geometry,
                             Dorvan::SharedPtr<Velun::Material> material);

// A model from the object manager's cache (models/<name>), or null with a message.
Velun::ObjectNode* model(Nodes& nodes, Velun::TransformationNode& parent, const std::string& name);
Velun::ObjectNode* model(Nodes& nodes, Velun::Branch& parent, const std::string& name);

Velun::Light& light(Nodes& nodes, Velun::TransformationNode& parent, Velun::Light::LightType type,
                    Velun::Color diffuse);

Dorvan::SharedPtr<Velun::Material> texturedMaterial(Dorvan::SharedPtr<Velun::Texture> texture);

// Unlit: the colour comes from the material, or from the geometry's vertex colours
// (with their alpha) when it has them.
Dorvan::SharedPtr<Velun::Material> unlitMaterial(Velun::Color color, bool blended);

// Runs a logic element from now on.
template <class T>
Dorvan::SharedPtr<T> start(Dorvan::SharedPtr<T> element) {
    Velun::VelunCore::getSingleton().getEventManager().registerModifier(element);
    element->setState(Velun::LogicElement::StateRunning);
    return element;
}

// The application's own subsystem, updated after the engine's: the showcase's
// per-frame steps run in it, in the order they are added.
class Steps : public Velun::Subsystem {
public:
    Steps() { setSubsystemId(Velun::VelunCore::getSingleton().getProcessManager().createSubsystemId()); }
    void add(Velun::Process& step) { mProcesses.push_back(&step); }
    std::vector<Velun::Process*>* getProcessList() override { return &mProcesses; }

private:
    std::vector<Velun::Process*> mProcesses;
};

}  // namespace Showcase
