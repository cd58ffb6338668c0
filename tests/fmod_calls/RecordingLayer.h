#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "plugins/sound/fmod/layer/fmod.hpp"

namespace FmodCalls {

// What the stand-in of the FMOD layer was asked, one entry per call, e.g.
// "playSound(-1,1)" or "setVolume(0.5)", and the results it gives per call name
// (FMOD_OK for any other).
struct Recording {
    std::vector<std::string> mCalls;
    std::map<std::string, FMOD_RESULT> mResults;
    bool mVoicePaused = false;       // what getPaused reports
    std::set<FMOD::Sound*> mSounds;  // open ones; the system's release frees them
};
Recording& recording();

struct StandInSystem : public FMOD::System {};
struct StandInSound : public FMOD::Sound {};

}  // namespace FmodCalls
