// Takes note of the end of programs that were started and left to themselves.
#pragma once

#include <QObject>

#include <sys/types.h>

namespace wrapio {

/// Ended children stay in the process table until somebody asks how they ended. Main thread; needs its event loop.
class ChildReaper {
public:
    /// Takes over the waiting for a child.
    void adopt(pid_t process);

private:
    QObject m_context;  ///< parent of what waits
};

}  // namespace wrapio
