// An application for tests of starting and ending others: tells how it was started and waits for its end.
//
// WRAPIO_TEST_REPORT names the file for what it found, one "NAME=VALUE" on a line. WRAPIO_TEST_DEAF makes it ignore the
// request to end.

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// So that a test that fails leaves nothing behind.
constexpr unsigned longestLife = 60;

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "(unset)";
}

bool blocksSignals() {
    sigset_t mask;
    sigprocmask(SIG_SETMASK, nullptr, &mask);
    for (int signal = 1; signal < SIGRTMIN; ++signal) {
        if (sigismember(&mask, signal) == 1)
            return true;
    }
    return false;
}

bool ignoresSignal(int number) {
    struct sigaction action {};
    sigaction(number, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

std::string openFiles() {
    std::string files;
    for (int descriptor = 0; descriptor < 256; ++descriptor) {
        std::error_code failure;
        const auto target = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), failure);
        if (!failure)
            files += std::to_string(descriptor) + ":" + target.string() + " ";
    }
    return files;
}

void report(const std::string& path, int argumentCount) {
    const std::string files = openFiles();
    std::ofstream out(path + ".part");
    out << "pid=" << getpid() << "\nsession=" << getsid(0) << "\nfolder=" << std::filesystem::current_path().string()
        << "\nfiles=" << files << "\narguments=" << argumentCount - 1 << "\ntoken=" << variable("XDG_ACTIVATION_TOKEN")
        << "\nstartup=" << variable("DESKTOP_STARTUP_ID") << "\nblocksSignals=" << blocksSignals()
        << "\nignoresPipe=" << ignoresSignal(SIGPIPE) << "\n";
    out.close();
    std::filesystem::rename(path + ".part", path);
}

}  // namespace

int main(int argc, char**) {
    alarm(longestLife);
    if (std::getenv("WRAPIO_TEST_DEAF"))
        std::signal(SIGTERM, SIG_IGN);
    if (const char* const path = std::getenv("WRAPIO_TEST_REPORT"))
        report(path, argc);
    for (;;)
        pause();
}
