#include "Platform/Linux/ProcessStart.h"

#include "Platform/Linux/ProcessHandle.h"

#include <QFile>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <system_error>

namespace wrapio {

using std::chrono::steady_clock;

namespace {

/// Texts in the form that system calls take: an array of pointers that ends in a null.
class TextArray {
public:
    explicit TextArray(std::vector<QByteArray> texts)
        : m_texts(std::move(texts)) {
        m_pointers.reserve(m_texts.size() + 1);
        for (QByteArray& text : m_texts)
            m_pointers.push_back(text.data());
        m_pointers.push_back(nullptr);
    }
    [[nodiscard]] char* const* data() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_texts;
    std::vector<char*> m_pointers;
};

/// What the new process finds: its files, folder, session and signals. The first failure stands.
class SpawnSettings {
public:
    SpawnSettings() {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawnattr_init(&m_attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&m_actions);
        ::posix_spawnattr_destroy(&m_attributes);
    }

    [[nodiscard]] int prepare(const QByteArray& workingFolder) {
        int code = 0;
        const auto then = [&code](int next) { code = code != 0 ? code : next; };
        then(::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        then(::posix_spawn_file_actions_addopen(&m_actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0));
        then(::posix_spawn_file_actions_adddup2(&m_actions, STDOUT_FILENO, STDERR_FILENO));
        then(::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1));
        then(::posix_spawn_file_actions_addchdir_np(&m_actions, workingFolder.constData()));
        sigset_t none{};
        sigset_t all{};
        sigemptyset(&none);
        sigfillset(&all);
        then(::posix_spawnattr_setsigmask(&m_attributes, &none));
        then(::posix_spawnattr_setsigdefault(&m_attributes, &all));
        constexpr int flags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
        then(::posix_spawnattr_setflags(&m_attributes, static_cast<short>(flags)));
        return code;
    }
    [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &m_actions; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

std::vector<QByteArray> environmentWith(const EnvironmentChanges& changes) {
    std::vector<QByteArray> result;
    const auto isChanged = [&changes](const QByteArray& variable) {
        return std::any_of(changes.begin(), changes.end(),
                           [&variable](const auto& change) { return variable.startsWith(change.first + '='); });
    };
    for (char** variable = environ; variable && *variable; ++variable) {
        if (QByteArray text(*variable); !isChanged(text))
            result.push_back(std::move(text));
    }
    for (const auto& [name, value] : changes) {
        if (value)
            result.push_back(name + '=' + *value);
    }
    return result;
}

std::vector<QByteArray> commandLine(const QByteArray& program, const QStringList& arguments) {
    std::vector<QByteArray> texts{program};
    for (const QString& argument : arguments)
        texts.push_back(QFile::encodeName(argument));
    return texts;
}

LaunchError failure(const QString& program, int code) {
    return {program, QString::fromStdString(std::generic_category().message(code))};
}

/// Waits until the process of `handle` ends; false when that took longer.
bool waitForEnd(int handle, double seconds) {
    const auto end = steady_clock::now() + std::chrono::duration<double>(seconds);
    for (;;) {
        const std::chrono::duration<double, std::milli> left = end - steady_clock::now();
        pollfd entry{handle, POLLIN, 0};
        const int ready = ::poll(&entry, 1, static_cast<int>(std::clamp(left.count() + 1.0, 0.0, 1e9)));
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

}  // namespace

tl::expected<pid_t, LaunchError> startProcess(const QString& program, const QStringList& arguments,
                                              const QString& workingFolder, const EnvironmentChanges& changes) {
    const auto native = posix::nativePath("start", program);
    const bool cutShort = std::any_of(arguments.begin(), arguments.end(),
                                      [](const QString& argument) { return argument.contains(QChar(u'\0')); });
    if (!native || cutShort)
        return tl::unexpected(failure(program, EINVAL));
    const TextArray texts(commandLine(*native, arguments));
    const TextArray environment(environmentWith(changes));
    SpawnSettings settings;
    pid_t process = 0;
    int code = settings.prepare(QFile::encodeName(workingFolder));
    if (code == 0)
        code = ::posix_spawn(&process, native->constData(), settings.actions(), settings.attributes(), texts.data(),
                             environment.data());
    if (code != 0)
        return tl::unexpected(failure(program, code));
    return process;
}

std::optional<int> runProcess(const QString& program, const QStringList& arguments, double seconds,
                              const EnvironmentChanges& changes) {
    const auto process = startProcess(program, arguments, QStringLiteral("/"), changes);
    if (!process)
        return std::nullopt;
    const auto handle = posix::openProcess(*process);
    if (!handle.isOpen() || !waitForEnd(handle.get(), seconds))
        ::kill(*process, SIGKILL);
    int status = 0;
    if (posix::retrying([&] { return ::waitpid(*process, &status, 0); }) != *process || !WIFEXITED(status))
        return std::nullopt;
    return WEXITSTATUS(status);
}

}  // namespace wrapio
