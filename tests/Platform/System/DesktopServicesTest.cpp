// What needs a display, a window manager or a session bus.

#include "Fakes/PrintErrors.h"
#include "Fakes/PrintQt.h"
#include "Platform/Linux/LinuxSystemHealth.h"
#include "Platform/Linux/LinuxWorkspace.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/Linux/X11Windows.h"
#include "Platform/System/BusService.h"
#include "Platform/System/PrivateDesktop.h"
#include "Platform/System/RunningBundles.h"
#include "Platform/System/TestBundle.h"
#include "Platform/System/Waiting.h"
#include "Platform/System/XWindows.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <optional>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 firstProcess = 1111111;
constexpr qint64 secondProcess = 2222222;

TEST(X11WindowsTest, TheWindowOfAProcessComesToTheFront) {
    XWindows windows;
    const xcb_window_t first = windows.open(firstProcess);
    const xcb_window_t second = windows.open(secondProcess);
    ASSERT_TRUE(waitUntil([&] { return windows.isManaged(first) && windows.isManaged(second); }));
    EXPECT_TRUE(activateX11Window(firstProcess));
    EXPECT_TRUE(waitUntil([&] { return windows.active() == first; }));
    EXPECT_TRUE(activateX11Window(secondProcess));
    EXPECT_TRUE(waitUntil([&] { return windows.active() == second; }));
}

TEST(X11WindowsTest, AProcessWithoutAWindowCannotComeToTheFront) {
    EXPECT_TRUE(isX11Reachable());
    EXPECT_FALSE(activateX11Window(firstProcess));
    EXPECT_FALSE(activateX11Window(0));
    EXPECT_FALSE(activateX11Window(-1));
}

TEST(X11WindowsTest, ADisplayThatDoesNotExistIsNotReachable) {
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":987");
    EXPECT_FALSE(isX11Reachable());
    EXPECT_FALSE(activateX11Window(firstProcess));
    EXPECT_FALSE(hasX11Tray());
    qputenv("DISPLAY", display);
}

struct ActivatingTest : testing::Test {
    void SetUp() override {
        makeBundle(bundle, u"com.example.1mail-x"_s);
        std::optional<std::optional<LaunchError>> result;
        workspace->openApplication(bundle, {true}, [&result](std::optional<LaunchError> failure) { result = failure; });
        ASSERT_TRUE(waitUntil([&result] { return result.has_value(); }));
        ASSERT_EQ(*result, std::nullopt);
        ASSERT_EQ(running.list().size(), 1U);
        application = {running.list().front().processIdentifier, bundle};
        window = windows.open(application.processIdentifier);
        other = windows.open(firstProcess);
        ASSERT_TRUE(waitUntil([&] { return windows.isManaged(window) && windows.isManaged(other); }));
        ASSERT_TRUE(activateX11Window(firstProcess));
        ASSERT_TRUE(waitUntil([&] { return windows.active() == other; }));
    }
    void activate() { workspace->activate(application, ActivationOptions::activateIgnoringOtherApps); }
    [[nodiscard]] bool comesToTheFront() {
        return waitUntil([this] { return windows.active() == window; });
    }
    static QDBusMessage done(const QDBusMessage& call) { return call.createReply(); }

    QTemporaryDir folder;
    RunningBundles running{folder.path()};
    QString bundle = folder.path() + u"/Mail.app"_s;
    QtScheduler scheduler;
    std::optional<LinuxWorkspace> workspace{
        std::in_place, Directories{folder.path(), std::nullopt, std::nullopt, QString(), QString()}, scheduler,
        [](const QString&) { return std::nullopt; }};
    RunningApplication application;
    XWindows windows;
    xcb_window_t window = 0;
    xcb_window_t other = 0;
};

const QString mailName = u"com.example._1mail-x"_s;
const QString mailPath = u"/com/example/_1mail_x"_s;

TEST_F(ActivatingTest, AnApplicationIsAskedByItsDesktopIdWithTheTokenThatThereIs) {
    const BusService service(mailName, mailPath, &done);
    workspace->setActivationToken("token-1");
    activate();
    ASSERT_TRUE(waitUntil([&service] { return service.calls().size() == 1; }));
    const QDBusMessage call = service.calls().front();
    EXPECT_EQ(call.interface(), u"org.freedesktop.Application"_s);
    EXPECT_EQ(call.member(), u"Activate"_s);
    EXPECT_EQ(call.path(), mailPath);
    EXPECT_EQ(call.signature(), u"a{sv}"_s);
    const auto data = qdbus_cast<QVariantMap>(call.arguments().value(0));
    EXPECT_EQ(data.value(u"activation-token"_s).toString(), u"token-1"_s);
    EXPECT_EQ(data.value(u"desktop-startup-id"_s).toString(), u"token-1"_s);
    activate();
    ASSERT_TRUE(waitUntil([&service] { return service.calls().size() == 2; }));
    EXPECT_TRUE(qdbus_cast<QVariantMap>(service.calls().back().arguments().value(0)).isEmpty());
}

TEST_F(ActivatingTest, AnApplicationThatAnswersHasItsWindowInFront) {
    const BusService service(mailName, mailPath, &done);
    activate();
    EXPECT_TRUE(comesToTheFront());
}

TEST_F(ActivatingTest, AnApplicationThatIsNotOnTheBusHasItsWindowInFront) {
    activate();
    EXPECT_TRUE(comesToTheFront());
}

TEST_F(ActivatingTest, AnApplicationThatDoesNotAnswerHasItsWindowInFront) {
    const BusService service(mailName, mailPath, [](const QDBusMessage&) { return QDBusMessage(); });
    activate();
    EXPECT_TRUE(comesToTheFront());
}

TEST_F(ActivatingTest, AnApplicationWhoseBundleIsGoneHasItsWindowInFront) {
    ASSERT_TRUE(QDir(bundle).removeRecursively());
    activate();
    EXPECT_TRUE(comesToTheFront());
}

TEST_F(ActivatingTest, OpeningAnApplicationThatRunsBringsItToTheFront) {
    const BusService service(mailName, mailPath, &done);
    workspace->openApplication(bundle, {true},
                               [](const std::optional<LaunchError>& failure) { EXPECT_FALSE(failure); });
    EXPECT_TRUE(comesToTheFront());
    EXPECT_EQ(service.calls().size(), 1U);
    EXPECT_EQ(running.list().size(), 1U);
}

TEST_F(ActivatingTest, AProgramMayEndRightAfterItHasAsked) {
    const BusService service(mailName, mailPath, &done);
    activate();
    workspace.reset();
    EXPECT_EQ(service.calls().size(), 1U);
    EXPECT_TRUE(comesToTheFront());
}

SurroundingsCheck check(const QString& name) {
    const LinuxSystemHealth health(BundleHealth{});
    for (const SurroundingsCheck& one : health.surroundings()) {
        if (one.name == name)
            return one;
    }
    return {};
}

TEST(DesktopHealthTest, ADisplayAndASessionBusThatAnswerAreUsable) {
    EXPECT_TRUE(check(u"Display"_s).usable);
    EXPECT_EQ(check(u"Display"_s).detail, u"X11, "_s + qEnvironmentVariable("DISPLAY"));
    EXPECT_TRUE(check(u"Session bus"_s).usable);
}

TEST(DesktopHealthTest, StatusItemsNeedSomebodyWhoShowsThem) {
    EXPECT_FALSE(check(u"Status items"_s).usable);
    bool hasHost = false;
    const BusService watcher(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
                             [&hasHost](const QDBusMessage& call) {
                                 const auto value = QDBusVariant(hasHost);
                                 return call.createReply(QVariant::fromValue(value));
                             });
    EXPECT_FALSE(check(u"Status items"_s).usable);
    hasHost = true;
    EXPECT_EQ(check(u"Status items"_s).detail, u"shown by the desktop"_s);
}

TEST(DesktopHealthTest, StatusItemsMayBeShownInAnX11Tray) {
    XWindows tray;
    tray.hold("_NET_SYSTEM_TRAY_S0");
    EXPECT_TRUE(check(u"Status items"_s).usable);
    EXPECT_EQ(check(u"Status items"_s).detail, u"shown in the X11 tray"_s);
}

}  // namespace
}  // namespace wrapio

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    const QGuiApplication application(argc, argv);
    const wrapio::PrivateDesktop desktop;
    if (!desktop.works()) {
        std::fputs("Could not start Xvfb, dbus-daemon and openbox\n", stderr);
        return 1;
    }
    return RUN_ALL_TESTS();
}
