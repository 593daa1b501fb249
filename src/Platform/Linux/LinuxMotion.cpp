#include "Platform/Linux/LinuxMotion.h"

#include "Platform/Linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <array>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString portal = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;

/// A setting of one kind of desktop, and whether a value of it asks for less motion.
struct MotionSetting {
    QString group;
    QString key;
    bool (*isReducing)(const QVariant& value);
};

const std::array<MotionSetting, 3>& motionSettings() {
    static const std::array<MotionSetting, 3> list{{
        {u"org.freedesktop.appearance"_s, u"reduced-motion"_s,
         [](const QVariant& value) { return value.toUInt() == 1; }},
        {u"org.gnome.desktop.interface"_s, u"enable-animations"_s,
         [](const QVariant& value) { return value.userType() == QMetaType::Bool && !value.toBool(); }},
        {u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s,
         [](const QVariant& value) {
             bool isNumber = false;
             return value.toDouble(&isNumber) <= 0 && isNumber;
         }},
    }};
    return list;
}

/// Desktops wrap what they answer in one variant or in two.
QVariant unwrapped(QVariant value) {
    while (value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

}  // namespace

void LinuxMotion::follow() {
    if (m_isFollowing || !isSessionBusReachable())
        return;
    m_isFollowing = true;
    QDBusConnection::sessionBus().connect(portal, portalPath, settings, u"SettingChanged"_s, this,
                                          SLOT(changed(QString, QString, QDBusVariant)));
    for (const MotionSetting& setting : motionSettings())
        ask(setting.group, setting.key);
}

void LinuxMotion::ask(const QString& group, const QString& key) {
    QDBusMessage message = QDBusMessage::createMethodCall(portal, portalPath, settings, u"Read"_s);
    message << group << key;
    auto* const waiting = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(message), this);
    connect(waiting, &QDBusPendingCallWatcher::finished, this, [this, group, key](QDBusPendingCallWatcher* done) {
        if (const QDBusPendingReply<QDBusVariant> reply = *done; !reply.isError())
            changed(group, key, reply.value());
        done->deleteLater();
    });
}

void LinuxMotion::changed(const QString& group, const QString& key, const QDBusVariant& value) {
    for (const MotionSetting& setting : motionSettings()) {
        if (setting.group != group || setting.key != key)
            continue;
        const bool wasReduced = !m_reducing.isEmpty();
        if (setting.isReducing(unwrapped(value.variant())))
            m_reducing.insert(group);
        else
            m_reducing.remove(group);
        if (wasReduced == m_reducing.isEmpty())
            m_tell(!wasReduced);
    }
}

}  // namespace wrapio
