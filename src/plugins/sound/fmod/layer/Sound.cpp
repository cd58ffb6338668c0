#include "plugins/sound/fmod/layer/LayerSystem.h"

namespace FMOD {

FMOD_RESULT Sound::release() {
    Layer::SoundData* self = static_cast<Layer::SoundData*>(this);
    self->mReleased = true;
    // Voices still playing it keep it until the last one ends.
    if (self->mVoices == 0)
        self->mSystem->forget(self);
    return FMOD_OK;
}

}  // namespace FMOD
