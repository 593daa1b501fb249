// Still pictures of the generated apps' windows.
#pragma once

#include "Models/AppConfiguration.h"
#include "Platform/ScreenCapture.h"
#include "Services/AppLifecycleManager.h"
#include "Utilities/SharedInstance.h"

#include <QHash>
#include <QImage>
#include <QSizeF>

#include <functional>
#include <memory>
#include <optional>

namespace wrapio {

/// Main thread, but for the operations on images, which any thread may call. Failures are told in diagnostics and end
/// in "nothing".
class WindowCaptureService : public SharedInstance<WindowCaptureService> {
public:
    using Completion = std::function<void(std::optional<QImage>)>;

    WindowCaptureService(ScreenCapture& screen, const AppLifecycleManager& lifecycle, Workspace& workspace);
    WindowCaptureService(const WindowCaptureService&) = delete;
    WindowCaptureService& operator=(const WindowCaptureService&) = delete;

    /// True when pictures of windows may be taken. Asks nobody.
    [[nodiscard]] bool isPermitted() const { return m_screen.isPermitted(); }

    /// Takes a picture of the largest window of a running app, in twice the window's size in points. `completion` comes
    /// once, now or in a later turn of the event loop; never when this goes away first.
    void captureWindow(const AppConfiguration& config, Completion completion);

    /// A copy in shades of grey, drawn with `opacity` from 0 to 1; nothing for a null image.
    [[nodiscard]] static std::optional<QImage> applyGrayscale(const QImage& image, double opacity);
    /// The image made as small as `maximum` asks for, in its proportions. Never made larger.
    [[nodiscard]] static QImage scaleImage(const QImage& image, QSizeF maximum);

    /// Opens the system's settings where a person allows programs to record the screen.
    void openScreenRecordingSettings();

    /// The latest picture of each app.
    [[nodiscard]] const QHash<QUuid, QImage>& captures() const { return captureCache; }

private:
    struct Request;
    void chooseWindow(const std::shared_ptr<Request>& request, const std::vector<ScreenWindow>& windows);
    void finish(const Request& request, const ScreenCapture::Picture& picture);

    ScreenCapture& m_screen;
    const AppLifecycleManager& m_lifecycle;
    Workspace& m_workspace;
    QHash<QUuid, QImage> captureCache;
    std::shared_ptr<WindowCaptureService*> m_self;  ///< so that a late answer knows whether this is gone
};

}  // namespace wrapio
