#include "Platform/Linux/LinuxModifierKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMetaObject>

namespace wrapio {

bool LinuxModifierKeys::isOptionHeld() const {
    return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
}

Subscription LinuxModifierKeys::addLocalMonitor(std::function<void()> flagsChanged) {
    return m_local.add(std::move(flagsChanged));
}

Subscription LinuxModifierKeys::addGlobalMonitor(std::function<void()> flagsChanged) {
    return m_global.add(std::move(flagsChanged));
}

void LinuxModifierKeys::setWatching(bool isWatching) {
    if (isWatching == m_isWatching)
        return;
    m_isWatching = isWatching;
    if (!isWatching) {
        QCoreApplication::instance()->removeEventFilter(this);
        // Later, since it may be what is calling.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!m_isWatching)
                    m_elsewhere.reset();
            },
            Qt::QueuedConnection);
        return;
    }
    m_wasHeld = isOptionHeld();
    QCoreApplication::instance()->installEventFilter(this);
    if (!m_elsewhere)
        m_elsewhere.emplace([this] { look(m_global); });
}

bool LinuxModifierKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        // Once the event has been dealt with, so that the keyboard's state has followed it everywhere.
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
            QMetaObject::invokeMethod(
                this, [this] { look(m_local); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

/// The same change is seen here and elsewhere; the first to come tells of it.
void LinuxModifierKeys::look(const Observers<>& observers) {
    const bool isHeld = isOptionHeld();
    if (!m_isWatching || isHeld == m_wasHeld)
        return;
    m_wasHeld = isHeld;
    observers.notify();
}

}  // namespace wrapio
