#include "plugins/sound/fmod/FmodSound.h"

namespace Velun {

FmodSound::FmodSound(FMOD::Sound& sound, const Dorvan::SharedPtr<bool>& systemAlive)
    : mSound(&sound), mSystemAlive(systemAlive) {}

FmodSound::~FmodSound() {
    if (*mSystemAlive)
        mSound->release();
}

int FmodSound::getLength() const { return -1; }

int FmodSound::getChannels() const { return -1; }

}  // namespace Velun
