#pragma once

#include <cstdint>

#include "core/Counter.h"
#include "core/Timer.h"
#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

class TimerPlugin;

// The engine's clock: the millisecond timestamp that the main loop hands to every
// process and that resources use to mark their changes. It measures nothing itself
// but asks the registered TimerPlugins; for each service the first plug-in
// registered that offers it serves. Without one, timestamps are 0 and the
// factories give empty pointers. Plug-ins are not owned.
class VELUN_EXPORT TimerManager {
public:
    TimerManager();
    virtual ~TimerManager();

    // Initialises the plug-in unless it is initialised already; a plug-in that
    // fails to initialise is not registered, and one registered already is left
    // as it is. A later plug-in never takes a service over from an earlier one.
    void registerTimerPlugin(TimerPlugin& plugin);
    // Removes the plug-in; each service it served passes to the next registered
    // plug-in that offers it. The plug-in is not shut down.
    void unregisterTimerPlugin(TimerPlugin& plugin);

    std::int64_t getTimestamp() const;
    Dorvan::SharedPtr<Timer> createTimer() const;
    Dorvan::SharedPtr<Counter> createHighresCounter() const;

    unsigned int getTimerPluginCount() const;

private:
    TimerManager(const TimerManager&) = delete;
    TimerManager& operator=(const TimerManager&) = delete;

    void chooseServices();

    Dorvan::Vector<TimerPlugin*> mPlugins;
    TimerPlugin* mTimestampPlugin;
    TimerPlugin* mHighresPlugin;
    TimerPlugin* mTimerPlugin;
};

}  // namespace Velun
