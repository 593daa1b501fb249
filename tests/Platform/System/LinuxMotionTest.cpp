#include "Platform/Linux/LinuxMotion.h"

#include "Platform/System/BusService.h"
#include "Platform/System/Waiting.h"

#include <QDBusVariant>
#include <QMap>

#include <gtest/gtest.h>

#include <optional>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QString portalName = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString gnome = u"org.gnome.desktop.interface"_s;
const QString animations = u"enable-animations"_s;

/// A desktop that knows the given settings, and what is told of it.
class LinuxMotionTest : public testing::Test {
protected:
    void start(const QMap<QString, QVariant>& known) {
        portal = std::make_unique<BusService>(portalName, portalPath, [known](const QDBusMessage& call) {
            const QString group = call.arguments().value(0).toString();
            if (!known.contains(group))
                return call.createErrorReply(u"org.freedesktop.portal.Error.NotFound"_s,
                                             u"Requested setting not found"_s);
            // The older call of the portal wraps its answer twice.
            const QDBusVariant inner(known.value(group));
            return call.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner))));
        });
        motion.follow();
        // Answered after the three that were asked just now, so that their answers are not overtaken by changes.
        QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(portalName, portalPath, settings, u"ReadAll"_s));
        ASSERT_EQ(portal->calls().size(), 4U);
    }
    void change(const QString& group, const QString& key, const QVariant& value) {
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"service of "_s + portalName);
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, settings, u"SettingChanged"_s);
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        ASSERT_TRUE(bus.send(signal));
    }
    [[nodiscard]] bool waitFor(bool isReduced) {
        return waitUntil([this, isReduced] { return told == isReduced; });
    }

    std::optional<bool> told;
    int times = 0;
    LinuxMotion motion{[this](bool isReduced) {
        told = isReduced;
        ++times;
    }};
    std::unique_ptr<BusService> portal;
};

TEST_F(LinuxMotionTest, is_reduced_where_the_desktop_has_switched_animations_off) {
    start({{gnome, false}});
    EXPECT_TRUE(waitFor(true));
}

TEST_F(LinuxMotionTest, is_reduced_where_the_desktop_says_so_in_the_shared_setting) {
    start({{u"org.freedesktop.appearance"_s, 1U}});
    EXPECT_TRUE(waitFor(true));
}

TEST_F(LinuxMotionTest, is_reduced_where_animations_take_no_time) {
    start({{u"org.kde.kdeglobals.KDE"_s, u"0"_s}});
    EXPECT_TRUE(waitFor(true));
}

TEST_F(LinuxMotionTest, follows_the_person_who_changes_the_mind) {
    start({{gnome, true}, {u"org.kde.kdeglobals.KDE"_s, 1.0}});
    change(gnome, animations, false);
    ASSERT_TRUE(waitFor(true));
    change(gnome, animations, true);
    ASSERT_TRUE(waitFor(false));
    EXPECT_EQ(times, 2);
}

TEST_F(LinuxMotionTest, hears_nothing_in_what_is_no_answer) {
    start({{gnome, u"perhaps"_s}, {u"org.kde.kdeglobals.KDE"_s, u"fast"_s}});
    change(gnome, u"cursor-blink"_s, false);
    change(gnome, animations, false);
    ASSERT_TRUE(waitFor(true));
    EXPECT_EQ(times, 1);
}

TEST_F(LinuxMotionTest, asks_once) {
    start({});
    motion.follow();
    change(gnome, animations, false);
    ASSERT_TRUE(waitFor(true));
    EXPECT_EQ(portal->calls().size(), 4U);
}

}  // namespace
}  // namespace wrapio
