#include "Platform/Linux/QtScheduler.h"

#include <QMetaObject>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

namespace wrapio {

namespace {

/// Never early: a fraction of a millisecond counts as a whole one.
std::chrono::milliseconds wholeMilliseconds(double seconds) {
    constexpr double longest = 2'000'000'000;
    const double milliseconds = std::ceil(seconds * 1000.0);
    return std::chrono::milliseconds(milliseconds > 0 ? static_cast<int>(std::min(milliseconds, longest)) : 0);
}

/// Also from inside the timer's own task, which must then live on until it returns.
void end(QTimer& timer) {
    timer.stop();
    timer.disconnect();
    timer.deleteLater();
}

}  // namespace

void QtScheduler::async(Task task) {
    QMetaObject::invokeMethod(&m_context, std::move(task), Qt::QueuedConnection);
}

ScheduledTask QtScheduler::after(double seconds, Task task) {
    return start(seconds, true, std::move(task));
}

ScheduledTask QtScheduler::every(double seconds, Task task) {
    return start(seconds, false, std::move(task));
}

ScheduledTask QtScheduler::start(double seconds, bool once, Task task) {
    auto* const timer = new QTimer(&m_context);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(once);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, once, task = std::move(task)] {
        if (once)
            timer->deleteLater();
        task();
    });
    timer->start(wholeMilliseconds(seconds));
    return ScheduledTask([weak = QPointer(timer)] {
        if (weak)
            end(*weak);
    });
}

void QtScheduler::sleep(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(std::max(seconds, 0.0)));
}

Timestamp QtScheduler::now() const {
    return Timestamp::now();
}

}  // namespace wrapio
