// Commands that start, bring forward and end apps.
#include "CommandLine/CommandTask.h"
#include "CommandLine/Wait.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double startLimit = 10.0;
constexpr double endLimit = 5.0;

void reportLaunch(const Task& task, const OpenedApp& opened) {
    const auto isRunning = [opened] { return opened.catalogue.lifecycle.runningApplication(opened.config).has_value(); };
    waitUntil(task->services.scheduler, startLimit, isRunning, [task, opened](bool started) {
        if (started)
            task->answer(u"Launched %1"_s.arg(opened.config.displayName()), opened.config, opened.catalogue);
        else
            task->fail(u"%1 did not start; \"wrapio doctor\" tells what is missing"_s.arg(
                opened.config.displayName()));
    });
}

}  // namespace

void launchApp(const Task& task, const LaunchCommand& command) {
    const auto opened = openApp(task, command.app, true);
    if (!opened)
        return;
    AppLifecycleManager& lifecycle = opened->catalogue.lifecycle;
    auto launched = lifecycle.launch(opened->config);
    if (!launched) {
        if (const auto generated = lifecycle.generate(opened->config); !generated) {
            task->fail(u"could not make the bundle of %1: %2"_s.arg(opened->config.displayName(),
                                                                    generationAdvice(generated.error())));
            return;
        }
        launched = lifecycle.launch(opened->config);
    }
    if (launched)
        reportLaunch(task, *opened);
    else
        task->fail(launched.error().description());
}

void focusApp(const Task& task, const FocusCommand& command) {
    const auto opened = openApp(task, command.app, false);
    if (!opened)
        return;
    if (!opened->catalogue.lifecycle.runningApplication(opened->config)) {
        task->fail(u"%1 is not running; start it with: wrapio launch %2"_s.arg(opened->config.displayName(),
                                                                              canonicalText(opened->config.id)));
        return;
    }
    opened->catalogue.lifecycle.focus(opened->config);
    task->answer(u"Focused %1"_s.arg(opened->config.displayName()), opened->config, opened->catalogue);
}

void quitApp(const Task& task, const QuitCommand& command) {
    const auto opened = openApp(task, command.app, false);
    if (!opened)
        return;
    AppLifecycleManager& lifecycle = opened->catalogue.lifecycle;
    if (!lifecycle.runningApplication(opened->config)) {
        task->answer(u"%1 is not running"_s.arg(opened->config.displayName()), opened->config, opened->catalogue);
        return;
    }
    lifecycle.quit(opened->config);
    const auto hasEnded = [&lifecycle, config = opened->config] { return !lifecycle.runningApplication(config); };
    waitUntil(task->services.scheduler, endLimit, hasEnded, [task, opened = *opened](bool ended) {
        if (ended)
            task->answer(u"Quit %1"_s.arg(opened.config.displayName()), opened.config, opened.catalogue);
        else
            task->fail(u"%1 was asked to quit but is still running"_s.arg(opened.config.displayName()));
    });
}

}  // namespace wrapio
