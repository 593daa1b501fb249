#include "Views/PreviewWindowController.h"

#include "Platform/Imaging.h"

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr QSizeF creationSize(720, 320);
constexpr double footerHeight = 80;
constexpr double plainHeight = 400;
constexpr QSizeF largestPicture(480, 400);
constexpr double cachedOpacity = 0.7;
constexpr double nanosecondsPerSecond = 1e9;
constexpr qint64 largestIconFile = 16LL * 1024 * 1024;

}  // namespace

/// One run of the loop that takes pictures.
struct PreviewWindowController::LiveUpdate {
    AppConfiguration config;
    bool isCancelled = false;
    ScheduledTask sleep;
};

PreviewWindowController::PreviewWindowController(PreviewServices services, PreviewPanel* panel)
    : m_services(services)
    , previewPanel(panel) {
    if (previewPanel)
        previewPanel->setContentSize(creationSize);
}

PreviewWindowController::~PreviewWindowController() {
    cancelLiveUpdates();
}

void PreviewWindowController::showPreview(const AppConfiguration& config) {
    m_currentConfig.set(config);
    if (!m_services.lifecycle.runningAppIds().contains(config.id)) {
        loadCachedPreview(config);
    } else if (m_services.capture.isPermitted()) {
        m_previewState.set(PreviewState::loading());
        updateContentView();
        showPanel();
        startLiveUpdates(config);
        return;
    } else {
        m_previewState.set(PreviewState::permissionDenied());
    }
    updateContentView();
    showPanel();
}

void PreviewWindowController::loadCachedPreview(const AppConfiguration& config) {
    const auto picture = m_services.cache.load(config.id);
    if (!picture) {
        m_previewState.set(PreviewState::noCache());
        return;
    }
    const auto grey = WindowCaptureService::applyGrayscale(*picture, cachedOpacity);
    m_previewState.set(PreviewState::cached(grey.value_or(*picture)));
}

void PreviewWindowController::showPanel() {
    if (!previewPanel)
        return;
    if (const auto frame = previewPanel->visibleFrameOfMainScreen()) {
        const QSizeF size = previewPanel->size();
        previewPanel->setOrigin(frame->center() - QPointF(size.width() / 2, size.height() / 2));
    }
    previewPanel->setAlpha(0);
    previewPanel->orderFront();
    m_isVisible.set(true);
    previewPanel->animateAlpha(1.0, fadeAnimationDuration);
}

void PreviewWindowController::hidePreview() {
    cancelLiveUpdates();
    if (previewPanel)
        previewPanel->animateAlpha(0, fadeAnimationDuration);
    const auto place = m_fadeOuts.emplace(m_fadeOuts.end());
    *place = m_services.scheduler.after(fadeAnimationDuration, [this, place] {
        const ScheduledTask done = std::move(*place);
        m_fadeOuts.erase(place);
        completeFadeOut();
    });
}

void PreviewWindowController::completeFadeOut() {
    if (previewPanel)
        previewPanel->orderOut();
    m_isVisible.set(false);
    m_currentConfig.set(std::nullopt);
}

void PreviewWindowController::startLiveUpdates(const AppConfiguration& config) {
    cancelLiveUpdates();
    liveUpdateTask = std::make_shared<LiveUpdate>(LiveUpdate{config, false, {}});
    tick(liveUpdateTask);
}

void PreviewWindowController::cancelLiveUpdates() {
    if (const auto task = std::exchange(liveUpdateTask, nullptr)) {
        task->isCancelled = true;
        task->sleep.cancel();
    }
}

bool PreviewWindowController::isCurrent(const LiveUpdate& task) const {
    return !task.isCancelled && m_currentConfig.value() && m_currentConfig.value()->id == task.config.id;
}

/// The next picture is not asked for before the one under way has come, so that slow ones never pile up.
void PreviewWindowController::tick(const std::shared_ptr<LiveUpdate>& task) {
    if (!isCurrent(*task) || !m_services.lifecycle.runningAppIds().contains(task->config.id))
        return;
    m_services.capture.captureWindow(task->config, [this, weak = std::weak_ptr(task)](const auto& picture) {
        const auto running = weak.lock();
        // Whoever cancels the task drops it, and so does the end of this controller.
        if (!running || !isCurrent(*running))
            return;
        if (picture)
            showLive(*running, *picture);
        running->sleep = m_services.scheduler.after(double(liveUpdateInterval) / nanosecondsPerSecond, [this, weak] {
            if (const auto rested = weak.lock())
                tick(rested);
        });
    });
}

void PreviewWindowController::showLive(const LiveUpdate& task, const QImage& picture) {
    const QImage scaled = WindowCaptureService::scaleImage(picture, largestPicture);
    m_previewState.set(PreviewState::live(scaled));
    m_services.cache.save(scaled, task.config.id);
    updateContentView();
}

void PreviewWindowController::updateContentView() {
    if (!previewPanel)
        return;
    PreviewContent content;
    content.config = m_currentConfig.value();
    content.state = m_previewState.value();
    if (content.config && content.state.kind == PreviewState::Case::noCache)
        content.icon = iconOf(*content.config);
    content.onLaunch = [this] {
        // Hiding forgets the app once the panel has faded out; the launch goes on.
        if (const auto config = m_currentConfig.value()) {
            hidePreview();
            static_cast<void>(m_services.lifecycle.launch(*config));
        }
    };
    content.onOpenSettings = [this] { m_services.capture.openScreenRecordingSettings(); };
    previewPanel->setContent(content);
    previewPanel->setContentSize(contentSize());
}

std::optional<QImage> PreviewWindowController::iconOf(const AppConfiguration& config) const {
    const QString file = m_services.lifecycle.getBundleURL(config) + u"/Contents/Resources/AppIcon.icns"_s;
    const auto bytes = m_services.files.read(file, largestIconFile);
    return bytes ? decodeImage(*bytes) : std::nullopt;
}

QSizeF PreviewWindowController::contentSize() const {
    const QImage& image = m_previewState.value().image;
    if (image.isNull())
        return {previewWidth, plainHeight};
    const double fitting = previewWidth * image.height() / image.width() + footerHeight;
    return {previewWidth, std::min(fitting, maxPreviewHeight + footerHeight)};
}

}  // namespace wrapio
