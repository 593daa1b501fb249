// The composition root of the manager.
#pragma once

#include "Platform/LocalChannel.h"

#include <QStringList>

#include <memory>
#include <optional>

namespace wrapio {

class CommandClient;
class TerminalConsole;
class WrapioAppServices;

/// Becomes the one manager, or hands over to the one that runs. Lives on the main thread, as long as the process.
class WrapioAppManager {
public:
    /// `arguments` are those of a start: none, or --background.
    explicit WrapioAppManager(QStringList arguments);
    ~WrapioAppManager();
    WrapioAppManager(const WrapioAppManager&) = delete;
    WrapioAppManager& operator=(const WrapioAppManager&) = delete;

    /// Runs until somebody ends it, and answers the exit status. Needs a QApplication.
    [[nodiscard]] int run();

private:
    class Running;

    void becomeManager();
    void handOver(std::unique_ptr<LocalChannel> manager);

    QStringList m_arguments;
    std::unique_ptr<WrapioAppServices> m_services;
    std::unique_ptr<Running> m_running;
    std::unique_ptr<TerminalConsole> m_console;
    std::unique_ptr<CommandClient> m_client;
};

}  // namespace wrapio
