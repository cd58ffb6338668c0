#include "sound/Sound.h"

#include "scene/Group.h"
#include "scene/Point.h"

namespace Velun {

namespace {
const Dorvan::TVector<float, 3> kNoVelocity(0.0f, 0.0f, 0.0f);
}

Sound::Sound() : Leaf(TypeSound) { initialize(); }

Sound::Sound(std::string const& name) : Leaf(TypeSound, name) { initialize(); }

Sound::~Sound() {}

void Sound::initialize() {
    mBoundingVolume.setEmpty();
    mBoundingVolume.merge(Point());
}

unsigned int Sound::addChannel(Dorvan::SharedPtr<SoundChannel> channel) {
    if (channel)
        channel->set3DAttributes(getWorldPosition(), kNoVelocity);
    return static_cast<unsigned int>(mChannels.add(channel));
}

Dorvan::SharedPtr<SoundChannel> Sound::getChannel(unsigned int index) {
    if (index >= mChannels.size())
        return Dorvan::SharedPtr<SoundChannel>();
    return mChannels.get(index);
}

Dorvan::SharedPtr<SoundChannel> Sound::removeChannel(unsigned int index) {
    if (index >= mChannels.size())
        return Dorvan::SharedPtr<SoundChannel>();
    Dorvan::SharedPtr<SoundChannel> channel = mChannels.get(index);
    mChannels.removeAt(index);
    return channel;
}

void Sound::update(bool entering) {
    if (!entering || mChannels.isEmpty())
        return;
    const Dorvan::TVector<float, 3> position = getWorldPosition();
    for (unsigned int i = 0; i < mChannels.size(); ++i) {
        Dorvan::SharedPtr<SoundChannel> channel = mChannels.get(i);
        if (channel)
            channel->set3DAttributes(position, kNoVelocity);
    }
}

BoundingVolume const* Sound::getBoundingVolume() const { return &mBoundingVolume; }

Dorvan::TVector<float, 3> Sound::getWorldPosition() const {
    const Node* placed = getParent() ? static_cast<const Node*>(getParent()) : this;
    return Point(placed->getTransformedNode().getWorldTransformation() * Point());
}

}  // namespace Velun
