// A process held by a descriptor, which stays with it whoever gets its number later. Any thread.
#pragma once

#include "Platform/Linux/FileCalls.h"

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace wrapio::posix {

// The C library's own functions for this cannot be called from C++ in all of its versions.

/// Not open when there is no such process. Becomes readable when the process ends.
[[nodiscard]] inline FileDescriptor openProcess(pid_t process) {
    return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

/// False when the process has ended or may not be signalled.
[[nodiscard]] inline bool sendSignal(const FileDescriptor& process, int signal) {
    return ::syscall(SYS_pidfd_send_signal, process.get(), signal, nullptr, 0) == 0;
}

}  // namespace wrapio::posix
