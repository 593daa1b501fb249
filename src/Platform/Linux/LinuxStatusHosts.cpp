#include "Platform/Linux/LinuxStatusHosts.h"

#include "Platform/Linux/SessionBus.h"
#include "Platform/Linux/X11Windows.h"

#include <QDBusConnection>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;

}  // namespace

LinuxStatusHosts::LinuxStatusHosts() {
    if (!isSessionBusReachable())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    m_watcher = std::make_unique<QDBusServiceWatcher>(watcherName, bus, QDBusServiceWatcher::WatchForRegistration);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &LinuxStatusHosts::look);
    bus.connect(watcherName, u"/StatusNotifierWatcher"_s, watcherName, u"StatusNotifierHostRegistered"_s, this,
                SLOT(look()));
}

bool LinuxStatusHosts::isPresent() const {
    return hasStatusItemHost() || hasX11Tray();
}

Subscription LinuxStatusHosts::onAppearance(std::function<void()> observer) {
    return m_observers.add(std::move(observer));
}

/// A watcher is there before the first of its hosts.
void LinuxStatusHosts::look() {
    if (hasStatusItemHost())
        m_observers.notify();
}

}  // namespace wrapio
