#include "core/TimerManager.h"

#include "core/TimerPlugin.h"

namespace Velun {

TimerManager::TimerManager() : mTimestampPlugin(nullptr), mHighresPlugin(nullptr), mTimerPlugin(nullptr) {}

TimerManager::~TimerManager() {}

void TimerManager::registerTimerPlugin(TimerPlugin& plugin) {
    if (mPlugins.contains(&plugin))
        return;
    if (!plugin.isInitialized() && !plugin.initialize())
        return;
    mPlugins.add(&plugin);
    chooseServices();
}

void TimerManager::unregisterTimerPlugin(TimerPlugin& plugin) {
    int index = mPlugins.indexOf(&plugin);
    if (index < 0)
        return;
    mPlugins.removeAt(static_cast<unsigned int>(index));
    chooseServices();
}

// Each service goes to the first plug-in, in order of registration, that offers it.
void TimerManager::chooseServices() {
    mTimestampPlugin = nullptr;
    mHighresPlugin = nullptr;
    mTimerPlugin = nullptr;
    for (unsigned int i = 0; i < mPlugins.size(); ++i) {
        TimerPlugin* plugin = mPlugins.get(i);
        if (!mTimestampPlugin && plugin->hasTimestamp())
            mTimestampPlugin = plugin;
        if (!mTimerPlugin && plugin->hasTimer())
            mTimerPlugin = plugin;
        if (!mHighresPlugin && plugin->hasHighresCounter())
            mHighresPlugin = plugin;
    }
}

std::int64_t TimerManager::getTimestamp() const {
    return mTimestampPlugin ? mTimestampPlugin->getTimestamp() : 0;
}

Dorvan::SharedPtr<Timer> TimerManager::createTimer() const {
    return mTimerPlugin ? mTimerPlugin->createTimer() : Dorvan::SharedPtr<Timer>();
}

Dorvan::SharedPtr<Counter> TimerManager::createHighresCounter() const {
    return mHighresPlugin ? mHighresPlugin->createHighresCounter() : Dorvan::SharedPtr<Counter>();
}

unsigned int TimerManager::getTimerPluginCount() const { return mPlugins.size(); }

}  // namespace Velun
