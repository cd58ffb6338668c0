#include "sound/SoundManager.h"

#include "sound/SoundEngine.h"

namespace Velun {

SoundManager::EngineAdapter::EngineAdapter(SoundEngine& engine) : mEngine(&engine) {}

SoundManager::EngineAdapter::~EngineAdapter() {}

int SoundManager::EngineAdapter::run(std::int64_t timestamp) {
    mEngine->update(timestamp);
    return 0;
}

SoundManager::SoundManager() : mSoundEngine(nullptr) { setSubsystemId(5); }

SoundManager::~SoundManager() {
    mChannels.clear();
    mSoundSources.clear();
    for (Process* process : mProcesses)
        delete process;
}

bool SoundManager::registerSoundEngine(SoundEngine& engine) {
    if (!engine.isInitialized() && !engine.initialize())
        return false;
    mSoundEngine = &engine;
    for (Process* process : mProcesses) {
        if (&static_cast<EngineAdapter*>(process)->getEngine() == &engine)
            return true;
    }
    mProcesses.push_back(new EngineAdapter(engine));
    return true;
}

void SoundManager::unregisterSoundEngine(SoundEngine& engine) {
    for (std::vector<Process*>::iterator it = mProcesses.begin(); it != mProcesses.end(); ++it) {
        if (&static_cast<EngineAdapter*>(*it)->getEngine() == &engine) {
            delete *it;
            mProcesses.erase(it);
            break;
        }
    }
    if (mSoundEngine != &engine)
        return;
    mSoundEngine = nullptr;
    mChannels.clear();
    mSoundSources.clear();
}

Dorvan::SharedPtr<SoundSource> SoundManager::getSoundSource(const std::string& name, bool positional,
                                                            bool useCache) {
    const SourceKey key(name, positional);
    if (useCache && mSoundSources.containsKey(key))
        return mSoundSources.get(key);
    if (!mSoundNameMapper || !mSoundEngine)
        return Dorvan::SharedPtr<SoundSource>();
    Dorvan::SharedPtr<SoundSource> source =
        mSoundEngine->createSoundSource(mSoundNameMapper->getResourceInfo(name), positional);
    if (source && useCache)
        mSoundSources.put(key, source);
    return source;
}

Dorvan::SharedPtr<SoundChannel> SoundManager::createChannel(Dorvan::SharedPtr<SoundSource> source,
                                                            const std::string& name) {
    if (!mSoundEngine)
        return Dorvan::SharedPtr<SoundChannel>();
    Dorvan::SharedPtr<SoundChannel> channel = mSoundEngine->createChannel(source);
    if (channel && !name.empty())
        mChannels.put(name, channel);
    return channel;
}

Dorvan::SharedPtr<SoundChannel> SoundManager::createChannel(Dorvan::SharedPtr<SoundSource> source) {
    return createChannel(source, std::string());
}

Dorvan::SharedPtr<SoundChannel> SoundManager::getChannel(const std::string& name) {
    if (!mChannels.containsKey(name))
        return Dorvan::SharedPtr<SoundChannel>();
    return mChannels.get(name);
}

void SoundManager::updateListenerAttributes(const Dorvan::TVector<float, 3>& position,
                                            const Dorvan::TVector<float, 3>& velocity,
                                            const Dorvan::TVector<float, 3>& forward,
                                            const Dorvan::TVector<float, 3>& up, unsigned int listener) {
    if (mSoundEngine)
        mSoundEngine->updateListenerAttributes(position, velocity, forward, up, listener);
}

std::vector<Process*>* SoundManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
