// A preview controller on fakes, over a catalogue of three apps.
#pragma once

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/FakePreviewPanel.h"
#include "Fakes/FakeScreenCapture.h"
#include "Fakes/LifecycleFixture.h"
#include "Fakes/TestImages.h"
#include "Views/PreviewWindowController.h"

namespace wrapio {

class PreviewFixture : public LifecycleFixture {
protected:
    PreviewFixture() {
        storeList({record(QStringLiteral("Mail")), record(QStringLiteral("News")), record(QStringLiteral("Chat"))});
        makeLifecycle();
        capture = std::make_unique<WindowCaptureService>(screen, *lifecycle, workspace);
        preview = std::make_unique<PreviewWindowController>(
            PreviewServices{*lifecycle, *capture, previews, files, scheduler}, &panel);
    }

    [[nodiscard]] const AppConfiguration& app(const QString& name) const {
        for (const AppConfiguration& one : store->configurations()) {
            if (one.displayName() == name)
                return one;
        }
        throw std::out_of_range(name.toStdString());
    }
    /// Starts an app, gives it a window of that size and lets the poll notice it.
    void start(const QString& name, QSizeF window = QSizeF(640, 400), QColor color = Qt::green) {
        const auto process = workspace.start(bundle(name + QStringLiteral(".app")));
        screen.addWindow(process.processIdentifier, QRectF(QPointF(0, 0), window), color);
        notice();
    }
    /// Ends all apps and lets the poll notice it.
    void quitAll() {
        workspace.running.clear();
        notice();
    }
    void notice() {
        lifecycle->checkRunningApps();
        scheduler.runPending();
    }
    [[nodiscard]] QString previewFile(const QString& name) const {
        return *directories.caches + QStringLiteral("/Wrapio/previews/") + canonicalText(app(name).id) +
               QStringLiteral(".jpg");
    }
    [[nodiscard]] PreviewState::Case state() const { return preview->previewState().value().kind; }

    FakeScreenCapture screen{scheduler};
    FakePreviewPanel panel;
    std::unique_ptr<WindowCaptureService> capture;
    std::unique_ptr<PreviewWindowController> preview;
};

}  // namespace wrapio
