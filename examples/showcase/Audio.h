#pragma once

// Sound: the jeep's engine on a Sound node that rides with it, the river's rush on a
// Sound node at the water, both looping and positional, and the listener on the main
// camera. Where no sound device opens the sound manager hands out no channels, the
// engine says so once, and the showcase runs silently.

#include "Scene.h"
#include "Valley.h"
#include "Vehicle.h"

namespace Showcase {

class Audio : public Velun::Process {
public:
    Audio(Nodes& nodes, Velun::Branch& root, Jeep& jeep, Velun::Transformation& listener);

    // Moves the listener to the camera.
    int run(std::int64_t timestamp) override;

    // Makes the engine's output driver write the mix to a WAV file instead of a sound
    // card. Call before VelunCore::setup; false if the driver's configuration cannot be
    // written.
    static bool writeTo(const std::string& wavFile);

private:
    Dorvan::SharedPtr<Velun::SoundChannel> loop(Nodes& nodes, Velun::Branch& parent, const std::string& name,
                                                float volume);

    Velun::Transformation& mListener;
    Dorvan::SharedPtr<Velun::SoundChannel> mEngine;
    Dorvan::SharedPtr<Velun::SoundChannel> mRiver;
};

}  // namespace Showcase
