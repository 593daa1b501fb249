#include "AppDelegate.h"

#include "Fakes/FakeStatusBar.h"
#include "MenuBarFixture.h"
#include "Services/Notifications.h"
#include "Services/WrapioURLBridge.h"

namespace wrapio {

using namespace Qt::StringLiterals;

class AppDelegateTest : public MenuBarFixture {
protected:
    AppDelegateTest() {
        static_cast<void>(WrapioURLBridge::takePendingCreateRequest());
        static_cast<void>(WrapioURLBridge::takePendingImportSessionRequest());
        resources.images[u"MenuBarIcon"_s] = plainImage(18, 18, Qt::black);
        application.list = {{1, u"Panel"_s, {}, false}, {2, u"Wrapio"_s, u"main"_s, true}, {3, u"Other"_s, {}, true}};
    }

    FakeStatusBar bar;
    NotificationCenter notificationCenter;
    int controllers = 0;
    AppDelegate delegate{{bar, resources, application, notificationCenter, [this]() -> MenuBarController& {
                              ++controllers;
                              return *controller;
                          }}};
};

TEST_F(AppDelegateTest, sets_the_menu_bar_up_when_launching_has_finished) {
    EXPECT_EQ(delegate.statusItem(), nullptr);
    EXPECT_EQ(delegate.menuController(), nullptr);
    EXPECT_EQ(linesOf([this] { delegate.applicationDidFinishLaunching(); }),
              QStringList({u"✅ Wrapio launched - setting up menu bar with NSStatusItem"_s,
                           u"✅ Menu bar setup complete with hover preview support"_s}));
    EXPECT_NE(delegate.statusItem(), nullptr);
    EXPECT_EQ(delegate.menuController(), controller.get());
    EXPECT_EQ(bar.shown.menu, &menu);
    EXPECT_TRUE(bar.shown.isVisible);
    EXPECT_EQ(bar.shown.length, -2);
}

TEST_F(AppDelegateTest, shows_the_menu_bar_icon_as_a_template) {
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(bar.shown.image);
    EXPECT_EQ(bar.shown.image->image.size(), QSize(18, 18));
    EXPECT_TRUE(bar.shown.image->isTemplate);
}

TEST_F(AppDelegateTest, shows_the_symbol_when_the_icon_is_missing) {
    resources.images.clear();
    resources.images[u"square.grid.2x2"_s] = plainImage(24, 24, Qt::black);
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(bar.shown.image, (StatusImage{plainImage(24, 24, Qt::black), true, u"Wrapio"_s, 14, FontWeight::medium}));
}

TEST_F(AppDelegateTest, stays_without_an_image_when_the_symbol_is_missing_too) {
    resources.images.clear();
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(bar.shown.image, std::nullopt);
    EXPECT_EQ(bar.shown.menu, &menu);
    EXPECT_TRUE(bar.shown.isVisible);
}

TEST_F(AppDelegateTest, goes_without_a_menu_when_the_item_has_no_button) {
    bar.hasButtons = false;
    EXPECT_EQ(linesOf([this] { delegate.applicationDidFinishLaunching(); }).last(), u"❌ Status item button is nil!"_s);
    EXPECT_NE(delegate.statusItem(), nullptr);
    EXPECT_EQ(delegate.menuController(), nullptr);
    EXPECT_EQ(controllers, 0) << "no controller is made for nobody";
    EXPECT_EQ(bar.shown.menu, nullptr);
    EXPECT_FALSE(bar.shown.isVisible);
}

TEST_F(AppDelegateTest, a_create_request_comes_to_the_front_and_waits_in_its_slot) {
    QStringList order;
    const auto observer = notificationCenter.addObserver(notifications::createAppFromURL, [&] {
        order = application.log;
        order << u"notified"_s;
    });
    delegate.applicationOpen({u"wrapio://create?url=https://example.com&title=Mail"_s});
    EXPECT_EQ(order, QStringList({u"activate"_s, u"front 2"_s, u"notified"_s}));
    const auto request = WrapioURLBridge::takePendingCreateRequest();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->title, u"Mail"_s);
}

TEST_F(AppDelegateTest, an_import_request_comes_to_the_front_and_waits_in_its_slot) {
    int notified = 0;
    const auto observer =
        notificationCenter.addObserver(notifications::importSessionFromURL, [&notified] { ++notified; });
    delegate.applicationOpen({u"wrapio://import-session?url=https://example.com"_s});
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(application.log, QStringList({u"activate"_s, u"front 2"_s}));
    EXPECT_TRUE(WrapioURLBridge::takePendingImportSessionRequest());
    EXPECT_FALSE(WrapioURLBridge::takePendingCreateRequest());
}

TEST_F(AppDelegateTest, several_addresses_are_handled_in_order_and_the_last_of_a_kind_waits) {
    int notified = 0;
    const auto observer = notificationCenter.addObserver(notifications::createAppFromURL, [&notified] { ++notified; });
    delegate.applicationOpen({u"wrapio://create?url=https://one.example"_s, u"wrapio://nothing"_s,
                              u"wrapio://create?url=https://two.example"_s});
    EXPECT_EQ(notified, 2);
    EXPECT_EQ(WrapioURLBridge::takePendingCreateRequest()->url.absoluteString(), u"https://two.example"_s);
}

TEST_F(AppDelegateTest, an_address_that_nobody_understands_is_logged_and_changes_nothing) {
    EXPECT_EQ(linesOf([this] { delegate.applicationOpen({u"wrapio://nothing?x=1"_s}); }),
              QStringList(u"⚠️ [URLBridge] Unsupported Wrapio URL: wrapio://nothing?x=1"_s));
    EXPECT_TRUE(application.log.isEmpty());
}

TEST_F(AppDelegateTest, a_request_waits_though_there_is_no_window) {
    application.list.clear();
    delegate.applicationOpen({u"wrapio://create?url=https://example.com"_s});
    EXPECT_EQ(application.log, QStringList(u"activate"_s));
    EXPECT_TRUE(WrapioURLBridge::takePendingCreateRequest());
}

TEST_F(AppDelegateTest, reopening_shows_the_first_main_window_when_none_is_visible) {
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(false));
    EXPECT_EQ(application.log, QStringList(u"front 2"_s));
}

TEST_F(AppDelegateTest, reopening_answers_yes_though_there_is_nothing_to_do) {
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(true));
    application.list.clear();
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(false));
    EXPECT_TRUE(application.log.isEmpty());
}

TEST_F(AppDelegateTest, the_program_lives_on_without_a_window) {
    EXPECT_FALSE(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}

}  // namespace wrapio
