#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/NameMapper.h"
#include "core/Process.h"
#include "core/Subsystem.h"
#include "foundation/LinkedMap.h"
#include "foundation/SharedPtr.h"
#include "scene/TVector.h"
#include "sound/SoundChannel.h"
#include "sound/SoundSource.h"
#include "velun_export.h"

namespace Velun {

class SoundEngine;

// The sound subsystem (id 5, after the scene in the update order, so that the places
// Sound nodes set in a pass reach the engine in that pass). Hands out sources, cached
// by name, and channels, optionally by name, from the sound engine in use, and runs
// every registered engine's update once per pass. Without an engine (no sound back
// end could start) sources and channels come back empty and the game runs silently.
// Engines are not owned.
class VELUN_EXPORT SoundManager : public Subsystem {
public:
    // The process that updates one engine each pass.
    class VELUN_EXPORT EngineAdapter : public Process {
    public:
        explicit EngineAdapter(SoundEngine& engine);
        ~EngineAdapter() override;
        int run(std::int64_t timestamp) override;
        SoundEngine& getEngine() const { return *mEngine; }

    private:
        SoundEngine* mEngine;
    };

    SoundManager();
    // Releases the cached sources and named channels and deletes the adapters; the
    // engines are left to whoever made them.
    ~SoundManager() override;

    // Initialises the engine if needed and makes it the one in use; false, with
    // nothing changed, when it cannot be initialised. An engine registered before
    // keeps its update; registering one engine twice adds no second update.
    bool registerSoundEngine(SoundEngine& engine);
    // Removes the engine's update; if it is the engine in use, the manager is left
    // without one and releases the sources and channels it holds from it.
    void unregisterSoundEngine(SoundEngine& engine);
    // The engine in use, or null.
    SoundEngine* getSoundEngine() const { return mSoundEngine; }

    // Maps sound names to files; set by VelunCore::setup.
    void setSoundNameMapper(Dorvan::SharedPtr<NameMapper> mapper) { mSoundNameMapper = mapper; }
    Dorvan::SharedPtr<NameMapper> getSoundNameMapper() const { return mSoundNameMapper; }

    // The source for a sound name, positional (placed in the world) or not (played at
    // the listener). With useCache, a source opened before for the same name and kind
    // is returned and a new one is kept; without, a new one is opened each time and
    // nothing is kept. Empty if there is no engine or mapper, or the engine cannot
    // open it.
    Dorvan::SharedPtr<SoundSource> getSoundSource(const std::string& name, bool positional, bool useCache);
    // A new channel on the source; a non-empty name keeps it under that name, in place
    // of an earlier channel of that name. Empty without an engine.
    Dorvan::SharedPtr<SoundChannel> createChannel(Dorvan::SharedPtr<SoundSource> source,
                                                  const std::string& name);
    // A channel that lives as long as the caller holds it.
    Dorvan::SharedPtr<SoundChannel> createChannel(Dorvan::SharedPtr<SoundSource> source);
    // The channel kept under that name, or empty.
    Dorvan::SharedPtr<SoundChannel> getChannel(const std::string& name);

    // Moves a listener of the engine in use; the application calls it, e.g. from its
    // camera each frame. Does nothing without an engine.
    void updateListenerAttributes(const Dorvan::TVector<float, 3>& position,
                                  const Dorvan::TVector<float, 3>& velocity,
                                  const Dorvan::TVector<float, 3>& forward,
                                  const Dorvan::TVector<float, 3>& up, unsigned int listener);

    std::vector<Process*>* getProcessList() override;

private:
    SoundManager(const SoundManager&) = delete;
    SoundManager& operator=(const SoundManager&) = delete;

    // Cached sources by name and positional flag: the two kinds of one name differ.
    typedef std::pair<std::string, bool> SourceKey;

    Dorvan::SharedPtr<NameMapper> mSoundNameMapper;
    std::vector<Process*> mProcesses;
    SoundEngine* mSoundEngine;
    Dorvan::LinkedMap<SourceKey, Dorvan::SharedPtr<SoundSource>> mSoundSources;
    Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<SoundChannel>> mChannels;
};

}  // namespace Velun
