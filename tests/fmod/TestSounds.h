#pragma once

#include <sndfile.hh>

#include <cmath>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

namespace FmodTest {

const int kRate = 48000;

// Mono samples: a sine tone, or clicks every `period` frames.
inline std::vector<float> tone(float frequency, float seconds, float amplitude = 0.5f) {
    std::vector<float> samples(static_cast<size_t>(seconds * kRate));
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i] = amplitude * std::sin(2.0f * 3.14159265f * frequency * static_cast<float>(i) / kRate);
    return samples;
}

inline std::vector<float> clicks(int period, float seconds) {
    std::vector<float> samples(static_cast<size_t>(seconds * kRate), 0.0f);
    for (size_t i = 0; i < samples.size(); i += period)
        samples[i] = 0.8f;
    return samples;
}

// Writes the samples to every channel of a file of the given format
// (e.g. SF_FORMAT_WAV | SF_FORMAT_PCM_16); false if the file cannot be written.
inline bool writeSound(const std::string& path, const std::vector<float>& samples, int channels, int format) {
    SndfileHandle file(path, SFM_WRITE, format, channels, kRate);
    std::vector<float> frames;
    for (float sample : samples)
        frames.insert(frames.end(), static_cast<size_t>(channels), sample);
    return file.writef(frames.data(), static_cast<sf_count_t>(samples.size())) ==
           static_cast<sf_count_t>(samples.size());
}

// Energy of one channel (0 left, 1 right) of interleaved stereo frames.
inline double energy(const std::vector<float>& stereo, int channel, size_t from = 0, size_t to = ~size_t(0)) {
    double sum = 0.0;
    for (size_t i = from; i < stereo.size() / 2 && i < to; ++i)
        sum += static_cast<double>(stereo[2 * i + channel]) * stereo[2 * i + channel];
    return sum;
}

// A fresh folder under /tmp, removed with everything in it.
struct TempDir {
    std::filesystem::path mPath = mkdtemp(&(std::string("/tmp/velun-fmod-XXXXXX") + '\0')[0]);
    ~TempDir() { std::filesystem::remove_all(mPath); }
    std::string file(const std::string& name) const { return (mPath / name).string(); }
};

}  // namespace FmodTest
