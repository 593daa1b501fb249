// Decides what the preview panel shows, and when.
#pragma once

#include "Platform/FileSystem.h"
#include "Platform/Scheduler.h"
#include "Services/AppLifecycleManager.h"
#include "Services/PreviewCacheManager.h"
#include "Services/WindowCaptureService.h"
#include "Utilities/ObservableProperty.h"
#include "Utilities/SharedInstance.h"
#include "Views/PreviewPanel.h"

#include <cstdint>
#include <list>
#include <memory>

namespace wrapio {

/// What the controller works with; all of it outlives the controller.
struct PreviewServices {
    AppLifecycleManager& lifecycle;
    WindowCaptureService& capture;
    PreviewCacheManager& cache;
    const FileSystem& files;
    Scheduler& scheduler;
};

/// Main thread. While a running app is previewed, one picture after the other is taken, with a pause between them.
class PreviewWindowController : public SharedInstance<PreviewWindowController> {
public:
    static constexpr double previewWidth = 720;
    static constexpr double maxPreviewHeight = 540;
    static constexpr double fadeAnimationDuration = 0.15;
    static constexpr std::uint64_t liveUpdateInterval = 500'000'000;  ///< nanoseconds

    /// Without a panel, states change but nothing is shown.
    PreviewWindowController(PreviewServices services, PreviewPanel* panel);
    PreviewWindowController(const PreviewWindowController&) = delete;
    PreviewWindowController& operator=(const PreviewWindowController&) = delete;
    ~PreviewWindowController();

    /// Shows the panel for an app.
    void showPreview(const AppConfiguration& config);
    /// Ends the updates and fades the panel out. A preview that is shown while it fades goes away with it.
    void hidePreview();

    /// The app that is previewed.
    [[nodiscard]] ObservableProperty<std::optional<AppConfiguration>>& currentConfig() { return m_currentConfig; }
    [[nodiscard]] ObservableProperty<PreviewState>& previewState() { return m_previewState; }
    /// True from the start of fading in to the end of fading out.
    [[nodiscard]] ObservableProperty<bool>& isVisibleProperty() { return m_isVisible; }
    [[nodiscard]] bool isVisible() const { return m_isVisible.value(); }

private:
    struct LiveUpdate;
    void loadCachedPreview(const AppConfiguration& config);
    void showPanel();
    void completeFadeOut();
    void startLiveUpdates(const AppConfiguration& config);
    void cancelLiveUpdates();
    void tick(const std::shared_ptr<LiveUpdate>& task);
    void showLive(const LiveUpdate& task, const QImage& picture);
    [[nodiscard]] bool isCurrent(const LiveUpdate& task) const;
    void updateContentView();
    [[nodiscard]] std::optional<QImage> iconOf(const AppConfiguration& config) const;
    [[nodiscard]] QSizeF contentSize() const;

    PreviewServices m_services;
    PreviewPanel* previewPanel;
    std::shared_ptr<LiveUpdate> liveUpdateTask;
    std::list<ScheduledTask> m_fadeOuts;  ///< each runs to its end, whatever happens meanwhile
    ObservableProperty<std::optional<AppConfiguration>> m_currentConfig;
    ObservableProperty<PreviewState> m_previewState;
    ObservableProperty<bool> m_isVisible{false};
};

}  // namespace wrapio
