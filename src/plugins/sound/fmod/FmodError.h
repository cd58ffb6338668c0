#pragma once

#include <string>

#include "plugins/sound/fmod/layer/fmod.hpp"
#include "plugins/sound/fmod/layer/fmod_errors.h"

namespace Velun {

// The library's text for a result; codes outside its table read "Unknown error.".
inline std::string fmodErrorText(FMOD_RESULT result) {
    return (result < 0 || result > 68) ? std::string("Unknown error.")
                                       : std::string(FMOD_ErrorString(result));
}

// Codes by which the library says a channel handle is gone for good.
inline bool isFmodHandleGone(FMOD_RESULT result) {
    return result == FMOD_ERR_INVALID_HANDLE || result == FMOD_ERR_CHANNEL_STOLEN;
}

}  // namespace Velun
