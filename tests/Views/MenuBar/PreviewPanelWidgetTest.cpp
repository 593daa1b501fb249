// The panel as a widget, on a screen that nobody sees.
#include "Views/Widgets/PreviewPanelWidget.h"

#include "Fakes/FakeResources.h"
#include "Fakes/TestImages.h"
#include "Platform/System/Waiting.h"
#include "Views/Widgets/PreviewContentView.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

class PreviewPanelWidgetTest : public testing::Test {
protected:
    PreviewPanelWidgetTest() {
        for (const QString& symbol :
             {u"app.dashed"_s, u"camera.metering.unknown"_s, u"gear"_s, u"play.fill"_s, u"pause.circle.fill"_s})
            resources.images[symbol] = plainImage(24, 24, Qt::black);
        config.appName = u"Mail"_s;
        config.configuredURL = WebAddress::parse(u"https://mail.example.com/inbox"_s);
    }

    void show(const PreviewState& state, QSizeF size = {720, 400}) {
        PreviewContent content;
        content.config = config;
        content.state = state;
        content.onLaunch = [this] { ++launches; };
        content.onOpenSettings = [this] { ++openings; };
        panel.setContent(content);
        panel.setContentSize(size);
        panel.setOrigin(QPointF(40, 30));
        panel.setAlpha(1);
        panel.orderFront();
        window = nullptr;
        for (QWidget* const one : QApplication::topLevelWidgets()) {
            if (one->windowTitle() == u"Preview")
                window = one;
        }
        ASSERT_TRUE(window);
    }
    [[nodiscard]] QAbstractButton* button(const QString& text) const {
        for (QAbstractButton* const one : window->findChildren<QAbstractButton*>()) {
            if (one->text() == text && one->isVisible())
                return one;
        }
        return nullptr;
    }
    [[nodiscard]] QImage picture() const { return window->grab().toImage(); }

    FakeResources resources;
    AppConfiguration config;
    int launches = 0;
    int openings = 0;
    PreviewPanelWidget panel{resources, [] { return true; }};
    QWidget* window = nullptr;
};

TEST_F(PreviewPanelWidgetTest, takes_neither_frame_nor_keyboard) {
    show(PreviewState::noCache());
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(window->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(button(u"Launch"_s)->focusPolicy(), Qt::NoFocus);
}

TEST_F(PreviewPanelWidgetTest, has_the_size_and_the_place_that_it_is_given) {
    show(PreviewState::loading(), {720, 530.4});
    EXPECT_EQ(window->size(), QSize(720, 531));
    EXPECT_EQ(window->pos(), QPoint(40, 30));
    panel.setContentSize({720, 83});
    EXPECT_EQ(window->size(), QSize(720, 83));
    EXPECT_EQ(window->pos(), QPoint(40, 30));
}

TEST_F(PreviewPanelWidgetTest, a_live_picture_fills_the_area_above_the_footer) {
    show(PreviewState::live(plainImage(480, 300, Qt::red)), {720, 530});
    for (const QPoint place : {QPoint(360, 20), QPoint(10, 225), QPoint(710, 440)})
        EXPECT_EQ(picture().pixelColor(place), QColor(Qt::red));
    EXPECT_NE(picture().pixelColor(360, 460), QColor(Qt::red));
    EXPECT_EQ(button(u"Launch"_s), nullptr);
}

TEST_F(PreviewPanelWidgetTest, a_tall_picture_is_fitted_into_the_area) {
    show(PreviewState::live(plainImage(100, 400, Qt::red)), {720, 620});
    EXPECT_EQ(picture().pixelColor(360, 270), QColor(Qt::red));
    EXPECT_NE(picture().pixelColor(100, 270), QColor(Qt::red));
}

TEST_F(PreviewPanelWidgetTest, a_cached_picture_has_a_badge_and_can_be_launched) {
    show(PreviewState::cached(plainImage(480, 300, Qt::gray)), {720, 530});
    ASSERT_TRUE(button(u"Launch"_s));
    EXPECT_NE(picture().copy(560, 10, 150, 40), picture().copy(10, 60, 150, 40)) << "the badge is drawn";
    button(u"Launch"_s)->click();
    EXPECT_EQ(launches, 1);
}

TEST_F(PreviewPanelWidgetTest, without_a_picture_the_app_can_be_launched) {
    show(PreviewState::noCache());
    ASSERT_TRUE(button(u"Launch"_s));
    button(u"Launch"_s)->click();
    EXPECT_EQ(launches, 1);
    EXPECT_EQ(button(u"Open System Settings"_s), nullptr);
}

TEST_F(PreviewPanelWidgetTest, the_apps_icon_is_shown_in_place_of_the_symbol) {
    PreviewContent content;
    content.config = config;
    content.icon = plainImage(128, 128, Qt::magenta);
    show(PreviewState::noCache());
    panel.setContent(content);
    EXPECT_EQ(picture().pixelColor(360, 114), QColor(Qt::magenta));
}

TEST_F(PreviewPanelWidgetTest, without_permission_the_settings_can_be_opened) {
    show(PreviewState::permissionDenied());
    ASSERT_TRUE(button(u"Open System Settings"_s));
    EXPECT_EQ(button(u"Launch"_s), nullptr);
    button(u"Open System Settings"_s)->click();
    EXPECT_EQ(openings, 1);
}

TEST_F(PreviewPanelWidgetTest, the_indicator_turns_only_while_loading) {
    show(PreviewState::loading());
    const QImage before = picture();
    EXPECT_TRUE(waitUntil([&] { return picture() != before; }));
    panel.setContent(PreviewContent{});
    const auto* const spinner = window->findChild<QVariantAnimation*>();
    ASSERT_TRUE(spinner);
    EXPECT_EQ(spinner->state(), QAbstractAnimation::Stopped);
}

TEST_F(PreviewPanelWidgetTest, fades_to_the_opacity_that_is_asked_for) {
    show(PreviewState::noCache());
    panel.setAlpha(0);
    EXPECT_EQ(window->windowOpacity(), 0.0);
    panel.animateAlpha(1.0, 0.05);
    EXPECT_TRUE(waitUntil([this] { return window->windowOpacity() == 1.0; }));
    panel.animateAlpha(0.0, 0.05);
    EXPECT_TRUE(waitUntil([this] { return window->windowOpacity() == 0.0; }));
    EXPECT_TRUE(window->isVisible());
    panel.orderOut();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PreviewPanelWidgetTest, where_nothing_is_blended_the_corners_are_cut) {
    PreviewPanelWidget hard(resources, [] { return false; });
    hard.setContentSize({720, 400});
    hard.orderFront();
    bool isCut = false;
    for (const QWidget* const one : QApplication::topLevelWidgets())
        isCut = isCut || (one->isVisible() && !one->mask().isEmpty() && !one->mask().contains(QPoint(0, 0)) &&
                          one->mask().contains(QPoint(360, 200)));
    EXPECT_TRUE(isCut);
}

TEST_F(PreviewPanelWidgetTest, knows_the_main_screen) {
    ASSERT_TRUE(panel.visibleFrameOfMainScreen());
    EXPECT_FALSE(panel.visibleFrameOfMainScreen()->isEmpty());
}

}  // namespace wrapio
