// The command that writes what the preview of an app shows.
#include "CommandLine/CommandTask.h"
#include "Platform/Imaging.h"
#include "Services/WindowCaptureService.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

// As the panel shows them.
constexpr QSizeF largestPicture(480, 400);
constexpr double cachedOpacity = 0.7;

void write(const Task& task, const OpenedApp& opened, const QImage& picture, const QString& file) {
    const auto png = encodePng(picture);
    if (!png) {
        task->fail(u"there is not enough memory for the picture"_s);
        return;
    }
    if (const auto written = task->services.files.replace(file, *png); !written) {
        task->fail(written.error().description());
        return;
    }
    task->answer(u"Wrote a picture of %1 to %2"_s.arg(opened.config.displayName(), file), opened.config,
                 opened.catalogue);
}

void writeCached(const Task& task, const OpenedApp& opened, const QString& file) {
    const auto cached = task->services.pictures().previews.load(opened.config.id);
    if (!cached) {
        task->fail(u"%1 is not running and there is no earlier picture of it; start it with: wrapio launch %2"_s.arg(
            opened.config.displayName(), canonicalText(opened.config.id)));
        return;
    }
    write(task, opened, WindowCaptureService::applyGrayscale(*cached, cachedOpacity).value_or(*cached), file);
}

}  // namespace

void captureApp(const Task& task, const CaptureCommand& command) {
    const auto opened = openApp(task, command.app, false);
    if (!opened)
        return;
    if (!task->services.pictures) {
        task->fail(u"pictures cannot be taken here"_s);
        return;
    }
    const QString file = task->console.resolved(command.file);
    if (!opened->catalogue.lifecycle.runningApplication(opened->config)) {
        writeCached(task, *opened, file);
        return;
    }
    const auto capture = std::make_shared<WindowCaptureService>(task->services.pictures().screen,
                                                                opened->catalogue.lifecycle, task->services.workspace);
    if (!capture->isPermitted()) {
        task->fail(u"no window can be looked at: there is neither a display that shows windows (DISPLAY) nor a folder "
                   "for the sockets of apps (XDG_RUNTIME_DIR)"_s);
        return;
    }
    // The service must outlive its answer; its own last picture of the app would keep nobody else alive.
    capture->captureWindow(opened->config, [task, opened = *opened, file, capture](const auto& picture) {
        if (picture)
            write(task, opened, WindowCaptureService::scaleImage(*picture, largestPicture), file);
        else
            task->fail(u"%1 has no window on the screen that could be looked at; --verbose tells more"_s.arg(
                opened.config.displayName()));
    });
}

}  // namespace wrapio
