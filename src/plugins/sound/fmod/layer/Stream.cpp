#include "plugins/sound/fmod/layer/Stream.h"

namespace FMOD {
namespace Layer {

namespace {
FMOD_RESULT resultOfOpen(int error) {
    switch (error) {
    case SF_ERR_SYSTEM:
        return FMOD_ERR_FILE_NOTFOUND;
    case SF_ERR_MALFORMED_FILE:
        return FMOD_ERR_FILE_BAD;
    default:
        return FMOD_ERR_FORMAT;
    }
}
}  // namespace

Stream* Stream::open(const std::string& path, bool mono, FMOD_RESULT& result) {
    SF_INFO info = SF_INFO();
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file) {
        result = resultOfOpen(sf_error(nullptr));
        return nullptr;
    }
    if (info.channels < 1 || info.channels > 2 || info.samplerate <= 0 || !info.seekable) {
        sf_close(file);
        result = FMOD_ERR_FORMAT;
        return nullptr;
    }
    result = FMOD_OK;
    return new Stream(file, info, mono && info.channels > 1);
}

Stream::Stream(SNDFILE* file, const SF_INFO& info, bool mono) : mFile(file), mInfo(info), mMono(mono) {}

Stream::~Stream() { sf_close(mFile); }

int Stream::read(short* out, int frames, int& loopsLeft) {
    int done = 0;
    while (done < frames) {
        int got = readOnce(out + done * getChannels(), frames - done);
        done += got;
        if (got > 0)
            continue;
        // At the end: start over if a loop is left, and stop on an empty file.
        if (loopsLeft == 0 || sf_seek(mFile, 0, SEEK_SET) < 0 || mInfo.frames == 0)
            break;
        if (loopsLeft > 0)
            --loopsLeft;
    }
    return done;
}

int Stream::readOnce(short* out, int frames) {
    if (!mMono)
        return static_cast<int>(sf_readf_short(mFile, out, frames));
    mScratch.resize(static_cast<size_t>(frames) * mInfo.channels);
    int got = static_cast<int>(sf_readf_short(mFile, mScratch.data(), frames));
    for (int i = 0; i < got; ++i)
        out[i] = static_cast<short>((mScratch[2 * i] + mScratch[2 * i + 1]) / 2);
    return got;
}

}  // namespace Layer
}  // namespace FMOD
