#include "core/ProcessManager.h"

#include <algorithm>

#include "core/TimerManager.h"
#include "core/VelunCore.h"

namespace Velun {

ProcessManager::ProcessManager() : mRunning(false), mStopRequested(false), mNextSubsystemId(100) {}

ProcessManager::~ProcessManager() {
    if (mRunning)
        mStopRequested = true;
}

int ProcessManager::run(bool blocking) {
    if (!blocking)
        return -1;
    mRunning = true;
    mStopRequested = false;
    do {
        _updateSubsystems(false);
    } while (!mStopRequested);
    mStopRequested = false;
    mRunning = false;
    return 0;
}

int ProcessManager::stop(bool blocking) {
    if (!mRunning)
        return 0;
    if (blocking)
        return -1;
    mStopRequested = true;
    return 0;
}

int ProcessManager::update(bool blocking) {
    if (!blocking)
        return -1;
    _updateSubsystems(true);
    return 0;
}

int ProcessManager::updateSubsystem(int id, bool blocking) {
    if (!blocking)
        return -1;
    return _updateSubsystem(id);
}

bool ProcessManager::isRunning() { return mRunning; }

int ProcessManager::createSubsystemId() { return mNextSubsystemId++; }

int ProcessManager::registerSubsystem(Subsystem& subsystem, int position) {
    int id = subsystem.getSubsystemId();
    if (id < 0)
        return -1;
    if (mSubsystems.count(id)) {
        int existing = getSubsystemPos(id);
        if (existing >= 0)
            return existing;
    } else {
        mSubsystems[id] = &subsystem;
    }
    int length = static_cast<int>(mSubsystemOrder.size());
    if (position < 0 || position >= length) {
        mSubsystemOrder.push_back(id);
        return length;
    }
    mSubsystemOrder.insert(mSubsystemOrder.begin() + position, id);
    return position;
}

int ProcessManager::registerSubsystemAfter(Subsystem& subsystem, int id) {
    int anchor = getSubsystemPos(id);
    if (anchor < 0)
        return -1;
    return registerSubsystem(subsystem, anchor + 1);
}

int ProcessManager::registerSubsystemBefore(Subsystem& subsystem, int id) {
    int anchor = getSubsystemPos(id);
    if (anchor < 0)
        return -1;
    return registerSubsystem(subsystem, anchor);
}

Subsystem* ProcessManager::getSubsystem(int id) {
    std::map<int, Subsystem*>::iterator it = mSubsystems.find(id);
    return it == mSubsystems.end() ? 0 : it->second;
}

Subsystem* ProcessManager::getSubsystemByPos(int position) {
    int id = mSubsystemOrder.at(position);
    if (id < 0)
        return nullptr;
    return getSubsystem(id);
}

unsigned int ProcessManager::getSubsystemCount() { return static_cast<unsigned int>(mSubsystems.size()); }

int ProcessManager::getSubsystemPos(int id) {
    std::vector<int>::iterator it = std::find(mSubsystemOrder.begin(), mSubsystemOrder.end(), id);
    return it == mSubsystemOrder.end() ? -1 : static_cast<int>(it - mSubsystemOrder.begin());
}

int ProcessManager::_updateSubsystems(bool explicitUpdate) {
    // The size is read at every step, so a subsystem appended during the pass runs in it.
    for (size_t i = 0; i < mSubsystemOrder.size(); ++i) {
        Subsystem* subsystem = getSubsystem(mSubsystemOrder[i]);
        if (!subsystem || !subsystem->isEnabled())
            continue;
        Subsystem::UpdateMode mode = subsystem->getUpdateMode();
        bool due;
        if (explicitUpdate)
            due = mode == Subsystem::UpdateOnRequest || (mode == Subsystem::UpdateAlways && !mRunning);
        else
            due = mode == Subsystem::UpdateAlways || mode == Subsystem::UpdateInLoop;
        if (due)
            _updateSubsystem(mSubsystemOrder[i]);
    }
    return 0;
}

int ProcessManager::_updateSubsystem(int id) {
    Subsystem* subsystem = getSubsystem(id);
    if (!subsystem)
        return 0;
    std::vector<Process*>* processes = subsystem->getProcessList();
    if (!processes)
        return 0;
    Subsystem::ProcessMode mode = subsystem->getProcessMode();
    std::int64_t timestamp = VelunCore::getSingleton().getTimerManager().getTimestamp();
    if (mode == Subsystem::ProcessAlways || mode == Subsystem::ProcessDefault)
        for (size_t i = 0; i < processes->size(); ++i)
            (*processes)[i]->run(timestamp);
    return 0;
}

}  // namespace Velun
