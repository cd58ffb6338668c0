#include "sound/SoundChannel.h"

namespace Velun {

SoundChannel::~SoundChannel() {}

}  // namespace Velun
