#include "Platform/Linux/LinuxScreenCapture.h"

#include <unistd.h>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Above all numbers that X11 gives to windows.
constexpr quint64 firstOwnNumber = quint64(1) << 32;

bool hasWindowOf(const ScreenCapture::Windows& windows, qint64 process) {
    return windows && std::any_of(windows->begin(), windows->end(), [process](const ScreenWindow& window) {
               return window.ownerProcessIdentifier == process;
           });
}

}  // namespace

LinuxScreenCapture::LinuxScreenCapture(std::optional<QString> runtimeFolder, Scheduler& scheduler)
    : m_scheduler(scheduler)
    , m_display(scheduler)
    , m_applications(std::move(runtimeFolder), scheduler, ::geteuid())
    , m_lastNumber(firstOwnNumber) {}

bool LinuxScreenCapture::isPermitted() const {
    return m_applications.isPossible() || m_display.isPermitted();
}

bool LinuxScreenCapture::canCaptureWindows() const {
    return m_applications.isPossible() || m_display.canCaptureWindows();
}

void LinuxScreenCapture::listOnScreenWindows(qint64 process, std::function<void(Windows)> completion) {
    m_ownPicture.reset();
    if (!m_display.canCaptureWindows()) {
        askApplication(process, std::vector<ScreenWindow>(), std::move(completion));
        return;
    }
    m_display.listOnScreenWindows(process, [this, process, completion = std::move(completion)](Windows windows) {
        if (hasWindowOf(windows, process))
            completion(std::move(windows));
        else
            askApplication(process, std::move(windows), completion);
    });
}

void LinuxScreenCapture::askApplication(qint64 process, Windows known, std::function<void(Windows)> completion) {
    const auto record = m_applications.isPossible() ? RunnerSnapshot::recordOfProcess(process) : std::nullopt;
    if (!record || !m_applications.isOffered(*record)) {
        m_scheduler.async([alive = std::weak_ptr(m_alive), known = std::move(known), completion] {
            if (!alive.expired())
                completion(known);
        });
        return;
    }
    m_applications.take(*record, [this, process, known = std::move(known), completion](const Picture& picture) {
        Windows windows = known;
        if (picture) {
            windows = known.value_or(std::vector<ScreenWindow>());
            m_ownPicture = {{++m_lastNumber, process, QRectF(QPointF(), QSizeF(picture->size()))}, *picture};
            windows->insert(windows->begin(), m_ownPicture->window);
        } else if (!m_display.canCaptureWindows()) {
            windows = tl::unexpected(picture.error());
        }
        completion(windows);
    });
}

void LinuxScreenCapture::captureWindow(const ScreenWindow& window, QSize pixels,
                                       std::function<void(Picture)> completion) {
    if (window.identifier < firstOwnNumber) {
        m_display.captureWindow(window, pixels, std::move(completion));
        return;
    }
    const auto own = std::exchange(m_ownPicture, std::nullopt);
    const bool isThere = own && own->window.identifier == window.identifier && !pixels.isEmpty();
    // Twice the size is each pixel four times: nothing is gained by smoothing that.
    Picture picture = isThere ? Picture(own->image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::FastTransformation))
                              : Picture(tl::unexpected(ScreenCaptureError{u"the app's picture is out of date"_s}));
    if (picture && picture->isNull())
        picture = tl::unexpected(ScreenCaptureError{u"there is not enough memory for the picture"_s});
    m_scheduler.async(
        [alive = std::weak_ptr(m_alive), completion = std::move(completion), picture = std::move(picture)] {
            if (!alive.expired())
                completion(picture);
        });
}

}  // namespace wrapio
