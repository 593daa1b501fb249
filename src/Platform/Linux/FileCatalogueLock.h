// The catalogue's lock, as a locked file.
#pragma once

#include "Platform/CatalogueLock.h"
#include "Platform/Linux/FileCalls.h"

namespace wrapio {

/// Locks FOLDER/.lock, which it makes when needed and never removes; the file tells who holds it. One thread at a time.
class FileCatalogueLock final : public CatalogueLock {
public:
    /// `folder` is an absolute path.
    explicit FileCatalogueLock(QString folder)
        : m_folder(std::move(folder)) {}

    /// Blocks the thread; not more than `seconds`, and 0 asks once. Does nothing when it is held by this object
    /// already. The reason of a failure names the process that holds it.
    [[nodiscard]] tl::expected<void, CatalogueBusy> acquire(double seconds) override;

private:
    QString m_folder;
    posix::FileDescriptor m_held;
};

}  // namespace wrapio
