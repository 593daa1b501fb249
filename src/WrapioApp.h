// The composition root: builds the object graph of a process and names the concrete platform.
#pragma once

#include "CommandLine/CommandServices.h"
#include "Platform/Directories.h"

#include <QStringList>

#include <memory>

namespace wrapio {

/// Everything a process of the program consists of. Lives on the main thread, as long as the process.
class WrapioApp {
public:
    WrapioApp();
    ~WrapioApp();
    WrapioApp(const WrapioApp&) = delete;
    WrapioApp& operator=(const WrapioApp&) = delete;

    /// Carries out what `arguments` (without the program's name) ask for and answers the exit status.
    [[nodiscard]] int run(const QStringList& arguments);

private:
    class PlatformServices;
    class SharedServices;
    class LazyCatalogue;

    std::unique_ptr<PlatformServices> m_platform;
    std::unique_ptr<SharedServices> m_services;
    std::unique_ptr<LazyCatalogue> m_catalogue;
};

}  // namespace wrapio
