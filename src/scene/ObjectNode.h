#pragma once

#include "foundation/SharedPtr.h"
#include "scene/Group.h"
#include "velun_export.h"

namespace Velun {

class Material;

// A group that stands for one renderable object, such as a loaded model; its
// drawable pieces sit below it and fall back on its default materials.
class VELUN_EXPORT ObjectNode : public Group {
public:
    ObjectNode();
    explicit ObjectNode(std::string const& name);
    ObjectNode(std::string const& name, std::string const& uniqueName);
    ~ObjectNode() override;

    // The object's material for one slot, or null.
    virtual Dorvan::SharedPtr<Material> getDefaultMaterial(unsigned int index) = 0;
};

}  // namespace Velun
