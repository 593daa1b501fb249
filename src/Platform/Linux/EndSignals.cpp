#include "Platform/Linux/EndSignals.h"

#include <QSocketNotifier>

#include <unistd.h>

#include <array>
#include <csignal>

namespace wrapio {

namespace {

constexpr std::array endSignals = {SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t writeEnd = -1;

/// Nothing else may be done inside a signal.
void note(int) {
    const int code = errno;
    static_cast<void>(::write(writeEnd, "e", 1));
    errno = code;
}

}  // namespace

EndSignals::EndSignals(std::function<void()> requested) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_read = posix::FileDescriptor(ends[0]);
    writeEnd = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_read.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [file = m_read.get(), requested = std::move(requested)] {
                         char byte = 0;
                         while (::read(file, &byte, 1) == 1)
                             requested();
                     });
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    for (const int signal : endSignals)
        ::sigaction(signal, &action, nullptr);
}

EndSignals::~EndSignals() {
    for (const int signal : endSignals)
        std::signal(signal, SIG_DFL);
    if (const int file = writeEnd; file >= 0)
        ::close(file);
    writeEnd = -1;
}

}  // namespace wrapio
