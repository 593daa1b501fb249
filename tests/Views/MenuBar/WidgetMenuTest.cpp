// The menu as widgets, on a screen that nobody sees.
#include "Views/Widgets/WidgetMenu.h"

#include "Fakes/PrintQt.h"
#include "Platform/System/Waiting.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QStringList>

#include <gtest/gtest.h>

#include <chrono>

namespace wrapio {

using namespace Qt::StringLiterals;

class WidgetMenuTest : public testing::Test, protected MenuDelegate {
protected:
    WidgetMenuTest() { menu.setDelegate(this); }
    ~WidgetMenuTest() override {
        menu.setDelegate(nullptr);
        if (menu.isOpen())
            menu.popup(QPoint());
    }

    void menuWillOpen() override { log << u"open"_s; }
    void menuWillHighlight(const MenuItem* item) override { log << u"over "_s + (item ? item->title : u"nothing"_s); }
    void menuDidClose() override { log << u"closed"_s; }
    void menuDidChoose(const MenuItem& item) override { log << u"chose "_s + item.title; }

    static MenuItem app(const QString& name) {
        MenuItem item;
        item.title = name;
        item.action = MenuAction::launchOrFocusApp;
        item.representedObject = AppConfiguration{};
        item.representedObject->id = QUuid::createUuidV5(QUuid(), name);
        return item;
    }
    static MenuItem separator() {
        MenuItem item;
        item.isSeparator = true;
        item.isEnabled = false;
        return item;
    }
    static MenuItem quit() {
        MenuItem item;
        item.title = u"Quit Wrapio"_s;
        item.action = MenuAction::quitWrapio;
        item.keyEquivalent = KeyEquivalent{u"q"_s, KeyModifier::command};
        return item;
    }
    static MenuItem header() {
        MenuItem item;
        item.title = u"Apps"_s;
        item.isEnabled = false;
        return item;
    }
    void open(MenuItems items) {
        menu.setItems(std::move(items));
        menu.popup(QPoint(10, 10));
        ASSERT_TRUE(waitUntil([this] { return menu.isOpen(); }));
        popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(popup);
        log.clear();
    }
    /// As the toolkit tells of it: to the popup, which has grabbed the pointer.
    void clickAt(QPoint place) const {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            if (!menu.isOpen())
                return;
            QMouseEvent event(type, popup->mapFromGlobal(place), place, Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(popup, &event);
        }
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) const {
        QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(popup, &down);
        if (!menu.isOpen())
            return;
        QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
        QCoreApplication::sendEvent(popup, &up);
    }
    [[nodiscard]] QPoint centerOf(const QString& text) const {
        for (QAction* const action : popup->actions()) {
            if (action->text() == text)
                return popup->actionGeometry(action).center();
        }
        ADD_FAILURE() << "no line is called " << text.toStdString();
        return {};
    }
    void moveTo(QPoint place) const {
        QMouseEvent move(QEvent::MouseMove, place, popup->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(popup, &move);
    }
    void click(QPoint place) const {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, popup->mapToGlobal(place), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(popup, &event);
        }
    }

    WidgetMenu menu;
    QMenu* popup = nullptr;
    QStringList log;
};

TEST_F(WidgetMenuTest, tells_when_it_opens_and_closes) {
    menu.setItems({app(u"Mail"_s)});
    menu.popup(QPoint(10, 10));
    menu.popup(QPoint(10, 10));
    EXPECT_EQ(log.first(), u"open"_s);
    EXPECT_EQ(log.last(), u"closed"_s);
    EXPECT_FALSE(menu.isOpen());
}

TEST_F(WidgetMenuTest, tells_which_item_the_pointer_is_over_and_when_it_is_over_none) {
    open({header(), app(u"Mail"_s), app(u"News"_s), separator(), quit()});
    moveTo(centerOf(u"Mail"_s));
    moveTo(centerOf(u"Mail"_s) + QPoint(3, 1));
    moveTo(centerOf(u"News"_s));
    moveTo(QPoint(-50, -50));
    EXPECT_EQ(log.mid(0, 3), QStringList({u"over Mail"_s, u"over News"_s, u"over nothing"_s}));
    EXPECT_FALSE(menu.hasHighlightedItem());
}

TEST_F(WidgetMenuTest, the_keyboard_moves_over_items_too_with_alt_held_or_not) {
    open({header(), app(u"Mail"_s), app(u"News"_s), separator(), quit()});
    press(Qt::Key_Down);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(log, QStringList({u"over Mail"_s, u"over News"_s}));
    EXPECT_TRUE(menu.hasHighlightedItem());
}

TEST_F(WidgetMenuTest, alt_does_not_close_it) {
    open({app(u"Mail"_s), quit()});
    for (const int key : {Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta})
        press(key, Qt::AltModifier);
    EXPECT_TRUE(menu.isOpen());
    EXPECT_FALSE(log.contains(u"closed"_s));
}

TEST_F(WidgetMenuTest, closes_before_it_tells_what_was_chosen) {
    open({app(u"Mail"_s), app(u"News"_s), quit()});
    moveTo(centerOf(u"News"_s));
    click(centerOf(u"News"_s));
    ASSERT_TRUE(waitUntil([this] { return log.contains(u"chose News"_s); }));
    EXPECT_EQ(log, QStringList({u"over News"_s, u"closed"_s, u"chose News"_s}));
}

TEST_F(WidgetMenuTest, keys_choose_items_while_it_is_open) {
    open({app(u"Mail"_s), separator(), quit()});
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(log, QStringList({u"closed"_s, u"chose Quit Wrapio"_s}));
}

TEST_F(WidgetMenuTest, headers_and_separators_cannot_be_chosen) {
    open({header(), separator(), app(u"Mail"_s)});
    click(centerOf(u"Apps"_s));
    EXPECT_TRUE(menu.isOpen());
    EXPECT_FALSE(log.join(u' ').contains(u"chose"_s));
}

TEST_F(WidgetMenuTest, a_highlighted_app_stays_highlighted_when_the_items_are_replaced) {
    open({app(u"Mail"_s), app(u"News"_s), quit()});
    moveTo(centerOf(u"News"_s));
    log.clear();
    menu.setItems({header(), app(u"News"_s), separator(), app(u"Mail"_s), quit()});
    EXPECT_TRUE(menu.isOpen());
    EXPECT_TRUE(menu.hasHighlightedItem());
    EXPECT_EQ(log, QStringList());
}

TEST_F(WidgetMenuTest, an_app_that_goes_while_it_is_highlighted_is_left) {
    open({app(u"Mail"_s), app(u"News"_s), quit()});
    moveTo(centerOf(u"News"_s));
    log.clear();
    menu.setItems({app(u"Mail"_s), quit()});
    EXPECT_EQ(log.value(0), u"over nothing"_s);
}

TEST_F(WidgetMenuTest, names_are_shown_as_they_are) {
    open({app(u"A & B_C"_s), app(u"two\nlines"_s)});
    EXPECT_EQ(popup->actions().at(0)->text(), u"A && B_C"_s);
    EXPECT_EQ(popup->actions().at(1)->text(), u"two lines"_s);
}

TEST_F(WidgetMenuTest, the_desktop_draws_the_same_entries) {
    MenuItem running = app(u"Mail_1 & Co"_s);
    running.styledTitle = StyledTitle{};
    running.styledTitle->dot = GreenDot{};
    menu.setItems({header(), running, separator(), app(u"News"_s), quit()});
    ASSERT_TRUE(waitUntil([this] { return !menu.desktopMenu().isEmpty(); }));
    const auto actions = menu.desktopMenu().actions();
    ASSERT_EQ(actions.size(), 5);
    EXPECT_EQ(actions[0]->text(), u"&Apps"_s);
    EXPECT_FALSE(actions[0]->isEnabled());
    EXPECT_EQ(actions[1]->text(), u"&Mail__1 & Co  ●"_s);
    EXPECT_TRUE(actions[2]->isSeparator());
    actions[3]->trigger();
    EXPECT_EQ(log, QStringList(u"chose News"_s));
}

TEST_F(WidgetMenuTest, an_action_can_be_chosen_from_outside) {
    menu.setItems({app(u"Mail"_s), quit()});
    menu.choose(MenuAction::quitWrapio);
    menu.choose(MenuAction::quitAllApps);
    EXPECT_EQ(log, QStringList(u"chose Quit Wrapio"_s));
}

TEST_F(WidgetMenuTest, lines_have_room_for_their_names_and_no_more_than_a_menu_has) {
    open({app(u"A"_s), app(QString(500, u'W')), separator(), quit()});
    EXPECT_GE(popup->width(), 180);
    EXPECT_LE(popup->width(), 500);
    EXPECT_LT(popup->actionGeometry(popup->actions().at(2)).height(),
              popup->actionGeometry(popup->actions().at(0)).height());
}

TEST_F(WidgetMenuTest, nothing_is_made_for_a_closed_menu_of_a_thousand_apps) {
    MenuItems many;
    for (int i = 0; i < 1000; ++i)
        many.push_back(app(u"App %1"_s.arg(i)));
    const auto begin = std::chrono::steady_clock::now();
    menu.setItems(many);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(50));
    open(many);
    EXPECT_EQ(popup->actions().size(), 1000);
}

TEST_F(WidgetMenuTest, a_button_of_a_panel_beside_it_works_and_closes_it) {
    QWidget panel(nullptr, Qt::ToolTip);
    panel.setAttribute(Qt::WA_ShowWithoutActivating);
    panel.setGeometry(400, 300, 200, 100);
    QPushButton button(u"Launch"_s, &panel);
    button.setGeometry(50, 50, 100, 30);
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, &button, [&clicks] { ++clicks; });
    panel.show();
    open({app(u"Mail"_s)});
    clickAt(QPoint(405, 305));
    EXPECT_TRUE(menu.isOpen()) << "a click beside the buttons of the panel";
    clickAt(QPoint(500, 365));
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(menu.isOpen());
}

TEST_F(WidgetMenuTest, a_click_anywhere_else_closes_it) {
    QWidget window;
    window.setGeometry(400, 300, 200, 100);
    window.show();
    open({app(u"Mail"_s)});
    clickAt(QPoint(405, 305));
    EXPECT_FALSE(menu.isOpen());
}

}  // namespace wrapio

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
