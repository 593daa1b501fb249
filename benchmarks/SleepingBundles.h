// Processes that do nothing: apps, each started from a bundle of its own, and others.
#pragma once

#include <QFile>
#include <QString>

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

namespace wrapio {

/// Starts `apps` processes from "FOLDER/Harbour Notes N.app" and `others` from no bundle; ends them when it goes.
class SleepingBundles {
public:
    SleepingBundles(const QString& folder, int apps, int others) {
        namespace fs = std::filesystem;
        const fs::path root = QFile::encodeName(folder).toStdString();
        const fs::path program = root / "sleep";
        fs::create_directories(root);
        fs::copy_file("/bin/sleep", program, fs::copy_options::overwrite_existing);
        for (int i = 0; i < apps; ++i) {
            const fs::path place = root / ("Harbour Notes " + std::to_string(i) + ".app") / "Contents" / "Linux";
            fs::create_directories(place);
            fs::create_hard_link(program, place / "WrapioRunner");
            start((place / "WrapioRunner").string());
        }
        for (int i = 0; i < others; ++i)
            start(program.string());
    }
    ~SleepingBundles() {
        for (const pid_t process : m_processes)
            ::kill(process, SIGKILL);
        for (const pid_t process : m_processes)
            ::waitpid(process, nullptr, 0);
    }
    SleepingBundles(const SleepingBundles&) = delete;
    SleepingBundles& operator=(const SleepingBundles&) = delete;

    [[nodiscard]] std::size_t count() const { return m_processes.size(); }

private:
    void start(std::string program) {
        std::string seconds = "600";
        char* const arguments[] = {program.data(), seconds.data(), nullptr};
        pid_t process = 0;
        if (::posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) == 0)
            m_processes.push_back(process);
    }

    std::vector<pid_t> m_processes;
};

}  // namespace wrapio
