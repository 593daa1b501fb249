#include "Platform/Linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>

#include <cstdlib>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int answerWithinMilliseconds = 2000;

/// Without either of these the library would start a bus of its own, which nobody else is on.
bool isAnnounced() {
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    return runtime && QFile::exists(QFile::decodeName(runtime) + u"/bus"_s);
}

}  // namespace

bool isSessionBusReachable() {
    return isAnnounced() && QDBusConnection::sessionBus().isConnected();
}

bool hasStatusItemHost() {
    if (!isSessionBusReachable())
        return false;
    const QString watcher = u"org.kde.StatusNotifierWatcher"_s;
    QDBusMessage message = QDBusMessage::createMethodCall(watcher, u"/StatusNotifierWatcher"_s,
                                                          u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message.setAutoStartService(false);
    message << watcher << u"IsStatusNotifierHostRegistered"_s;
    const QDBusMessage reply = QDBusConnection::sessionBus().call(message, QDBus::Block, answerWithinMilliseconds);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return false;
    return reply.arguments().constFirst().value<QDBusVariant>().variant().toBool();
}

}  // namespace wrapio
