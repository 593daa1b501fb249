// What people wait for in the dashboard's window with a thousand apps: its first frame, and each frame while they
// scroll and drag. Needs a display to be of use; each frame is drawn in full before the next one begins.
#include "Offline/OfflineFixture.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/QtScheduler.h"
#include "Utilities/NotificationCenter.h"
#include "Views/DashboardWindow.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQuickItem>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr int settling = 1000;
constexpr double scrolledPerFrame = 97;

/// A thousand apps and the window over them.
struct Screen {
    Screen() { setDiagnosticsDestination(DiagnosticsDestination::nowhere); }

    QtScheduler scheduler;
    OfflineFixture fixture{u"thousand"_s, scheduler};
    NotificationCenter notifications;
    DashboardWindow dashboard{fixture.services(), notifications};
};

/// How long it takes from `change` to the next frame on the screen, in seconds.
double secondsToFrame(QQuickWindow* window, const std::function<void()>& change) {
    QEventLoop loop;
    const auto connection =
        QObject::connect(window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    QElapsedTimer timer;
    timer.start();
    change();
    window->update();
    loop.exec();
    QObject::disconnect(connection);
    return static_cast<double>(timer.nsecsElapsed()) / nanosecondsPerSecond;
}

void settle(QQuickWindow* window) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < settling && secondsToFrame(window, [] {}) > 0)
        QCoreApplication::processEvents();
}

QQuickItem* grid(QQuickWindow* window) {
    for (QQuickItem* item : window->findChildren<QQuickItem*>()) {
        if (item->inherits("QQuickGridView"))
            return item;
    }
    return nullptr;
}

void firstFrame(benchmark::State& state) {
    for (auto _ : state) {
        Screen screen;
        QEventLoop loop;
        QObject::connect(&screen.dashboard, &DashboardWindow::opened, &loop, [&screen, &loop] {
            QObject::connect(screen.dashboard.window(), &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit,
                             Qt::QueuedConnection);
        });
        QElapsedTimer timer;
        timer.start();
        if (!screen.dashboard.show()) {
            state.SkipWithError("the window could not be opened");
            return;
        }
        loop.exec();
        state.SetIterationTime(static_cast<double>(timer.nsecsElapsed()) / nanosecondsPerSecond);
    }
}
BENCHMARK(firstFrame)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

/// Draws one frame for each iteration after `change`, and keeps the worst.
void measureFrames(benchmark::State& state, Screen& screen, const std::function<void(int)>& change) {
    double worst = 0;
    int frame = 0;
    for (auto _ : state) {
        const double seconds = secondsToFrame(screen.dashboard.window(), [&change, &frame] { change(++frame); });
        worst = std::max(worst, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["worst_ms"] = worst * 1000;
}

void scrollFrame(benchmark::State& state) {
    Screen screen;
    if (!screen.dashboard.show()) {
        state.SkipWithError("the window could not be opened");
        return;
    }
    settle(screen.dashboard.window());
    QQuickItem* const view = grid(screen.dashboard.window());
    const double end = view->property("contentHeight").toDouble() - view->height();
    measureFrames(state, screen,
                  [view, end](int frame) { view->setProperty("contentY", std::fmod(frame * scrolledPerFrame, end)); });
}
BENCHMARK(scrollFrame)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(120);

void dragFrame(benchmark::State& state) {
    Screen screen;
    if (!screen.dashboard.show()) {
        state.SkipWithError("the window could not be opened");
        return;
    }
    settle(screen.dashboard.window());
    const auto& records = screen.fixture.store().configurations();
    const QString dragged = canonicalText(records[0].id);
    measureFrames(state, screen, [&](int frame) {
        // Every fourth frame the pointer is over another card; in between the cards glide.
        if (frame % 4 == 0)
            screen.dashboard.viewModel()->moveApp(dragged,
                                                  canonicalText(records[static_cast<std::size_t>(frame / 4 % 12)].id));
    });
}
BENCHMARK(dragFrame)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(120);

}  // namespace

}  // namespace wrapio

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
