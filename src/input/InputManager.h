#pragma once

#include <cstdint>
#include <vector>

#include "core/Process.h"
#include "core/Subsystem.h"
#include "foundation/IdMap.h"
#include "velun_export.h"

namespace Velun {

class InputDevice;
class InputEvent;
class InputProcessor;
class InputProvider;

// The input subsystem (id 1, first in the update order). Once per pass it polls
// each registered provider; every event a provider sends walks the registered
// processors in order of registration until one takes it. Providers and processors
// are not owned.
class VELUN_EXPORT InputManager : public Subsystem {
public:
    // The process that polls one provider each pass, while the provider is
    // enabled and needs polling.
    class VELUN_EXPORT PollingAdapter : public Process {
    public:
        explicit PollingAdapter(InputProvider& provider);
        ~PollingAdapter() override;
        int run(std::int64_t timestamp) override;
        // Null once the provider has been unregistered.
        InputProvider* getProvider() const { return mProvider; }

    private:
        friend class InputManager;
        InputProvider* mProvider;
    };

    InputManager();
    // Unregisters everything; deletes the adapters, not the providers or processors.
    ~InputManager() override;

    // Registers the provider under its id and adds its polling adapter. A provider
    // registered already is left as it is; another one with the same id is replaced.
    void registerInputProvider(InputProvider& provider);
    // Removes the provider and its adapter; safe from inside a poll or an event.
    void unregisterInputProvider(InputProvider& provider);
    // Adds the processor at the end of the chain. A processor registered already
    // keeps its place; another one with the same id is replaced.
    void registerInputProcessor(InputProcessor& processor);
    // Removes the processor; safe from inside processEvent.
    void unregisterInputProcessor(InputProcessor& processor);

    // Hands the event to the enabled processors in order of registration until
    // one takes it. A processor registered meanwhile sees the event too.
    void triggerInputEvent(InputEvent& event);

    // Ids for providers, processors and devices; each sequence starts at 101.
    int createProviderId();
    int createProcessorId();
    int createDeviceId();

    unsigned int getInputProviderCount() const;
    unsigned int getInputProcessorCount() const;
    // By position in order of registration; the position is not checked.
    InputProvider* getInputProviderAt(unsigned int position);
    InputProcessor* getInputProcessorAt(unsigned int position);

    std::vector<Process*>* getProcessList() override;

private:
    InputManager(const InputManager&) = delete;
    InputManager& operator=(const InputManager&) = delete;

    void removeAdapter(InputProvider& provider);
    void purgeAdapters();

    Dorvan::IdMap<InputProvider*, int> mProviders;
    Dorvan::IdMap<InputProcessor*, int> mProcessors;
    Dorvan::IdMap<InputDevice*, int> mDevices;  // an id source only
    std::vector<Process*> mProcesses;
    // Adapters of providers unregistered during a poll stay in the list, detached,
    // until the list is next fetched: the main loop may be walking it.
    int mPollDepth;
    bool mHasDetachedAdapters;
};

}  // namespace Velun
