#pragma once

#include <sndfile.h>

#include <string>
#include <vector>

#include "plugins/sound/fmod/layer/fmod.hpp"

namespace FMOD {
namespace Layer {

// One voice's decoder over a sound file, giving 16-bit frames; mono on request, for
// OpenAL positions only mono buffers.
class Stream {
public:
    // Null on failure, with the reason in `result`.
    static Stream* open(const std::string& path, bool mono, FMOD_RESULT& result);
    ~Stream();

    int getChannels() const { return mMono ? 1 : mInfo.channels; }
    int getFileChannels() const { return mInfo.channels; }
    int getRate() const { return mInfo.samplerate; }

    // Fills `out` with up to `frames` frames. At the end of the file it starts over
    // while `loopsLeft` is not 0 (-1 is endless), counting it down. Fewer frames than
    // asked for only at the very end.
    int read(short* out, int frames, int& loopsLeft);

private:
    Stream(SNDFILE* file, const SF_INFO& info, bool mono);
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    int readOnce(short* out, int frames);

    SNDFILE* mFile;
    SF_INFO mInfo;
    bool mMono;
    std::vector<short> mScratch;
};

}  // namespace Layer
}  // namespace FMOD
