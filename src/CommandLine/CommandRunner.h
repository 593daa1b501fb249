// Carries commands out.
#pragma once

#include "CommandLine/Command.h"
#include "CommandLine/CommandServices.h"
#include "CommandLine/Console.h"

#include <functional>

namespace wrapio {

/// Main thread. One runner may carry out several commands at the same time, each with a console of its own.
class CommandRunner {
public:
    using Done = std::function<void(ExitStatus)>;

    explicit CommandRunner(CommandServices services) : m_services(services) {}

    /// Carries `command` out; `done` is called once, now or in a later turn of the event loop. `console` must live until
    /// then. Commands that concern the program as a whole (StartCommand, OpenCommand) are not for a runner.
    void run(const Command& command, Console& console, Done done);

private:
    CommandServices m_services;
};

}  // namespace wrapio
