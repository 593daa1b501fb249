// Pictures of other applications' windows, as the screen shows them.
#pragma once

#include <QImage>
#include <QRectF>
#include <QSize>
#include <QString>

#include <tl/expected.hpp>

#include <functional>
#include <vector>

namespace wrapio {

/// A window that is on the screen now.
struct ScreenWindow {
    quint64 identifier = 0;  ///< means something only to the capture that listed it
    qint64 ownerProcessIdentifier = 0;
    QRectF frame;  ///< in points

    bool operator==(const ScreenWindow&) const = default;
};

/// Why windows could not be listed or captured.
struct ScreenCaptureError {
    QString reason;

    [[nodiscard]] const QString& description() const { return reason; }
    bool operator==(const ScreenCaptureError&) const = default;
};

/// Main thread. Answers come once and never before the call that asked has returned; none comes when this goes away
/// first.
class ScreenCapture {
public:
    using Windows = tl::expected<std::vector<ScreenWindow>, ScreenCaptureError>;
    using Picture = tl::expected<QImage, ScreenCaptureError>;

    ScreenCapture() = default;
    virtual ~ScreenCapture() = default;
    ScreenCapture(const ScreenCapture&) = delete;
    ScreenCapture& operator=(const ScreenCapture&) = delete;

    /// True when this program may take pictures of others. Never asks anybody for it.
    [[nodiscard]] virtual bool isPermitted() const = 0;
    /// True when the system is able to take a picture of a single window at all.
    [[nodiscard]] virtual bool canCaptureWindows() const = 0;
    /// Lists the windows on the screen, the frontmost first. `process` is the one whose windows the caller looks for: a
    /// system on which only applications themselves know their windows asks that one.
    virtual void listOnScreenWindows(qint64 process, std::function<void(Windows)> completion) = 0;
    /// Takes one picture of a window alone, whatever covers it, without the pointer, scaled to `pixels`.
    virtual void captureWindow(const ScreenWindow& window, QSize pixels, std::function<void(Picture)> completion) = 0;
};

}  // namespace wrapio
