#include "Platform/Linux/ChildReaper.h"

#include "Platform/Linux/ProcessHandle.h"

#include <QSocketNotifier>

#include <sys/wait.h>

#include <memory>

namespace wrapio {

void ChildReaper::adopt(pid_t process) {
    // Shared, since the slot has to be copyable.
    const auto handle = std::make_shared<posix::FileDescriptor>(posix::openProcess(process));
    if (!handle->isOpen())
        return;
    auto* const notifier = new QSocketNotifier(handle->get(), QSocketNotifier::Read, &m_context);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, process, handle] {
        notifier->setEnabled(false);
        posix::retrying([process] { return ::waitpid(process, nullptr, WNOHANG); });
        notifier->deleteLater();
    });
}

}  // namespace wrapio
