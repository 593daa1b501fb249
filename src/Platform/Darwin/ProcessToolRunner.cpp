#include "Platform/Darwin/ProcessToolRunner.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

extern char** environ;  // NOLINT(readability-redundant-declaration): not declared by every platform

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// How often an open pipe is checked against a tool that has ended and left it to another program.
constexpr int pollMilliseconds = 50;
constexpr int signalBase = 128;

/// One end of a pipe, closed when this goes away.
class PipeEnd {
public:
    PipeEnd() = default;
    PipeEnd(const PipeEnd&) = delete;
    PipeEnd& operator=(const PipeEnd&) = delete;
    ~PipeEnd() { close(); }

    void close() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = -1;
    }
    void open(int descriptor) { m_descriptor = descriptor; }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

struct Pipe {
    PipeEnd readEnd;
    PipeEnd writeEnd;

    [[nodiscard]] bool open() {
        std::array<int, 2> ends{};
        return ::pipe(ends.data()) == 0 && keep(ends[0], readEnd) && keep(ends[1], writeEnd) &&
               ::fcntl(readEnd.get(), F_SETFL, O_NONBLOCK) == 0;
    }

private:
    /// Moves the end beyond the standard streams, which the tool's own are to take the places of.
    [[nodiscard]] static bool keep(int descriptor, PipeEnd& end) {
        end.open(::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
        ::close(descriptor);
        return end.get() >= 0;
    }
};

/// How the tool is to be started: its three streams, and no signal blocked or ignored.
class SpawnSetup {
public:
    SpawnSetup(int output, int error) {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attributes);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, error, STDERR_FILENO);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
    ~SpawnSetup() {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }

    /// An errno value; 0 when the tool runs.
    [[nodiscard]] int spawn(pid_t& process, const QString& path, const QStringList& arguments) const {
        std::vector<QByteArray> texts{QFile::encodeName(path)};
        for (const QString& argument : arguments)
            texts.push_back(QFile::encodeName(argument));
        std::vector<char*> pointers;
        pointers.reserve(texts.size() + 1);
        for (QByteArray& text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        return ::posix_spawn(&process, pointers.front(), &m_actions, &m_attributes, pointers.data(), environ);
    }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

LaunchError launchError(const QString& path, int code) {
    return {path, QString::fromStdString(std::generic_category().message(code))};
}

/// Takes what the pipe holds; closes it at its end.
void drain(PipeEnd& end, QByteArray& bytes) {
    char buffer[65536];
    for (;;) {
        const ssize_t count = ::read(end.get(), buffer, sizeof buffer);
        if (count > 0) {
            bytes.append(buffer, count);
            continue;
        }
        if (count < 0 && errno == EINTR)
            continue;
        if (count == 0 || errno != EAGAIN)
            end.close();
        return;
    }
}

/// The status of an ended process; nothing while it runs and `options` says not to wait.
std::optional<int> collect(pid_t process, int options) {
    int status = 0;
    pid_t collected = 0;
    do
        collected = ::waitpid(process, &status, options);
    while (collected < 0 && errno == EINTR);
    if (collected == 0)
        return std::nullopt;
    // Somebody else has taken the status: nobody knows how the tool ended.
    if (collected < 0)
        return signalBase - 1;
    return WIFSIGNALED(status) ? signalBase + WTERMSIG(status) : WEXITSTATUS(status);
}

ToolResult listen(pid_t process, PipeEnd& output, PipeEnd& error) {
    ToolResult result;
    std::optional<int> status;
    while (!status && (output.get() >= 0 || error.get() >= 0)) {
        std::array<pollfd, 2> ends{{{output.get(), POLLIN, 0}, {error.get(), POLLIN, 0}}};
        if (::poll(ends.data(), ends.size(), pollMilliseconds) == 0)
            status = collect(process, WNOHANG);
        if (output.get() >= 0)
            drain(output, result.standardOutput);
        if (error.get() >= 0)
            drain(error, result.standardError);
    }
    result.status = status ? *status : collect(process, 0).value_or(signalBase - 1);
    return result;
}

}  // namespace

bool ProcessToolRunner::exists(const QString& path) const {
    const QFileInfo file(path);
    return file.isFile() && file.isExecutable();
}

tl::expected<ToolResult, LaunchError> ProcessToolRunner::run(const QString& path, const QStringList& arguments) {
    const auto hasNul = [](const QString& text) { return text.contains(QChar(0)); };
    if (hasNul(path) || std::any_of(arguments.begin(), arguments.end(), hasNul))
        return tl::unexpected(launchError(path, EINVAL));
    Pipe output;
    Pipe error;
    if (!output.open() || !error.open())
        return tl::unexpected(launchError(path, errno));
    pid_t process = 0;
    const SpawnSetup setup(output.writeEnd.get(), error.writeEnd.get());
    if (const int code = setup.spawn(process, path, arguments); code != 0)
        return tl::unexpected(launchError(path, code));
    output.writeEnd.close();
    error.writeEnd.close();
    return listen(process, output.readEnd, error.readEnd);
}

}  // namespace wrapio
