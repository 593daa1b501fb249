// What stands in the menu.
#include "MenuBarFixture.h"

#include <gmock/gmock.h>

#include <chrono>

namespace wrapio {

using namespace Qt::StringLiterals;

class MenuBarItemsTest : public MenuBarFixture {
protected:
    const QString rebuilding = u"🔄 [MenuBarController] Rebuilding menu..."_s;
};

TEST_F(MenuBarItemsTest, lists_running_apps_then_the_others_then_the_commands) {
    start(u"News"_s);
    EXPECT_EQ(menu.titles(), QStringList({u"Running"_s, u"News"_s, u"-"_s, u"Apps"_s, u"Mail"_s, u"Chat"_s, u"-"_s,
                                          u"Open Wrapio Manager"_s, u"Quit All Apps"_s, u"-"_s, u"Quit Wrapio"_s}));
}

TEST_F(MenuBarItemsTest, keeps_the_order_of_the_catalogue_in_both_lists) {
    start(u"Chat"_s);
    start(u"Mail"_s);
    EXPECT_EQ(menu.titles().mid(0, 3), QStringList({u"Running"_s, u"Mail"_s, u"Chat"_s}));
    store->moveApp(2, 0);
    scheduler.runPending();
    EXPECT_EQ(menu.titles().mid(0, 3), QStringList({u"Running"_s, u"Chat"_s, u"Mail"_s}));
}

TEST_F(MenuBarItemsTest, without_apps_there_are_only_the_manager_a_separator_and_quit) {
    store->reset();
    scheduler.runPending();
    EXPECT_EQ(menu.titles(), QStringList({u"Open Wrapio Manager"_s, u"-"_s, u"Quit Wrapio"_s}));
}

TEST_F(MenuBarItemsTest, without_running_apps_there_is_no_running_header_and_no_quit_all) {
    EXPECT_EQ(menu.titles(), QStringList({u"Apps"_s, u"Mail"_s, u"News"_s, u"Chat"_s, u"-"_s, u"Open Wrapio Manager"_s,
                                          u"-"_s, u"Quit Wrapio"_s}));
}

TEST_F(MenuBarItemsTest, with_all_apps_running_there_is_no_apps_header_but_quit_all) {
    for (const QString& name : {u"Mail"_s, u"News"_s, u"Chat"_s})
        start(name);
    EXPECT_EQ(menu.titles(), QStringList({u"Running"_s, u"Mail"_s, u"News"_s, u"Chat"_s, u"-"_s,
                                          u"Open Wrapio Manager"_s, u"Quit All Apps"_s, u"-"_s, u"Quit Wrapio"_s}));
}

TEST_F(MenuBarItemsTest, headers_are_disabled_and_small_and_semibold_and_secondary) {
    start(u"Mail"_s);
    for (const QString& title : {u"Running"_s, u"Apps"_s}) {
        const MenuItem& header = menu.item(title);
        EXPECT_FALSE(header.isEnabled);
        EXPECT_EQ(header.action, MenuAction::none);
        EXPECT_EQ(header.keyEquivalent, std::nullopt);
        EXPECT_EQ(header.representedObject, std::nullopt);
        EXPECT_EQ(header.styledTitle,
                  (StyledTitle{title, 11.0, FontWeight::semibold, TitleColor::secondaryLabel, std::nullopt}));
    }
}

TEST_F(MenuBarItemsTest, a_running_app_is_its_name_two_spaces_and_a_green_dot) {
    start(u"Mail"_s);
    const MenuItem& item = menu.item(u"Mail"_s);
    ASSERT_TRUE(item.styledTitle);
    EXPECT_EQ(item.styledTitle->text, u"Mail  "_s);
    EXPECT_EQ(item.styledTitle->dot, (GreenDot{8, 8}));
    EXPECT_EQ(item.styledTitle->pointSize, std::nullopt);
    EXPECT_EQ(item.title, u"Mail"_s);
}

TEST_F(MenuBarItemsTest, an_app_of_the_apps_section_never_shows_a_dot) {
    start(u"Mail"_s);
    EXPECT_EQ(menu.item(u"News"_s).styledTitle, std::nullopt);
}

TEST_F(MenuBarItemsTest, an_app_item_carries_its_app_and_has_no_key) {
    start(u"Mail"_s);
    for (const QString& name : {u"Mail"_s, u"News"_s}) {
        const MenuItem& item = menu.item(name);
        EXPECT_EQ(item.representedObject, app(name));
        EXPECT_EQ(item.action, MenuAction::launchOrFocusApp);
        EXPECT_EQ(item.keyEquivalent, std::nullopt);
        EXPECT_TRUE(item.isEnabled);
    }
    EXPECT_EQ(menu.item(u"News"_s), MenuBarController::makeMenuItem(app(u"News"_s), false));
}

TEST_F(MenuBarItemsTest, the_commands_have_their_keys) {
    start(u"Mail"_s);
    EXPECT_EQ(menu.item(u"Open Wrapio Manager"_s).keyEquivalent, (KeyEquivalent{u"o"_s, KeyModifier::command}));
    EXPECT_EQ(menu.item(u"Quit Wrapio"_s).keyEquivalent, (KeyEquivalent{u"q"_s, KeyModifier::command}));
    EXPECT_EQ(menu.item(u"Quit All Apps"_s).keyEquivalent, std::nullopt);
    EXPECT_EQ(menu.item(u"Open Wrapio Manager"_s).action, MenuAction::openManager);
    EXPECT_EQ(menu.item(u"Quit All Apps"_s).action, MenuAction::quitAllApps);
    EXPECT_EQ(menu.item(u"Quit Wrapio"_s).action, MenuAction::quitWrapio);
}

TEST_F(MenuBarItemsTest, the_menu_is_built_three_times_at_the_start) {
    FakeMenuBarMenu another;
    const QStringList lines = linesOf([&] {
        MenuBarController other({*store, *lifecycle, workspace, *preview, keys, application, scheduler}, another);
        EXPECT_EQ(another.rebuilds, 1);
        scheduler.runPending();
        EXPECT_EQ(another.rebuilds, 3);
    });
    EXPECT_EQ(lines.mid(0, 3), QStringList({u"✅ [MenuBarController] Initializing..."_s, rebuilding,
                                            u"✅ [MenuBarController] Initialization complete"_s}));
    EXPECT_EQ(lines.count(rebuilding), 5) << "two of them are the fixture's own";
}

TEST_F(MenuBarItemsTest, the_menu_is_rebuilt_when_the_catalogue_changes) {
    scheduler.runPending();
    const int before = menu.rebuilds;
    AppConfiguration mail = app(u"Mail"_s);
    mail.appName = u"Post"_s;
    store->updateConfiguration(mail);
    EXPECT_EQ(menu.rebuilds, before) << "not from inside the announcement";
    EXPECT_EQ(linesOf([this] { scheduler.runPending(); }), QStringList(rebuilding));
    EXPECT_EQ(menu.titles().value(1), u"Post"_s);
}

TEST_F(MenuBarItemsTest, the_menu_is_rebuilt_when_the_set_of_running_apps_changes) {
    scheduler.runPending();
    const int before = menu.rebuilds;
    start(u"Mail"_s);
    EXPECT_EQ(menu.rebuilds, before + 1);
    quitAll();
    EXPECT_EQ(menu.rebuilds, before + 2);
}

TEST_F(MenuBarItemsTest, the_poll_alone_rebuilds_nothing) {
    scheduler.runPending();
    const int before = menu.rebuilds;
    scheduler.advance(60);
    EXPECT_EQ(menu.rebuilds, before);
}

TEST_F(MenuBarItemsTest, the_menu_is_left_alone_once_the_controller_is_gone) {
    scheduler.runPending();
    store->createApp();
    controller.reset();
    const int before = menu.rebuilds;
    scheduler.runPending();
    EXPECT_EQ(menu.rebuilds, before);
    EXPECT_EQ(menu.delegate, nullptr);
}

TEST_F(MenuBarItemsTest, a_thousand_apps_are_rebuilt_within_ten_milliseconds) {
    std::vector<AppConfiguration> many;
    for (int i = 0; i < 1000; ++i)
        many.push_back(record(u"App %1"_s.arg(i)));
    store->appendApps(many);
    scheduler.runPending();
    auto best = std::chrono::steady_clock::duration::max();
    for (int i = 0; i < 5; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        controller->rebuildMenu();
        best = std::min(best, std::chrono::steady_clock::now() - begin);
    }
    EXPECT_EQ(menu.items.size(), 1008U);
#ifdef NDEBUG
    EXPECT_LT(best, std::chrono::milliseconds(10));
#endif
}

}  // namespace wrapio
