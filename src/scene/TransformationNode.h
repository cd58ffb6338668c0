#pragma once

#include "scene/Group.h"
#include "scene/Transformation.h"
#include "velun_export.h"

namespace Velun {

// The node that places its one child: a group whose Transformation moves everything
// below it. Changing the transformation marks the node for the next update pass.
class VELUN_EXPORT TransformationNode : public Group, public Transformation {
public:
    TransformationNode();
    explicit TransformationNode(std::string const& name);
    TransformationNode(std::string const& name, std::string const& uniqueName);
    ~TransformationNode() override;

    // The child; the node must have one.
    Node* getChild() const { return getAttachedChild(0); }
    bool hasChild() const { return getAttachedChildCount() > 0; }
    // Replaces the child and returns the old one, or null. A node that cannot be
    // attached (it has a parent or a scene) leaves this node without a child.
    Node* setChild(Node& child);
    // The detached child, or null if there was none.
    Node* detachChild();

protected:
    void onModified() override;
};

}  // namespace Velun
