#pragma once

#include <cstdint>

#include "core/NameMapper.h"
#include "core/ResourceLoader.h"
#include "foundation/SharedPtr.h"
#include "scene/TVector.h"
#include "sound/SoundChannel.h"
#include "sound/SoundSource.h"
#include "velun_export.h"

namespace Velun {

// A sound back end: opens sources, makes channels on them, places the listener,
// and does its per-frame work in update. SoundManager drives it.
class VELUN_EXPORT SoundEngine : public ResourceLoader {
public:
    ~SoundEngine() override;

    // One step of the back end, once per frame; `timestamp` is the engine time in ms.
    virtual bool update(std::int64_t timestamp) = 0;
    // Opens the sound at info's file; a positional source is placed in the world, any
    // other plays at the listener. Empty on failure.
    virtual Dorvan::SharedPtr<SoundSource> createSoundSource(const NameMapper::ResourceInfo& info,
                                                             bool positional) const = 0;
    // Empty on failure, e.g. for a source of another engine.
    virtual Dorvan::SharedPtr<SoundChannel> createChannel(Dorvan::SharedPtr<SoundSource> source) const = 0;
    // Moves listener number `listener`; forward and up give the way it faces.
    virtual void updateListenerAttributes(const Dorvan::TVector<float, 3>& position,
                                          const Dorvan::TVector<float, 3>& velocity,
                                          const Dorvan::TVector<float, 3>& forward,
                                          const Dorvan::TVector<float, 3>& up, unsigned int listener) = 0;
};

}  // namespace Velun
