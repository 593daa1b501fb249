// Stands in for the runner inside a bundle: says that it was started and with what, and stays until it is told to end.
// Each start adds a line of JSON to the file that WRAPIO_STAND_IN_LOG names.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

std::string quoted(std::string_view text) {
    std::string json = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            json += '\\';
        json += c;
    }
    return json + '"';
}

std::string report(int argc, char* argv[]) {
    std::string line = "{\"process\": " + std::to_string(::getpid()) + ", \"arguments\": [";
    for (int i = 0; i < argc; ++i)
        line += (i == 0 ? "" : ", ") + quoted(argv[i]);
    return line + "]}\n";
}

}  // namespace

int main(int argc, char* argv[]) {
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGTERM);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    if (const char* const log = std::getenv("WRAPIO_STAND_IN_LOG")) {
        const std::string line = report(argc, argv);
        const int file = ::open(log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        if (file < 0 || ::write(file, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
            return 1;
    }
    int signal = 0;
    return sigwait(&ending, &signal) == 0 ? 0 : 1;
}
