// The composition root of a process that carries out one command.
#pragma once

#include "CommandLine/Command.h"
#include "CommandLine/Console.h"
#include "Platform/Directories.h"
#include "Platform/LocalChannel.h"

#include <QString>

#include <memory>
#include <optional>

namespace wrapio {

class WrapioAppServices;

/// Hands the command to the manager when one runs, and otherwise does it in this process. Lives on the main thread, as
/// long as the process.
class WrapioApp {
public:
    /// Reads the command line and looks for a manager; needs no Qt application yet. `argv` as main() got it.
    WrapioApp(int argc, char* argv[]);
    ~WrapioApp();
    WrapioApp(const WrapioApp&) = delete;
    WrapioApp& operator=(const WrapioApp&) = delete;

    /// True when this process will draw icons, so that it needs fonts and image formats.
    [[nodiscard]] bool draws() const;
    /// Does what the command line asks for and answers the exit status. Needs a Qt application.
    [[nodiscard]] int run();

private:
    [[nodiscard]] int runByManager();
    [[nodiscard]] int runHere();
    [[nodiscard]] int open(const OpenCommand& command);
    /// Starts a manager in the background and hands the command to it.
    [[nodiscard]] int runByNewManager();
    [[nodiscard]] int becomeManager(bool background) const;
    [[nodiscard]] int ended(int status) const;
    [[nodiscard]] std::unique_ptr<LocalChannel> call() const;

    char** m_argv;
    QStringList m_arguments;
    tl::expected<Command, UsageError> m_command;
    std::optional<Directories> m_directories;
    std::unique_ptr<LocalChannel> m_manager;
    std::unique_ptr<WrapioAppServices> m_services;
};

}  // namespace wrapio
