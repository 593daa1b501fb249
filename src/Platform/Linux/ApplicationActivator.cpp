#include "Platform/Linux/ApplicationActivator.h"

#include "Platform/Linux/SessionBus.h"
#include "Platform/Linux/X11Windows.h"
#include "Utilities/ApplicationIdentity.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>

#include <algorithm>
#include <memory>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int answerWithinMilliseconds = 2000;

/// "com.example.an-app" → "/com/example/an_app", where applications keep their object.
QString objectPath(const QString& busName) {
    QString path = u'/' + busName;
    path.replace(u'.', u'/').replace(u'-', u'_');
    return path;
}

QDBusMessage activation(const QString& busName, const QByteArray& token) {
    QVariantMap platformData;
    if (!token.isEmpty()) {
        platformData[u"activation-token"_s] = QString::fromUtf8(token);
        platformData[u"desktop-startup-id"_s] = QString::fromUtf8(token);
    }
    QDBusMessage message =
        QDBusMessage::createMethodCall(busName, objectPath(busName), u"org.freedesktop.Application"_s, u"Activate"_s);
    message.setAutoStartService(false);
    message << platformData;
    return message;
}

}  // namespace

struct ApplicationActivator::Request {
    std::unique_ptr<QDBusPendingCallWatcher> watcher;
    qint64 processIdentifier;
};

ApplicationActivator::ApplicationActivator() = default;

ApplicationActivator::~ApplicationActivator() {
    for (const Request& request : m_requests) {
        request.watcher->disconnect();
        request.watcher->waitForFinished();
        activateX11Window(request.processIdentifier);
    }
}

void ApplicationActivator::activate(const QString& busName, qint64 processIdentifier, const QByteArray& token) {
    // The library takes an invalid name for a mistake in the program, and leaves the bus.
    if (!isValidDesktopId(busName.toStdString()) || !isSessionBusReachable()) {
        activateX11Window(processIdentifier);
        return;
    }
    auto watcher = std::make_unique<QDBusPendingCallWatcher>(
        QDBusConnection::sessionBus().asyncCall(activation(busName, token), answerWithinMilliseconds));
    QObject::connect(watcher.get(), &QDBusPendingCallWatcher::finished, watcher.get(),
                     [this](QDBusPendingCallWatcher* finished) { finish(*finished); });
    m_requests.push_back({std::move(watcher), processIdentifier});
}

void ApplicationActivator::finish(const QObject& watcher) {
    const auto found = std::find_if(m_requests.begin(), m_requests.end(),
                                    [&watcher](const Request& request) { return request.watcher.get() == &watcher; });
    if (found == m_requests.end())
        return;
    activateX11Window(found->processIdentifier);
    // Later, since it is calling.
    found->watcher.release()->deleteLater();
    m_requests.erase(found);
}

}  // namespace wrapio
