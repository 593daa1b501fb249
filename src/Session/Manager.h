// The one process that holds the catalogue for as long as it runs.
#pragma once

#include "Platform/ApplicationBus.h"
#include "Session/CommandServer.h"
#include "Session/ManagerInterface.h"

#include <functional>

namespace wrapio {

/// Main thread. Made once the catalogue is held.
class Manager {
public:
    struct System {
        LocalServer& server;
        ApplicationBus& bus;
        Scheduler& scheduler;
    };

    /// Everything must outlive this. `ended` is called once, when the program may end.
    Manager(System system, CommandRunner& runner, ManagerInterface& interface, std::function<void()> ended);

    /// Can be reached from now on. Fails when other processes could not hand their commands over. Without a session bus
    /// it works all the same.
    [[nodiscard]] FileResult<void> start(bool background);
    /// Ends the program once the commands that run are done, or have had their time. The second call does not wait.
    void quit();

private:
    System m_system;
    ManagerInterface& m_interface;
    CommandServer m_commands;
    std::function<void()> m_ended;
    bool m_isQuitting = false;
};

}  // namespace wrapio
