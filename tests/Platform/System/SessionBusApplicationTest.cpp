#include "Platform/Linux/SessionBusApplication.h"

#include "PrivateDesktop.h"
#include "Waiting.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

class SessionBusApplicationTest : public testing::Test {
protected:
    ApplicationCalls calls() {
        return {[this](const QByteArray& token) { log << u"activate "_s + QString::fromUtf8(token); },
                [this](const QStringList& urls, const QByteArray& token) {
                    log << u"open "_s + urls.join(u' ') + u' ' + QString::fromUtf8(token);
                },
                [this](const QString& action, const QByteArray& token) {
                    log << u"action "_s + action + u' ' + QString::fromUtf8(token);
                }};
    }
    /// Calls over a connection of its own, as another program does; the answer.
    QDBusMessage call(const QString& method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(u"com.wrapio.Wrapio"_s, u"/com/wrapio/Wrapio"_s,
                                                              u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = other.asyncCall(message);
        EXPECT_TRUE(waitUntil([&pending] { return pending.isFinished(); }));
        return pending.reply();
    }

    PrivateDesktop desktop;
    int argc = 1;
    std::string name = "test";
    char* argv = name.data();
    QCoreApplication application{argc, &argv};
    QDBusConnection other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"another program"_s);
    QStringList log;
};

TEST_F(SessionBusApplicationTest, is_reached_by_its_name_and_leaves_it_in_the_end) {
    ASSERT_TRUE(desktop.works());
    const QVariantMap none;
    {
        SessionBusApplication program;
        ASSERT_TRUE(program.join(calls()));
        EXPECT_EQ(
            call(u"Activate"_s, {QVariantMap{{u"activation-token"_s, u"new"_s}, {u"desktop-startup-id"_s, u"old"_s}}})
                .type(),
            QDBusMessage::ReplyMessage);
        EXPECT_EQ(call(u"Activate"_s, {QVariantMap{{u"desktop-startup-id"_s, u"old"_s}}}).type(),
                  QDBusMessage::ReplyMessage);
        EXPECT_EQ(call(u"Open"_s, {QStringList{u"wrapio://a"_s, u"wrapio://b"_s}, none}).type(),
                  QDBusMessage::ReplyMessage);
        EXPECT_EQ(call(u"ActivateAction"_s, {u"new"_s, QVariantList(), none}).type(), QDBusMessage::ReplyMessage);
        EXPECT_EQ(log, QStringList(
                           {u"activate new"_s, u"activate old"_s, u"open wrapio://a wrapio://b "_s, u"action new "_s}));
        log.clear();
        EXPECT_EQ(call(u"Activate"_s, {u"no map"_s}).type(), QDBusMessage::ErrorMessage);
        EXPECT_EQ(call(u"Dance"_s, {}).type(), QDBusMessage::ErrorMessage);
        EXPECT_TRUE(log.isEmpty());
        SessionBusApplication second;
        const QString owner = other.interface()->serviceOwner(u"com.wrapio.Wrapio"_s);
        EXPECT_FALSE(owner.isEmpty());
    }
    EXPECT_FALSE(other.interface()->isServiceRegistered(u"com.wrapio.Wrapio"_s));
    ASSERT_TRUE(other.registerService(u"com.wrapio.Wrapio"_s));
    SessionBusApplication late;
    EXPECT_FALSE(late.join(calls()));
}

}  // namespace wrapio
