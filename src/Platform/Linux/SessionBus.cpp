#include "Platform/Linux/SessionBus.h"

#include "Utilities/ApplicationIdentity.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QVariantMap>

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

/// "com.example.an-app" → "/com/example/an_app", where applications keep their object.
QString objectPath(const QString& desktopId) {
    QString path = u'/' + desktopId;
    path.replace(u'.', u'/').replace(u'-', u'_');
    return path;
}

QDBusMessage activation(const QString& desktopId, const QByteArray& token) {
    QVariantMap platformData;
    if (!token.isEmpty()) {
        platformData[u"activation-token"_s] = QString::fromUtf8(token);
        platformData[u"desktop-startup-id"_s] = QString::fromUtf8(token);
    }
    QDBusMessage message = QDBusMessage::createMethodCall(desktopId, objectPath(desktopId),
                                                          u"org.freedesktop.Application"_s, u"Activate"_s);
    message.setAutoStartService(false);
    message << platformData;
    return message;
}

}  // namespace

bool isSessionBusReachable() {
    return isAnnounced() && QDBusConnection::sessionBus().isConnected();
}

void activateOnSessionBus(const QString& desktopId, const QByteArray& token, std::function<void(bool)> done) {
    // An invalid name is an error of the caller to the library, which it answers by leaving the bus.
    const bool possible = isValidDesktopId(desktopId.toStdString()) && isSessionBusReachable();
    const QDBusPendingCall call =
        possible ? QDBusConnection::sessionBus().asyncCall(activation(desktopId, token), answerWithinMilliseconds)
                 : QDBusPendingCall::fromError(QDBusError(QDBusError::ServiceUnknown, u"no such application"_s));
    auto* const watcher = new QDBusPendingCallWatcher(call);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [done = std::move(done)](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         done(!finished->isError());
                     });
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
