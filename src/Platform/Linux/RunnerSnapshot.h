// Pictures that running apps give of themselves, for desktops that let nobody look at others' windows.
#pragma once

#include "Platform/Scheduler.h"
#include "Platform/ScreenCapture.h"

#include <QUuid>

#include <sys/types.h>

#include <memory>
#include <optional>
#include <vector>

namespace wrapio {

/// Asks an app over its socket, RUNTIME/wrapio/RECORD.snapshot: one line is sent, one line comes back, and the pixels
/// after it. What answers must belong to this user. Never blocks. Main thread.
class RunnerSnapshot {
public:
    using Completion = std::function<void(ScreenCapture::Picture)>;

    /// Without a runtime folder nobody can be asked. `scheduler` must outlive this. `owner` is whose apps are trusted.
    RunnerSnapshot(std::optional<QString> runtimeFolder, Scheduler& scheduler, uid_t owner);
    RunnerSnapshot(const RunnerSnapshot&) = delete;
    RunnerSnapshot& operator=(const RunnerSnapshot&) = delete;
    ~RunnerSnapshot();

    /// XDG_RUNTIME_DIR, when it names a folder.
    [[nodiscard]] static std::optional<QString> runtimeFolderOfSession();
    /// The record that a running app was made from.
    [[nodiscard]] static std::optional<QUuid> recordOfProcess(qint64 process);

    /// True when apps can be asked at all.
    [[nodiscard]] bool isPossible() const { return m_runtimeFolder.has_value(); }
    /// True when the app of that record has opened its socket.
    [[nodiscard]] bool isOffered(const QUuid& record) const;
    /// Asks the app of a record for a picture in its own size. `completion` comes in a later turn of the event loop,
    /// and not at all when this goes away first.
    void take(const QUuid& record, Completion completion);

private:
    class Request;
    [[nodiscard]] QString socketOf(const QUuid& record) const;
    void drop(const Request& request);

    std::optional<QString> m_runtimeFolder;
    Scheduler& m_scheduler;
    uid_t m_owner;
    std::vector<std::unique_ptr<Request>> m_requests;
};

}  // namespace wrapio
