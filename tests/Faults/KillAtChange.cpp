// Runs a program and kills it just before it changes the file system for the n-th time.
//
//   kill-at-change N REPORT PROGRAM [ARGUMENTS…]
//
// With N = 0 nothing is killed. The number of changes is written to the file REPORT. Exits as the program does; 137
// when it was killed. A change is a call that makes, renames, removes, truncates or syncs; the kernel stops the program
// at exactly these, so that every point between two changes can be tried.
#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

#if defined(__x86_64__)
constexpr unsigned architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr unsigned architecture = AUDIT_ARCH_AARCH64;
#endif

constexpr std::array changes = {
    SYS_mkdirat, SYS_unlinkat, SYS_symlinkat, SYS_linkat,    SYS_renameat2, SYS_ftruncate,       SYS_truncate,
    SYS_fchmod,  SYS_fchmodat, SYS_fsync,     SYS_fdatasync, SYS_utimensat, SYS_copy_file_range,
#if defined(__x86_64__)
    SYS_mkdir,   SYS_rmdir,    SYS_unlink,    SYS_symlink,   SYS_link,      SYS_rename,          SYS_renameat,
    SYS_chmod,   SYS_creat,
#endif
};

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "kill-at-change: %s: %s\n", what, std::strerror(errno));
    std::exit(125);
}

sock_filter load(std::size_t offset) {
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<unsigned>(offset));
}

sock_filter answer(unsigned action) {
    return BPF_STMT(BPF_RET | BPF_K, action);
}

/// Stops when the bits of `mask` are set in the loaded value, else goes on with the next filter.
void stopIfSet(std::vector<sock_filter>& filter, unsigned mask) {
    filter.push_back(BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, mask, 0, 1));
    filter.push_back(answer(SECCOMP_RET_TRACE));
}

/// Calls that open a file count when they may make it.
void stopAtOpening(std::vector<sock_filter>& filter, long call, unsigned flagsArgument) {
    filter.push_back(load(offsetof(seccomp_data, nr)));
    filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 3));
    filter.push_back(load(offsetof(seccomp_data, args) + flagsArgument * sizeof(std::uint64_t)));
    stopIfSet(filter, O_CREAT);
}

std::vector<sock_filter> filterOfChanges() {
    std::vector<sock_filter> filter = {load(offsetof(seccomp_data, arch)),
                                       BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 1, 0),
                                       answer(SECCOMP_RET_ALLOW)};
    stopAtOpening(filter, SYS_openat, 2);
#if defined(__x86_64__)
    stopAtOpening(filter, SYS_open, 1);
#endif
    filter.push_back(load(offsetof(seccomp_data, nr)));
    for (const long call : changes) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
        filter.push_back(answer(SECCOMP_RET_TRACE));
    }
    filter.push_back(answer(SECCOMP_RET_ALLOW));
    return filter;
}

[[noreturn]] void becomeProgram(char** command) {
    std::vector<sock_filter> filter = filterOfChanges();
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        fail("ptrace");
    ::raise(SIGSTOP);
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        fail("seccomp");
    ::execv(command[0], command);
    fail(command[0]);
}

/// What the tracer does at the stops of the program, its threads and its children, until all of them are gone.
class Tracer {
public:
    Tracer(pid_t program, long killAt)
        : m_program(program)
        , m_killAt(killAt) {}

    void run() {
        int status = 0;
        if (::waitpid(m_program, &status, 0) != m_program || !WIFSTOPPED(status))
            fail("waitpid");
        constexpr long options = PTRACE_O_TRACESECCOMP | PTRACE_O_TRACECLONE | PTRACE_O_TRACEFORK |
                                 PTRACE_O_TRACEVFORK | PTRACE_O_TRACEEXEC | PTRACE_O_EXITKILL;
        if (::ptrace(PTRACE_SETOPTIONS, m_program, nullptr, options) != 0)
            fail("ptrace options");
        ::ptrace(PTRACE_CONT, m_program, nullptr, 0L);
        for (pid_t process = 0; (process = ::waitpid(-1, &status, __WALL)) > 0;)
            handle(process, status);
    }

    [[nodiscard]] long count() const { return m_count; }
    [[nodiscard]] int exitStatus() const { return m_exitStatus; }

private:
    void handle(pid_t process, int status) {
        if (!WIFSTOPPED(status)) {
            if (process == m_program)
                m_exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            return;
        }
        const int event = status >> 16;
        if (event == PTRACE_EVENT_SECCOMP && ++m_count == m_killAt)
            ::kill(m_program, SIGKILL);
        const int signal = WSTOPSIG(status);
        // Stops that tracing brings about are no signals of the program's own.
        const bool isOwnSignal = event == 0 && signal != SIGSTOP && signal != SIGTRAP;
        ::ptrace(PTRACE_CONT, process, nullptr, isOwnSignal ? static_cast<long>(signal) : 0L);
    }

    pid_t m_program;
    long m_killAt;
    long m_count = 0;
    int m_exitStatus = 125;
};

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 4) {
        std::fputs("usage: kill-at-change N REPORT PROGRAM [ARGUMENTS...]\n", stderr);
        return 125;
    }
    const pid_t program = ::fork();
    if (program < 0)
        fail("fork");
    if (program == 0)
        becomeProgram(argv + 3);
    Tracer tracer(program, std::strtol(argv[1], nullptr, 10));
    tracer.run();
    std::FILE* const report = std::fopen(argv[2], "we");
    if (!report || std::fprintf(report, "%ld\n", tracer.count()) < 0 || std::fclose(report) != 0)
        fail(argv[2]);
    return tracer.exitStatus();
}
