#pragma once

#include "velun_export.h"

namespace Velun {

class InputEvent;
class InputManager;

// The application's handler of input events. Registered processors see each event
// in order of registration until one of them takes it. A processor is not owned by
// InputManager; destroying a registered one unregisters it.
class VELUN_EXPORT InputProcessor {
public:
    // A negative id takes the next one from InputManager::createProcessorId, which
    // needs a started engine.
    explicit InputProcessor(int processorId = -1);
    virtual ~InputProcessor();

    virtual int getProcessorId();
    // A disabled processor is passed over.
    virtual bool isEnabled();
    virtual void setEnabled(bool enabled);
    // Returns true to take the event: later processors do not see it. The event
    // lives only during the call.
    virtual bool processEvent(InputEvent& event) = 0;

private:
    InputProcessor(const InputProcessor&) = delete;
    InputProcessor& operator=(const InputProcessor&) = delete;

    friend class InputManager;

    bool mEnabled;
    int mProcessorId;
    InputManager* mRegisteredWith;  // set while registered
};

}  // namespace Velun
