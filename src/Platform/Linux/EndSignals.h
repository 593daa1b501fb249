// Requests to end, as the system and terminals make them.
#pragma once

#include "Platform/Linux/FileCalls.h"

#include <functional>
#include <memory>

class QSocketNotifier;

namespace wrapio {

/// While it lives, SIGTERM, SIGINT and SIGHUP do not end the program: `requested` is called for each, in a turn of the
/// event loop. One at a time; main thread.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> requested);
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals();

private:
    posix::FileDescriptor m_read;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace wrapio
