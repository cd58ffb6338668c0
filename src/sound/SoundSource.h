#pragma once

#include "velun_export.h"

namespace Velun {

// A sound that can be played: a file opened by a sound engine. Channels play it;
// SoundManager hands sources out and caches them by name.
class VELUN_EXPORT SoundSource {
public:
    virtual ~SoundSource();

    // What the length and channel count mean, and whether they are known (-1 when
    // not), is up to the engine that opened the source.
    virtual int getLength() const = 0;
    virtual int getChannels() const = 0;
};

}  // namespace Velun
