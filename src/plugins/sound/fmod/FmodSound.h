#pragma once

#include "foundation/SharedPtr.h"
#include "plugins/sound/fmod/layer/fmod.hpp"
#include "sound/SoundSource.h"

namespace Velun {

// A sound opened by the FMOD system, streamed from its file.
class FmodSound : public SoundSource {
public:
    // `systemAlive` is shared with the engine, which clears it when the system ends.
    FmodSound(FMOD::Sound& sound, const Dorvan::SharedPtr<bool>& systemAlive);
    // Releases the FMOD sound while the system lives; voices playing it finish first.
    ~FmodSound() override;

    // Unknown to a stream: -1.
    int getLength() const override;
    int getChannels() const override;

    FMOD::Sound& getFmodSound() { return *mSound; }

private:
    FmodSound(const FmodSound&) = delete;
    FmodSound& operator=(const FmodSound&) = delete;

    FMOD::Sound* mSound;
    Dorvan::SharedPtr<bool> mSystemAlive;
};

}  // namespace Velun
