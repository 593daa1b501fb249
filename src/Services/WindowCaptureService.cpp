#include "Services/WindowCaptureService.h"

#include "Platform/Diagnostics.h"
#include "Platform/Imaging.h"

#include <QPainter>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Pictures have the density of a sharp screen, whatever the actual one's is.
constexpr double pixelsPerPoint = 2.0;
const QString privacySettings = u"x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture"_s;

double areaOf(const ScreenWindow& window) {
    return window.frame.width() * window.frame.height();
}

void reportFailure(const AppConfiguration& config, const ScreenCaptureError& error) {
    printDiagnostics(u"⚠️ [WindowCapture] ScreenCaptureKit failed for "_s + config.displayName() + u": "_s +
                     error.description());
}

}  // namespace

struct WindowCaptureService::Request {
    AppConfiguration config;
    qint64 process;
    Completion completion;
};

WindowCaptureService::WindowCaptureService(ScreenCapture& screen, const AppLifecycleManager& lifecycle,
                                           Workspace& workspace)
    : m_screen(screen)
    , m_lifecycle(lifecycle)
    , m_workspace(workspace)
    , m_self(std::make_shared<WindowCaptureService*>(this)) {}

void WindowCaptureService::captureWindow(const AppConfiguration& config, Completion completion) {
    if (!isPermitted()) {
        printDiagnostics(u"⚠️ [WindowCapture] Screen Recording permission not granted"_s);
        completion(std::nullopt);
        return;
    }
    const auto application = m_lifecycle.runningApplication(config);
    if (!application) {
        printDiagnostics(u"⚠️ [WindowCapture] App not running: "_s + config.displayName());
        completion(std::nullopt);
        return;
    }
    const qint64 process = application->processIdentifier;
    const auto request = std::make_shared<Request>(Request{config, process, std::move(completion)});
    m_screen.listOnScreenWindows(process, [weak = std::weak_ptr(m_self), request](ScreenCapture::Windows windows) {
        const auto self = weak.lock();
        if (!self)
            return;
        if (windows) {
            (*self)->chooseWindow(request, *windows);
            return;
        }
        reportFailure(request->config, windows.error());
        request->completion(std::nullopt);
    });
}

void WindowCaptureService::chooseWindow(const std::shared_ptr<Request>& request,
                                        const std::vector<ScreenWindow>& windows) {
    const ScreenWindow* largest = nullptr;
    for (const ScreenWindow& window : windows) {
        // Of equally large windows the one that the platform names first is taken.
        if (window.ownerProcessIdentifier == request->process && (!largest || areaOf(window) > areaOf(*largest)))
            largest = &window;
    }
    if (!largest) {
        printDiagnostics(u"⚠️ [WindowCapture] No suitable window found for: "_s + request->config.displayName());
        request->completion(std::nullopt);
        return;
    }
    if (!m_screen.canCaptureWindows()) {
        printDiagnostics(u"⚠️ [WindowCapture] Window previews require macOS 14 or newer."_s);
        request->completion(std::nullopt);
        return;
    }
    const QSize pixels(static_cast<int>(largest->frame.width() * pixelsPerPoint),
                       static_cast<int>(largest->frame.height() * pixelsPerPoint));
    m_screen.captureWindow(*largest, pixels, [weak = std::weak_ptr(m_self), request](ScreenCapture::Picture picture) {
        if (const auto self = weak.lock())
            (*self)->finish(*request, picture);
    });
}

void WindowCaptureService::finish(const Request& request, const ScreenCapture::Picture& picture) {
    if (!picture) {
        reportFailure(request.config, picture.error());
        request.completion(std::nullopt);
        return;
    }
    captureCache.insert(request.config.id, *picture);
    request.completion(*picture);
}

std::optional<QImage> WindowCaptureService::applyGrayscale(const QImage& image, double opacity) {
    QImage grey = image.convertToFormat(QImage::Format_ARGB32);
    if (grey.isNull())
        return std::nullopt;
    for (int y = 0; y < grey.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(grey.scanLine(y));
        std::transform(line, line + grey.width(), line, [](QRgb pixel) {
            const int shade = qGray(pixel);
            return qRgba(shade, shade, shade, qAlpha(pixel));
        });
    }
    QImage drawn(grey.size(), QImage::Format_ARGB32_Premultiplied);
    if (drawn.isNull())
        return std::nullopt;
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    painter.setOpacity(std::clamp(opacity, 0.0, 1.0));
    painter.drawImage(0, 0, grey);
    painter.end();
    return drawn;
}

QImage WindowCaptureService::scaleImage(const QImage& image, QSizeF maximum) {
    if (image.isNull())
        return image;
    const double factor = std::min({maximum.width() / image.width(), maximum.height() / image.height(), 1.0});
    if (factor >= 1.0)
        return image;
    const int width = std::max(1, qRound(image.width() * factor));
    const int height = std::max(1, qRound(image.height() * factor));
    return drawnAtSize(image, width, height).value_or(image);
}

void WindowCaptureService::openScreenRecordingSettings() {
    // Where a system has no such settings there is nothing to open, and nothing else to offer.
    static_cast<void>(m_workspace.open(privacySettings));
}

}  // namespace wrapio
