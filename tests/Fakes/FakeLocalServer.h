// Channels inside the test, whose bytes travel when the scheduler says so.
#pragma once

#include "Platform/LocalChannel.h"
#include "Platform/Scheduler.h"

#include <memory>

namespace wrapio {

class FakeLocalServer final : public LocalServer {
public:
    /// `scheduler` must outlive this and its channels.
    explicit FakeLocalServer(Scheduler& scheduler)
        : m_scheduler(scheduler) {}

    FileResult<void> open(Accepted accepted) override;
    void close() override { m_accepted = nullptr; }

    /// The calling side of a new channel; nothing when nobody takes calls.
    std::unique_ptr<LocalChannel> call();
    [[nodiscard]] bool isOpen() const { return static_cast<bool>(m_accepted); }

    std::optional<FileError> failure;  ///< how open() ends

private:
    Scheduler& m_scheduler;
    Accepted m_accepted;
};

}  // namespace wrapio
