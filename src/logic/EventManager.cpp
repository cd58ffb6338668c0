#include "logic/EventManager.h"

#include "core/VelunCore.h"

namespace Velun {

EventManager::ElementAdapter::ElementAdapter(Dorvan::SharedPtr<LogicElement> element)
    : mElement(element), mProcess(dynamic_cast<Process*>(element.get())), mRunning(false), mRetired(false) {}

EventManager::ElementAdapter::~ElementAdapter() {}

int EventManager::ElementAdapter::run(std::int64_t timestamp) {
    if (!mProcess || mElement.isNull())
        return 0;
    if (mElement->getState() == LogicElement::StateDisabled)
        return 0;
    mRunning = true;
    int result = mProcess->run(timestamp);
    mRunning = false;
    // Unregistered during its own run: the manager left the adapter to end here.
    if (mRetired)
        delete this;
    return result;
}

EventManager::EventManager() { setSubsystemId(2); }

EventManager::~EventManager() {
    std::vector<Process*> adapters;
    adapters.swap(mProcesses);
    // Elements end after the map is empty: their destructors call back into this manager.
    std::vector<Dorvan::SharedPtr<LogicElement>> elements;
    for (unsigned int i = 0; i < mElements.size(); ++i)
        elements.push_back(mElements.valueAt(i));
    mElements.clear();
    for (std::size_t i = 0; i < adapters.size(); ++i)
        delete adapters[i];
}

unsigned int EventManager::createElementId() { return mElements.createId(); }

void EventManager::returnElementId(unsigned int id) { mElements.returnId(id); }

void EventManager::registerModifier(Dorvan::SharedPtr<Modifier> modifier) {
    if (modifier.isNull()) {
        VelunCore::getLogger("logic")->error("EventManager::registerModifier: the modifier is null");
        return;
    }
    unsigned int id = modifier->getElementId();
    if (mElements.containsKey(id) && mElements.indexOf(id) >= 0)
        return;
    Dorvan::SharedPtr<LogicElement> element(modifier);
    mElements.put(id, element);
    mProcesses.push_back(new ElementAdapter(element));
}

bool EventManager::unregisterModifier(Dorvan::SharedPtr<Modifier> modifier) {
    if (modifier.isNull())
        return false;
    unsigned int id = modifier->getElementId();
    if (mElements.indexOf(id) < 0)
        return false;
    Dorvan::SharedPtr<LogicElement> removed = mElements.remove(id);
    for (std::vector<Process*>::iterator it = mProcesses.begin(); it != mProcesses.end(); ++it) {
        ElementAdapter* adapter = static_cast<ElementAdapter*>(*it);
        if (adapter->mElement.get() == modifier.get()) {
            mProcesses.erase(it);
            if (adapter->mRunning)
                adapter->mRetired = true;
            else
                delete adapter;
            break;
        }
    }
    return true;
}

void EventManager::registerSensor(Dorvan::SharedPtr<Sensor> sensor) { sensor.release(); }

void EventManager::registerController(Dorvan::SharedPtr<Controller> controller) { controller.release(); }

Dorvan::SharedPtr<LogicElement> EventManager::getElementById(unsigned int id) {
    if (mElements.indexOf(id) < 0)
        return Dorvan::SharedPtr<LogicElement>();
    return mElements.get(id);
}

std::vector<Process*>* EventManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
