#include "sound/SoundSource.h"

namespace Velun {

SoundSource::~SoundSource() {}

}  // namespace Velun
