#pragma once

// Sound files made on the fly for the sound engine's tests and benchmark.

#include <sndfile.hh>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace FmodTest {

const int kRate = 48000;

// Mono samples of a sine tone.
inline std::vector<float> tone(float frequency, float seconds, float amplitude = 0.5f) {
    std::vector<float> samples(static_cast<size_t>(seconds * kRate));
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i] = amplitude * std::sin(2.0f * 3.14159265f * frequency * static_cast<float>(i) / kRate);
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

// A fresh folder under /tmp, removed with everything in it.
struct TempDir {
    std::filesystem::path mPath = mkdtemp(&(std::string("/tmp/velun-fmod-XXXXXX") + '\0')[0]);
    ~TempDir() { std::filesystem::remove_all(mPath); }
    std::string file(const std::string& name) const { return (mPath / name).string(); }
};

}  // namespace FmodTest
