// What happens in the menu.
#include "MenuBarFixture.h"

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

class MenuBarControllerTest : public MenuBarFixture {
protected:
    MenuBarControllerTest() {
        for (const QString& name : {u"Mail"_s, u"News"_s})
            start(name);
        scheduler.advance(0.3);
    }
    /// Opens the menu with Option held, points to an app and waits for its preview.
    void previewOf(const QString& name) {
        menu.open();
        keys.setHeldHere(true);
        menu.highlight(name);
        scheduler.advance(0.1);
        ASSERT_EQ(previewed(), name);
    }
    void expectRemembered(const QString& name) {
        // Option shows what is remembered, and nothing else does.
        scheduler.advance(1.0);
        ASSERT_FALSE(preview->isVisible());
        keys.setHeldHere(false);
        keys.setHeldHere(true);
        EXPECT_EQ(previewed(), name);
    }
};

// Hovering

TEST_F(MenuBarControllerTest, hovering_without_option_remembers_the_app_and_shows_nothing) {
    menu.open();
    EXPECT_EQ(linesOf([this] { menu.highlight(u"Mail"_s); }), QStringList(u"🔍 [MenuBar] Hovering over: Mail"_s));
    scheduler.advance(5.0);
    EXPECT_EQ(previewed(), QString());
    EXPECT_FALSE(panel.isShown);
    expectRemembered(u"Mail"_s);
}

TEST_F(MenuBarControllerTest, pressing_option_over_an_app_shows_its_preview_at_once) {
    menu.open();
    menu.highlight(u"Mail"_s);
    EXPECT_EQ(linesOf([this] { keys.setHeldHere(true); }),
              QStringList(u"⌥ [MenuBar] Option pressed - showing preview for: Mail"_s));
    EXPECT_EQ(previewed(), u"Mail"_s);
}

TEST_F(MenuBarControllerTest, pressing_option_over_nothing_shows_nothing) {
    menu.open();
    EXPECT_EQ(linesOf([this] { keys.setHeldHere(true); }), QStringList());
    EXPECT_EQ(previewed(), QString());
}

TEST_F(MenuBarControllerTest, pressing_option_while_a_preview_is_visible_changes_nothing) {
    previewOf(u"Mail"_s);
    EXPECT_EQ(linesOf([this] { keys.setHeldHere(true); }), QStringList());
    EXPECT_EQ(previewed(), u"Mail"_s);
}

TEST_F(MenuBarControllerTest, hovering_with_option_shows_the_preview_after_a_tenth_of_a_second) {
    menu.open();
    keys.setHeldHere(true);
    EXPECT_EQ(linesOf([this] { menu.highlight(u"Mail"_s); }), QStringList(u"🔍 [MenuBar] Hovering over: Mail"_s));
    scheduler.advance(0.09);
    EXPECT_EQ(previewed(), QString());
    const QStringList lines = linesOf([this] { scheduler.advance(0.02); });
    EXPECT_EQ(lines.value(0), u"🔍 [MenuBar] Showing preview for: Mail"_s);
    EXPECT_EQ(previewed(), u"Mail"_s);
}

TEST_F(MenuBarControllerTest, quick_movement_over_many_items_shows_only_the_last) {
    menu.open();
    keys.setHeldHere(true);
    std::vector<QString> shown;
    const auto watch = preview->currentConfig().onDidChange([&] {
        if (preview->currentConfig().value())
            shown.push_back(preview->currentConfig().value()->displayName());
    });
    for (int round = 0; round < 5; ++round) {
        for (const QString& name : {u"Mail"_s, u"News"_s, u"Chat"_s}) {
            menu.highlight(name);
            scheduler.advance(0.05);
        }
    }
    menu.highlight(u"News"_s);
    scheduler.advance(1.0);
    EXPECT_THAT(shown, ElementsAre(u"News"_s));
}

TEST_F(MenuBarControllerTest, moving_to_another_app_with_option_shows_that_one) {
    previewOf(u"Mail"_s);
    menu.highlight(u"Chat"_s);
    scheduler.advance(0.1);
    EXPECT_EQ(previewed(), u"Chat"_s);
    EXPECT_EQ(state(), PreviewState::Case::noCache);
}

TEST_F(MenuBarControllerTest, an_app_item_stands_for_the_app_as_it_was_when_the_menu_was_built) {
    menu.open();
    menu.highlight(u"Mail"_s);
    AppConfiguration mail = app(u"Mail"_s);
    mail.appName = u"Post"_s;
    store->updateConfiguration(mail);
    scheduler.runPending();
    keys.setHeldHere(true);
    EXPECT_EQ(previewed(), u"Mail"_s);
}

// Moving off

TEST_F(MenuBarControllerTest, moving_off_with_option_keeps_the_preview) {
    previewOf(u"Mail"_s);
    EXPECT_EQ(linesOf([this] { menu.moveOff(); }),
              QStringList(u"⌥ [MenuBar] Moving off item, but Option held - persisting preview"_s));
    scheduler.advance(2.0);
    EXPECT_EQ(previewed(), u"Mail"_s);
}

TEST_F(MenuBarControllerTest, headers_separators_and_commands_are_no_apps) {
    previewOf(u"Mail"_s);
    for (std::size_t index = 0; index < menu.items.size(); ++index) {
        if (menu.items[index].representedObject)
            continue;
        EXPECT_EQ(linesOf([&] { menu.highlight(index); }),
                  QStringList(u"⌥ [MenuBar] Moving off item, but Option held - persisting preview"_s))
            << menu.items[index].title.toStdString();
    }
}

TEST_F(MenuBarControllerTest, moving_off_without_option_hides_the_preview_after_a_tenth_of_a_second) {
    previewOf(u"Mail"_s);
    keys.setHeldUnseen(false);
    menu.moveOff();
    scheduler.advance(0.09);
    EXPECT_FALSE(panel.log.contains(u"animate 0 in 0.15"_s));
    const QStringList lines = linesOf([this] { scheduler.advance(0.02); });
    EXPECT_TRUE(lines.contains(u"🔍 [MenuBar] Hiding preview (moved off item)"_s));
    scheduler.advance(0.2);
    EXPECT_EQ(previewed(), QString());
    keys.setHeldHere(true);
    EXPECT_EQ(previewed(), QString()) << "the app is forgotten";
}

TEST_F(MenuBarControllerTest, a_quick_move_across_a_separator_never_hides_the_preview) {
    previewOf(u"Mail"_s);
    keys.setHeldUnseen(false);
    menu.moveOff();
    scheduler.advance(0.05);
    menu.highlight(u"Chat"_s);
    scheduler.advance(1.0);
    EXPECT_FALSE(panel.log.contains(u"animate 0 in 0.15"_s));
    EXPECT_TRUE(preview->isVisible());
}

// Releasing Option

TEST_F(MenuBarControllerTest, releasing_option_hides_the_preview_at_once_and_remembers_a_highlighted_app) {
    previewOf(u"Mail"_s);
    EXPECT_EQ(linesOf([this] { keys.setHeldHere(false); }),
              QStringList(u"⌥ [MenuBar] Option released - hiding preview"_s));
    EXPECT_EQ(panel.log.last(), u"animate 0 in 0.15"_s);
    scheduler.advance(0.2);
    EXPECT_EQ(previewed(), QString());
    keys.setHeldHere(true);
    EXPECT_EQ(previewed(), u"Mail"_s);
}

TEST_F(MenuBarControllerTest, releasing_option_off_all_items_forgets_the_app) {
    previewOf(u"Mail"_s);
    menu.moveOff();
    keys.setHeldHere(false);
    scheduler.advance(0.2);
    keys.setHeldHere(true);
    EXPECT_EQ(previewed(), QString());
}

TEST_F(MenuBarControllerTest, releasing_option_without_a_preview_does_nothing) {
    menu.open();
    menu.highlight(u"Mail"_s);
    EXPECT_EQ(linesOf([this] { keys.setHeldHere(false); }), QStringList());
    expectRemembered(u"Mail"_s);
}

TEST_F(MenuBarControllerTest, option_pressed_again_while_the_preview_fades_out_shows_nothing) {
    previewOf(u"Mail"_s);
    keys.setHeldHere(false);
    scheduler.advance(0.05);
    EXPECT_EQ(linesOf([this] { keys.setHeldHere(true); }), QStringList());
    scheduler.advance(0.2);
    EXPECT_EQ(previewed(), QString());
}

// Closing

TEST_F(MenuBarControllerTest, closing_without_option_forgets_the_app_and_hides) {
    menu.open();
    menu.highlight(u"Mail"_s);
    EXPECT_EQ(linesOf([this] { menu.close(); }), QStringList(u"🔍 [MenuBar] Menu closed"_s));
    EXPECT_EQ(panel.log.last(), u"animate 0 in 0.15"_s);
    keys.setHeldHere(true);
    EXPECT_EQ(previewed(), QString());
}

TEST_F(MenuBarControllerTest, closing_with_option_keeps_the_preview_until_option_is_released_elsewhere) {
    previewOf(u"Mail"_s);
    EXPECT_EQ(
        linesOf([this] { menu.close(); }),
        QStringList({u"🔍 [MenuBar] Menu closed"_s, u"⌥ [MenuBar] Menu closed but Option held - persisting preview"_s}));
    scheduler.advance(3.0);
    EXPECT_EQ(previewed(), u"Mail"_s);
    EXPECT_EQ(linesOf([this] { keys.setHeldElsewhere(false); }),
              QStringList(u"⌥ [MenuBar] Option released - hiding preview"_s));
    scheduler.advance(0.2);
    EXPECT_EQ(previewed(), QString());
    keys.setHeldElsewhere(true);
    EXPECT_EQ(previewed(), QString()) << "with the menu closed nothing is highlighted";
}

TEST_F(MenuBarControllerTest, closing_takes_back_a_preview_that_waits) {
    menu.open();
    keys.setHeldHere(true);
    menu.highlight(u"Mail"_s);
    menu.close();
    scheduler.advance(1.0);
    EXPECT_EQ(previewed(), QString());
}

// Watching the keys

TEST_F(MenuBarControllerTest, keys_are_watched_only_while_the_menu_is_open_or_a_preview_is_visible) {
    EXPECT_FALSE(keys.watching);
    previewOf(u"Mail"_s);
    EXPECT_TRUE(keys.watching);
    menu.close();
    EXPECT_TRUE(keys.watching);
    keys.setHeldElsewhere(false);
    scheduler.advance(0.2);
    EXPECT_FALSE(keys.watching);
    menu.open();
    EXPECT_TRUE(keys.watching);
    menu.close();
    scheduler.advance(0.2);
    EXPECT_FALSE(keys.watching);
}

TEST_F(MenuBarControllerTest, nothing_but_the_poll_is_due_while_the_menu_is_closed) {
    previewOf(u"Mail"_s);
    keys.setHeldHere(false);
    menu.close();
    scheduler.advance(1.0);
    EXPECT_EQ(scheduler.timers(), 1U);
}

// Choosing

TEST_F(MenuBarControllerTest, choosing_a_running_app_brings_it_to_the_front) {
    const QStringList lines = linesOf([this] { menu.choose(u"Mail"_s); });
    EXPECT_EQ(lines,
              QStringList({u"🔍 [MenuBar] Menu closed"_s, u"🖱️ [MenuBar] launchOrFocusApp called"_s,
                           u"🖱️ [MenuBar] Config: Mail"_s, u"🖱️ [MenuBar] Is running: true"_s,
                           u"🖱️ [MenuBar] Calling focusApp..."_s, u"✅ [AppLifecycle] Focused app: Mail"_s}));
    EXPECT_EQ(workspace.log, QStringList(u"activate %1 2"_s.arg(workspace.running.front().processIdentifier)));
}

TEST_F(MenuBarControllerTest, choosing_another_app_launches_it) {
    makeBundle(u"Chat.app"_s);
    const QStringList lines = linesOf([this] {
        menu.choose(u"Chat"_s);
        scheduler.runPending();
    });
    EXPECT_EQ(lines.mid(1, 4),
              QStringList({u"🖱️ [MenuBar] launchOrFocusApp called"_s, u"🖱️ [MenuBar] Config: Chat"_s,
                           u"🖱️ [MenuBar] Is running: false"_s, u"🖱️ [MenuBar] Calling launchApp..."_s}));
    EXPECT_EQ(workspace.log, QStringList(u"open-application "_s + bundle(u"Chat.app"_s)));
}

TEST_F(MenuBarControllerTest, a_launch_that_fails_is_told_in_its_full_form) {
    const QStringList lines = linesOf([this] { menu.choose(u"Chat"_s); });
    const QString path = QString::fromUtf8(QUrl::fromLocalFile(bundle(u"Chat.app"_s)).toEncoded());
    EXPECT_EQ(lines.last(), u"❌ [MenuBar] Failed to launch app: appNotFound(%1)"_s.arg(path));
}

TEST_F(MenuBarControllerTest, choosing_an_app_that_has_just_ended_does_not_launch_it) {
    makeBundle(u"Mail.app"_s);
    workspace.running.clear();
    const QStringList lines = linesOf([this] { menu.choose(u"Mail"_s); });
    EXPECT_EQ(lines.last(), u"⚠️ [AppLifecycle] Could not find running app to focus: Mail"_s);
    EXPECT_TRUE(workspace.log.isEmpty());
}

TEST_F(MenuBarControllerTest, an_item_without_an_app_is_reported) {
    EXPECT_EQ(linesOf([this] { controller->launchOrFocusApp(MenuItem{}); }),
              QStringList(
                  {u"🖱️ [MenuBar] launchOrFocusApp called"_s, u"❌ [MenuBar] No config in representedObject!"_s}));
}

TEST_F(MenuBarControllerTest, opening_the_manager_brings_the_first_window_of_its_title_or_identifier_forward) {
    application.list = {
        {1, u"Settings"_s, u"settings"_s, true}, {2, u"Other"_s, u"main"_s, true}, {3, u"Wrapio"_s, {}, true}};
    menu.choose(u"Open Wrapio Manager"_s);
    EXPECT_EQ(application.log, QStringList({u"activate"_s, u"front 2"_s}));
    application.log.clear();
    application.list.erase(application.list.begin() + 1);
    menu.choose(u"Open Wrapio Manager"_s);
    EXPECT_EQ(application.log, QStringList({u"activate"_s, u"front 3"_s}));
}

TEST_F(MenuBarControllerTest, opening_the_manager_without_its_window_only_activates) {
    application.list = {{1, u"Settings"_s, u"settings"_s, true}};
    menu.choose(u"Open Wrapio Manager"_s);
    EXPECT_EQ(application.log, QStringList(u"activate"_s));
}

TEST_F(MenuBarControllerTest, quitting_all_asks_every_running_app_in_the_order_of_the_catalogue) {
    start(u"Chat"_s);
    store->moveApp(2, 0);
    const qint64 mail = workspace.running[0].processIdentifier;
    const qint64 news = workspace.running[1].processIdentifier;
    const qint64 chat = workspace.running[2].processIdentifier;
    EXPECT_EQ(linesOf([this] { controller->quitAllApps(); }), QStringList());
    EXPECT_EQ(workspace.log,
              QStringList({u"terminate %1"_s.arg(chat), u"terminate %1"_s.arg(mail), u"terminate %1"_s.arg(news)}));
}

TEST_F(MenuBarControllerTest, quitting_all_forces_only_those_that_cannot_be_asked) {
    const qint64 mail = workspace.running[0].processIdentifier;
    const qint64 news = workspace.running[1].processIdentifier;
    workspace.deafProcesses = {mail};
    menu.choose(u"Quit All Apps"_s);
    EXPECT_EQ(workspace.log, QStringList({u"terminate %1"_s.arg(mail), u"force-terminate %1"_s.arg(mail),
                                          u"terminate %1"_s.arg(news)}));
}

TEST_F(MenuBarControllerTest, quitting_all_leaves_apps_alone_that_were_not_seen_running) {
    workspace.start(bundle(u"Chat.app"_s));
    controller->quitAllApps();
    EXPECT_EQ(workspace.log.size(), 2);
}

TEST_F(MenuBarControllerTest, the_menu_follows_once_all_have_quit) {
    menu.choose(u"Quit All Apps"_s);
    scheduler.advance(1.1);
    EXPECT_EQ(menu.titles().value(0), u"Apps"_s);
}

TEST_F(MenuBarControllerTest, quitting_ends_the_program) {
    menu.choose(u"Quit Wrapio"_s);
    EXPECT_EQ(application.log, QStringList(u"terminate"_s));
    EXPECT_TRUE(workspace.log.isEmpty()) << "the apps go on";
}

}  // namespace wrapio
