#include "input/InputManager.h"

#include "input/InputEvent.h"
#include "input/InputProcessor.h"
#include "input/InputProvider.h"

namespace Velun {

InputManager::PollingAdapter::PollingAdapter(InputProvider& provider) : mProvider(&provider) {}

InputManager::PollingAdapter::~PollingAdapter() {}

int InputManager::PollingAdapter::run(std::int64_t timestamp) {
    if (mProvider && mProvider->isEnabled() && mProvider->needsPolling()) {
        InputManager* manager = mProvider->mRegisteredWith;
        ++manager->mPollDepth;
        mProvider->pollEvents(timestamp);
        --manager->mPollDepth;
    }
    return 0;
}

InputManager::InputManager() : mPollDepth(0), mHasDetachedAdapters(false) { setSubsystemId(1); }

InputManager::~InputManager() {
    while (mProviders.size() > 0)
        unregisterInputProvider(*mProviders.valueAt(0));
    while (mProcessors.size() > 0)
        unregisterInputProcessor(*mProcessors.valueAt(0));
    purgeAdapters();
}

void InputManager::registerInputProvider(InputProvider& provider) {
    int id = provider.getProviderId();
    if (mProviders.containsKey(id)) {
        InputProvider* registered = mProviders.get(id);
        if (registered == &provider)
            return;
        unregisterInputProvider(*registered);
    }
    if (provider.mRegisteredWith)
        provider.mRegisteredWith->unregisterInputProvider(provider);
    mProviders.put(id, &provider);
    provider.mRegisteredWith = this;
    mProcesses.push_back(new PollingAdapter(provider));
}

void InputManager::unregisterInputProvider(InputProvider& provider) {
    int id = provider.getProviderId();
    if (!mProviders.containsKey(id) || mProviders.get(id) != &provider)
        return;
    mProviders.remove(id);
    provider.mRegisteredWith = nullptr;
    removeAdapter(provider);
}

void InputManager::removeAdapter(InputProvider& provider) {
    for (std::vector<Process*>::iterator it = mProcesses.begin(); it != mProcesses.end(); ++it) {
        PollingAdapter* adapter = static_cast<PollingAdapter*>(*it);
        if (adapter->mProvider != &provider)
            continue;
        if (mPollDepth > 0) {
            adapter->mProvider = nullptr;
            mHasDetachedAdapters = true;
        } else {
            delete adapter;
            mProcesses.erase(it);
        }
        return;
    }
}

void InputManager::purgeAdapters() {
    if (!mHasDetachedAdapters || mPollDepth > 0)
        return;
    std::vector<Process*> kept;
    for (Process* process : mProcesses) {
        if (static_cast<PollingAdapter*>(process)->mProvider)
            kept.push_back(process);
        else
            delete process;
    }
    mProcesses.swap(kept);
    mHasDetachedAdapters = false;
}

void InputManager::registerInputProcessor(InputProcessor& processor) {
    int id = processor.getProcessorId();
    if (mProcessors.containsKey(id)) {
        InputProcessor* registered = mProcessors.get(id);
        if (registered == &processor)
            return;
        unregisterInputProcessor(*registered);
    }
    if (processor.mRegisteredWith)
        processor.mRegisteredWith->unregisterInputProcessor(processor);
    mProcessors.put(id, &processor);
    processor.mRegisteredWith = this;
}

void InputManager::unregisterInputProcessor(InputProcessor& processor) {
    int id = processor.getProcessorId();
    if (!mProcessors.containsKey(id) || mProcessors.get(id) != &processor)
        return;
    mProcessors.remove(id);
    processor.mRegisteredWith = nullptr;
}

void InputManager::triggerInputEvent(InputEvent& event) {
    unsigned int position = 0;
    while (position < mProcessors.size()) {
        int id = mProcessors.keyAt(position);
        InputProcessor* processor = mProcessors[id];
        if (processor->isEnabled() && processor->processEvent(event))
            return;
        // The processor may have unregistered itself or others: go on after it, or
        // at its old place if it is gone.
        if (position < mProcessors.size() && mProcessors.keyAt(position) == id) {
            ++position;
        } else {
            int index = mProcessors.indexOf(id);
            if (index >= 0)
                position = static_cast<unsigned int>(index) + 1;
        }
    }
}

int InputManager::createProviderId() { return mProviders.createId(); }

int InputManager::createProcessorId() { return mProcessors.createId(); }

int InputManager::createDeviceId() { return mDevices.createId(); }

unsigned int InputManager::getInputProviderCount() const { return mProviders.size(); }

unsigned int InputManager::getInputProcessorCount() const { return mProcessors.size(); }

InputProvider* InputManager::getInputProviderAt(unsigned int position) {
    return mProviders.valueAt(position);
}

InputProcessor* InputManager::getInputProcessorAt(unsigned int position) {
    return mProcessors.valueAt(position);
}

std::vector<Process*>* InputManager::getProcessList() {
    purgeAdapters();
    return &mProcesses;
}

}  // namespace Velun
