#include "sound/SoundEngine.h"

namespace Velun {

SoundEngine::~SoundEngine() {}

}  // namespace Velun
