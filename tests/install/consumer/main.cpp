// An application outside the source tree: it includes the installed headers, starts
// the engine, runs one explicit pass and shuts down.
#include <iostream>

#include "Velun.h"

int main() {
    Velun::VelunCore& core = Velun::VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    int result = core.getProcessManager().update(true);
    bool ok = result == 0 && core.getProcessManager().getSubsystemCount() == 5;
    core.shutdown();
    std::cout << (ok ? "consumer ok" : "consumer failed") << std::endl;
    return ok ? 0 : 1;
}
