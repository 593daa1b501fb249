// Processes of tests that are gone when the test is over, however it ends.
#pragma once

#include "Platform/Linux/ProcessList.h"

#include <QString>

#include <sys/wait.h>

#include <algorithm>
#include <csignal>

namespace wrapio {

/// Ends every process that runs from a bundle below a folder.
class RunningBundles {
public:
    explicit RunningBundles(QString folder)
        : m_folder(std::move(folder)) {}
    RunningBundles(const RunningBundles&) = delete;
    RunningBundles& operator=(const RunningBundles&) = delete;
    ~RunningBundles() {
        for (const BundleProcess& process : list()) {
            ::kill(static_cast<pid_t>(process.processIdentifier), SIGKILL);
            ::waitpid(static_cast<pid_t>(process.processIdentifier), nullptr, 0);
        }
    }

    [[nodiscard]] std::vector<BundleProcess> list() const {
        auto processes = bundleProcesses();
        std::erase_if(processes,
                      [this](const BundleProcess& process) { return !process.bundlePath.startsWith(m_folder + u'/'); });
        return processes;
    }

private:
    QString m_folder;
};

}  // namespace wrapio
