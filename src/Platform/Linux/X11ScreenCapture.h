// Pictures of windows on an X11 display.
#pragma once

#include "Platform/Scheduler.h"
#include "Platform/ScreenCapture.h"

#include <QThreadPool>

#include <memory>
#include <optional>

namespace wrapio {

class X11CaptureSession;

/// The display is talked to on a thread of its own. The connection is kept for a few seconds after each picture, for
/// the next one, and nothing at all is kept after that.
class X11ScreenCapture final : public ScreenCapture {
public:
    /// `scheduler` must outlive this.
    explicit X11ScreenCapture(Scheduler& scheduler);
    ~X11ScreenCapture() override;

    /// True when DISPLAY names a display that lets us in.
    [[nodiscard]] bool isPermitted() const override;
    [[nodiscard]] bool canCaptureWindows() const override;
    void listOnScreenWindows(qint64 process, std::function<void(Windows)> completion) override;
    void captureWindow(const ScreenWindow& window, QSize pixels, std::function<void(Picture)> completion) override;

private:
    struct Abilities {
        bool isReachable = false;
        bool canCapture = false;
    };
    [[nodiscard]] Abilities abilities() const;
    void onWorker(std::function<void(X11CaptureSession&)> work);
    template <typename Answer>
    void deliver(const std::weak_ptr<int>& alive, const std::function<void(Answer)>& completion, Answer answer);
    void takePicture(const ScreenWindow& window, QSize pixels, std::function<void(Picture)> completion);
    void releaseLater();

    Scheduler& m_scheduler;
    mutable std::optional<Abilities> m_abilities;  ///< once the display has been reached
    std::unique_ptr<X11CaptureSession> m_session;  ///< the worker's
    ScheduledTask m_release;
    QThreadPool m_worker;
    std::shared_ptr<int> m_alive = std::make_shared<int>();  ///< the main thread's
};

}  // namespace wrapio
