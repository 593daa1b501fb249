#include "Platform/Linux/SessionBusApplication.h"

#include "Platform/Linux/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString busName = u"com.wrapio.Wrapio"_s;
const QString objectPath = u"/com/wrapio/Wrapio"_s;
const QString applicationInterface = u"org.freedesktop.Application"_s;

/// What the desktop passes along so that a window may come to the front; newer desktops use the first name.
QByteArray tokenOf(const QVariant& platformData) {
    const auto data = qdbus_cast<QVariantMap>(platformData);
    const QString token = data.value(u"activation-token"_s).toString();
    return (token.isEmpty() ? data.value(u"desktop-startup-id"_s).toString() : token).toUtf8();
}

}  // namespace

class SessionBusApplication::Object final : public QDBusVirtualObject {
public:
    explicit Object(ApplicationCalls calls)
        : m_calls(std::move(calls)) {}

    QString introspect(const QString&) const override {
        return uR"(<interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="Open">
    <arg type="as" name="uris" direction="in"/><arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg type="s" name="action_name" direction="in"/><arg type="av" name="parameter" direction="in"/>
    <arg type="a{sv}" name="platform_data" direction="in"/>
  </method>
</interface>
)"_s;
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.interface() != applicationInterface && !message.interface().isEmpty())
            return false;
        const QList<QVariant> arguments = message.arguments();
        if (message.member() == u"Activate" && message.signature() == u"a{sv}")
            m_calls.activate(tokenOf(arguments.at(0)));
        else if (message.member() == u"Open" && message.signature() == u"asa{sv}")
            m_calls.open(arguments.at(0).toStringList(), tokenOf(arguments.at(1)));
        else if (message.member() == u"ActivateAction" && message.signature() == u"sava{sv}")
            m_calls.activateAction(arguments.at(0).toString(), tokenOf(arguments.at(2)));
        else
            return false;
        if (message.isReplyRequired())
            connection.send(message.createReply());
        return true;
    }

private:
    ApplicationCalls m_calls;
};

SessionBusApplication::SessionBusApplication() = default;

SessionBusApplication::~SessionBusApplication() {
    if (!m_object)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(busName);
    bus.unregisterObject(objectPath);
}

bool SessionBusApplication::join(ApplicationCalls calls) {
    if (m_object || !isSessionBusReachable())
        return false;
    QDBusConnection bus = QDBusConnection::sessionBus();
    auto object = std::make_unique<Object>(std::move(calls));
    // First the object and then the name, since calls come as soon as the name is known.
    if (!bus.registerVirtualObject(objectPath, object.get()))
        return false;
    if (!bus.registerService(busName)) {
        bus.unregisterObject(objectPath);
        return false;
    }
    m_object = std::move(object);
    return true;
}

}  // namespace wrapio
