#pragma once

#include <string>

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "scene/BoundingBox.h"
#include "scene/Leaf.h"
#include "scene/TVector.h"
#include "sound/SoundChannel.h"
#include "velun_export.h"

namespace Velun {

// A place in the scene for sound: the channels it holds are set to the node's world
// position when they are added and whenever the update pass finds the node moved, so
// a sound on a node under a moving transformation follows it. Positions only; the
// velocity passed on is zero. Its volume is the point at its origin.
class VELUN_EXPORT Sound : public Leaf {
public:
    Sound();
    explicit Sound(std::string const& name);
    ~Sound() override;

    // Appends the channel, places it at the node at once, and returns its index.
    unsigned int addChannel(Dorvan::SharedPtr<SoundChannel> channel);
    // Empty for an index at or beyond the end.
    Dorvan::SharedPtr<SoundChannel> getChannel(unsigned int index);
    // Takes the channel out of the node (later ones move down by one) and returns it;
    // empty, with nothing changed, for an index at or beyond the end.
    Dorvan::SharedPtr<SoundChannel> removeChannel(unsigned int index);
    unsigned int getChannelCount() const { return mChannels.size(); }

    // On the way down, places every channel at the node's world position.
    void update(bool entering) override;
    BoundingVolume const* getBoundingVolume() const override;

private:
    void initialize();
    // The node's origin in world coordinates. A Sound has no transformation of its
    // own: its parent's is up to date when the update pass reaches the node.
    Dorvan::TVector<float, 3> getWorldPosition() const;

    Dorvan::Vector<Dorvan::SharedPtr<SoundChannel>> mChannels;
    BoundingBox mBoundingVolume;
};

}  // namespace Velun
