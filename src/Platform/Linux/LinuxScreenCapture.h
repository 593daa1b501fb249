// Pictures of windows on a Linux desktop: from the display where it shows them, from the apps themselves elsewhere.
#pragma once

#include "Platform/Linux/RunnerSnapshot.h"
#include "Platform/Linux/X11ScreenCapture.h"
#include "Platform/ScreenCapture.h"

namespace wrapio {

/// An app whose windows the display does not show (a Wayland desktop lets nobody see them, a minimised window is drawn
/// nowhere) is asked for a picture of its own.
class LinuxScreenCapture final : public ScreenCapture {
public:
    /// `scheduler` must outlive this.
    LinuxScreenCapture(std::optional<QString> runtimeFolder, Scheduler& scheduler);

    /// True when there is a display that shows windows, or apps can be asked.
    [[nodiscard]] bool isPermitted() const override;
    [[nodiscard]] bool canCaptureWindows() const override;
    void listOnScreenWindows(qint64 process, std::function<void(Windows)> completion) override;
    void captureWindow(const ScreenWindow& window, QSize pixels, std::function<void(Picture)> completion) override;

private:
    /// The picture that an app gave when its windows were asked for; it is handed out once.
    struct OwnPicture {
        ScreenWindow window;
        QImage image;
    };
    void askApplication(qint64 process, Windows known, std::function<void(Windows)> completion);

    Scheduler& m_scheduler;
    X11ScreenCapture m_display;
    RunnerSnapshot m_applications;
    quint64 m_lastNumber;
    std::optional<OwnPicture> m_ownPicture;
    std::shared_ptr<int> m_alive = std::make_shared<int>();
};

}  // namespace wrapio
