#pragma once

#include <cstdint>
#include <vector>

#include "core/Process.h"
#include "core/Subsystem.h"
#include "foundation/IdMap.h"
#include "foundation/SharedPtr.h"
#include "logic/Controller.h"
#include "logic/LogicElement.h"
#include "logic/Modifier.h"
#include "logic/Sensor.h"
#include "velun_export.h"

namespace Velun {

// Keeps the registered logic elements and runs the modifiers once per pass, in order
// of registration, between input and the scene update. A registered element is kept
// alive by the manager until it is unregistered or the manager ends.
class VELUN_EXPORT EventManager : public Subsystem {
public:
    // Runs one element in the main loop, unless the element is disabled.
    class VELUN_EXPORT ElementAdapter : public Process {
    public:
        explicit ElementAdapter(Dorvan::SharedPtr<LogicElement> element);
        ~ElementAdapter() override;
        // 0 for a disabled element or one that is no Process; else the element's result.
        int run(std::int64_t timestamp) override;
        Dorvan::SharedPtr<LogicElement> getElement() const { return mElement; }

    private:
        friend class EventManager;

        Dorvan::SharedPtr<LogicElement> mElement;
        Process* mProcess;
        bool mRunning;
        bool mRetired;
    };

    EventManager();
    ~EventManager() override;

    // A new element id: 101 first, then growing; never reused.
    unsigned int createElementId();
    void returnElementId(unsigned int id);

    // Keeps the modifier and runs it in each pass from now on, once it is switched on
    // with setState. A modifier registered twice runs once.
    void registerModifier(Dorvan::SharedPtr<Modifier> modifier);
    // Removes the modifier and its adapter; false if it is not registered. A modifier
    // may unregister itself from its own run.
    bool unregisterModifier(Dorvan::SharedPtr<Modifier> modifier);
    // Reserved: the engine does not run sensors or controllers; the argument is released.
    void registerSensor(Dorvan::SharedPtr<Sensor> sensor);
    void registerController(Dorvan::SharedPtr<Controller> controller);

    // The registered element with this id, or null.
    Dorvan::SharedPtr<LogicElement> getElementById(unsigned int id);
    unsigned int getElementCount() const { return mElements.size(); }

    std::vector<Process*>* getProcessList() override;

private:
    std::vector<Process*> mProcesses;
    Dorvan::IdMap<Dorvan::SharedPtr<LogicElement>, unsigned int> mElements;
};

}  // namespace Velun
