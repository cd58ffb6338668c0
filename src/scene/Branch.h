#pragma once

#include "scene/Group.h"
#include "velun_export.h"

namespace Velun {

// A plain inner node: a group that anyone may attach children to and detach them from.
class VELUN_EXPORT Branch : public Group {
public:
    Branch();
    explicit Branch(std::string const& name);
    Branch(std::string const& name, std::string const& uniqueName);
    ~Branch() override;

    using Group::attachChild;
    using Group::detachChild;
    using Group::detachChilds;
};

}  // namespace Velun
