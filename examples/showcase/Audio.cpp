#include "Audio.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

using Dorvan::SharedPtr;
using Dorvan::TVector;
using namespace Velun;

namespace Showcase {

Audio::Audio(Nodes& nodes, Branch& root, Jeep& jeep, Transformation& listener) : mListener(listener) {
    mEngine = loop(nodes, jeep.getBody(), "engine.wav", 0.8f);
    TransformationNode& water = place(nodes, root, 0.0f, Valley::waterLevel(), Valley::riverZ(0.0f));
    Branch& rush = nodes.keep(new Branch());
    water.setChild(rush);
    mRiver = loop(nodes, rush, "river.wav", 1.0f);
}

SharedPtr<SoundChannel> Audio::loop(Nodes& nodes, Branch& parent, const std::string& name, float volume) {
    SoundManager& sounds = VelunCore::getSingleton().getResourceManager().getSoundManager();
    SharedPtr<SoundChannel> channel = sounds.createChannel(sounds.getSoundSource(name, true, true));
    if (channel.isNull())
        return channel;
    Sound& sound = nodes.keep(new Sound(name));
    parent.attachChild(sound);
    sound.addChannel(channel);
    channel->setVolume(volume);
    channel->setRepeat(true);
    channel->play();
    return channel;
}

int Audio::run(std::int64_t) {
    // The camera looks along its -z axis, with its y axis up.
    const Dorvan::Matrix<float, 4>& eye = mListener.getLocalTransformation();
    VelunCore::getSingleton().getResourceManager().getSoundManager().updateListenerAttributes(
        TVector<float, 3>(eye(0, 3), eye(1, 3), eye(2, 3)), TVector<float, 3>(0.0f, 0.0f, 0.0f),
        TVector<float, 3>(-eye(0, 2), -eye(1, 2), -eye(2, 2)),
        TVector<float, 3>(eye(0, 1), eye(1, 1), eye(2, 1)), 0);
    return 0;
}

bool Audio::writeTo(const std::string& wavFile) {
    std::filesystem::path config = std::filesystem::temp_directory_path() / "velun-showcase-sound.conf";
    std::ofstream out(config);
    out << "[general]\ndrivers = wave\nchannels = stereo\nsample-type = int16\nfrequency = 44100\n"
        << "[wave]\nfile = " << std::filesystem::absolute(wavFile).string() << "\n";
    if (!out)
        return false;
    return setenv("ALSOFT_CONF", config.c_str(), 1) == 0;
}

}  // namespace Showcase
