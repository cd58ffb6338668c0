#pragma once

#include "plugins/sound/fmod/layer/fmod.hpp"

// The text for a result code of the layer.
inline const char* FMOD_ErrorString(FMOD_RESULT result) {
    switch (result) {
    case FMOD_OK:
        return "No errors.";
    case FMOD_ERR_CHANNEL_ALLOC:
        return "No voice is free to play the sound.";
    case FMOD_ERR_CHANNEL_STOLEN:
        return "The voice was taken for another sound.";
    case FMOD_ERR_FILE_BAD:
        return "Error reading the sound file.";
    case FMOD_ERR_FILE_NOTFOUND:
        return "The sound file was not found.";
    case FMOD_ERR_FORMAT:
        return "The sound file is not in a supported format.";
    case FMOD_ERR_INITIALIZED:
        return "The system is initialized already.";
    case FMOD_ERR_INVALID_HANDLE:
        return "The channel handle is no longer valid.";
    case FMOD_ERR_INVALID_PARAM:
        return "An invalid parameter was passed.";
    case FMOD_ERR_MEMORY:
        return "Not enough memory or resources.";
    case FMOD_ERR_NEEDS3D:
        return "The call needs a sound opened with FMOD_3D.";
    case FMOD_ERR_OUTPUT_INIT:
        return "The sound output device could not be opened.";
    case FMOD_ERR_UNINITIALIZED:
        return "The system is not initialized.";
    default:
        return "Unknown error.";
    }
}
