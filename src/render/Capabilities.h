#pragma once

#include "velun_export.h"

namespace Velun {

// What a render engine can do. Each back end derives its own class with its own
// questions; the front end only passes it along.
class VELUN_EXPORT Capabilities {
public:
    virtual ~Capabilities();

protected:
    Capabilities();
};

}  // namespace Velun
