#include "Platform/Imaging.h"
#include "PreviewFixture.h"

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;
using Case = PreviewState::Case;
using testing::ElementsAre;

class PreviewWindowControllerTest : public PreviewFixture {
protected:
    void show(const QString& name) { preview->showPreview(app(name)); }
    void waitForPicture() { scheduler.advance(0.2); }
};

TEST_F(PreviewWindowControllerTest, starts_hidden_with_an_empty_panel) {
    EXPECT_EQ(preview->currentConfig().value(), std::nullopt);
    EXPECT_EQ(state(), Case::noCache);
    EXPECT_FALSE(preview->isVisible());
    EXPECT_EQ(panel.contentSize, QSizeF(720, 320));
    EXPECT_FALSE(panel.isShown);
    EXPECT_TRUE(panel.contents.empty());
}

TEST_F(PreviewWindowControllerTest, has_the_stated_measures) {
    EXPECT_EQ(PreviewWindowController::previewWidth, 720);
    EXPECT_EQ(PreviewWindowController::maxPreviewHeight, 540);
    EXPECT_EQ(PreviewWindowController::fadeAnimationDuration, 0.15);
    EXPECT_EQ(PreviewWindowController::liveUpdateInterval, 500000000U);
}

TEST_F(PreviewWindowControllerTest, a_running_app_is_loading_first_and_live_from_its_first_picture_on) {
    start(u"Mail"_s);
    show(u"Mail"_s);
    EXPECT_EQ(state(), Case::loading);
    EXPECT_EQ(preview->currentConfig().value(), app(u"Mail"_s));
    waitForPicture();
    EXPECT_EQ(state(), Case::live);
    EXPECT_THAT(panel.contents, ElementsAre(Case::loading, Case::live));
    EXPECT_EQ(panel.content.config, app(u"Mail"_s));
}

TEST_F(PreviewWindowControllerTest, a_live_picture_is_scaled_to_fit_and_never_enlarged) {
    start(u"Mail"_s, QSizeF(1280, 800));
    show(u"Mail"_s);
    waitForPicture();
    EXPECT_EQ(panel.content.state.image.size(), QSize(480, 300));
    start(u"News"_s, QSizeF(100, 80));
    show(u"News"_s);
    waitForPicture();
    EXPECT_EQ(panel.content.state.image.size(), QSize(200, 160));
}

TEST_F(PreviewWindowControllerTest, every_live_picture_is_saved_over_the_one_before) {
    start(u"Mail"_s, QSizeF(1280, 800), Qt::blue);
    show(u"Mail"_s);
    waitForPicture();
    auto saved = previews.load(app(u"Mail"_s).id);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->size(), QSize(480, 300));
    screen.colors[1] = Qt::white;
    scheduler.advance(0.5);
    saved = previews.load(app(u"Mail"_s).id);
    EXPECT_GT(saved->pixelColor(9, 9).red(), 250);
}

TEST_F(PreviewWindowControllerTest, pictures_follow_each_other_half_a_second_apart) {
    start(u"Mail"_s);
    show(u"Mail"_s);
    scheduler.runPending();
    EXPECT_EQ(screen.captured.size(), 1U);
    scheduler.advance(0.49);
    EXPECT_EQ(screen.captured.size(), 1U);
    scheduler.advance(0.02);
    EXPECT_EQ(screen.captured.size(), 2U);
    scheduler.advance(5.0);
    EXPECT_EQ(screen.captured.size(), 12U);
}

TEST_F(PreviewWindowControllerTest, no_picture_is_asked_for_while_one_is_under_way) {
    start(u"Mail"_s);
    screen.holdsAnswers = true;
    show(u"Mail"_s);
    scheduler.advance(5.0);
    EXPECT_EQ(screen.asked.size(), 1U);
    screen.release();
    scheduler.advance(5.0);
    EXPECT_EQ(screen.captured.size(), 1U);
    screen.release();
    EXPECT_EQ(state(), Case::live);
    scheduler.advance(0.49);
    EXPECT_EQ(screen.asked.size(), 1U);
    scheduler.advance(0.02);
    EXPECT_EQ(screen.asked.size(), 2U);
}

TEST_F(PreviewWindowControllerTest, a_failed_picture_keeps_the_state_and_is_tried_again) {
    start(u"Mail"_s);
    screen.captureFailure = ScreenCaptureError{u"busy"_s};
    show(u"Mail"_s);
    scheduler.advance(1.2);
    EXPECT_EQ(screen.captured.size(), 3U);
    EXPECT_EQ(state(), Case::loading);
    EXPECT_FALSE(files.exists(previewFile(u"Mail"_s)));
    screen.captureFailure.reset();
    scheduler.advance(0.5);
    EXPECT_EQ(state(), Case::live);
    screen.captureFailure = ScreenCaptureError{u"busy"_s};
    scheduler.advance(2.0);
    EXPECT_EQ(state(), Case::live);
}

TEST_F(PreviewWindowControllerTest, an_app_that_quits_ends_the_loop_and_its_last_picture_stays) {
    start(u"Mail"_s);
    show(u"Mail"_s);
    waitForPicture();
    quitAll();
    const auto captures = screen.asked.size();
    scheduler.advance(3.0);
    EXPECT_EQ(screen.asked.size(), captures);
    EXPECT_EQ(state(), Case::live);
    EXPECT_TRUE(panel.isShown);
    EXPECT_EQ(scheduler.timers(), 1U) << "only the poll for running apps is left";
}

TEST_F(PreviewWindowControllerTest, a_running_app_without_permission_says_so_even_with_a_cached_picture) {
    start(u"Mail"_s);
    previews.save(plainImage(40, 30), app(u"Mail"_s).id);
    screen.permitted = false;
    show(u"Mail"_s);
    EXPECT_EQ(state(), Case::permissionDenied);
    EXPECT_THAT(panel.contents, ElementsAre(Case::permissionDenied));
    EXPECT_TRUE(panel.isShown);
    scheduler.advance(2.0);
    EXPECT_TRUE(screen.asked.empty());
}

TEST_F(PreviewWindowControllerTest, an_app_that_is_not_running_shows_its_cached_picture_in_grey) {
    previews.save(plainImage(40, 30, Qt::red), app(u"Mail"_s).id);
    show(u"Mail"_s);
    EXPECT_EQ(state(), Case::cached);
    const QColor color = panel.content.state.image.pixelColor(5, 5);
    EXPECT_EQ(color.red(), color.blue());
    EXPECT_NEAR(color.alphaF(), 0.7, 0.01);
    scheduler.advance(2.0);
    EXPECT_TRUE(screen.asked.empty());
}

TEST_F(PreviewWindowControllerTest, an_app_without_a_picture_says_so) {
    show(u"Mail"_s);
    EXPECT_EQ(state(), Case::noCache);
    EXPECT_TRUE(panel.isShown);
    EXPECT_EQ(panel.content.icon, std::nullopt);
}

TEST_F(PreviewWindowControllerTest, an_app_without_a_picture_shows_its_icon_when_its_bundle_has_one) {
    QDir().mkpath(bundle(u"Mail.app/Contents/Resources"_s));
    ASSERT_TRUE(realFiles.write(bundle(u"Mail.app/Contents/Resources/AppIcon.icns"_s),
                                icnsOf({{"ic07", fileOf(plainImage(128, 128, Qt::blue), "png")}})));
    show(u"Mail"_s);
    ASSERT_TRUE(panel.content.icon);
    EXPECT_EQ(panel.content.icon->pixelColor(5, 5), QColor(Qt::blue));
}

TEST_F(PreviewWindowControllerTest, an_icon_that_is_damaged_is_none) {
    QDir().mkpath(bundle(u"Mail.app/Contents/Resources"_s));
    ASSERT_TRUE(realFiles.write(bundle(u"Mail.app/Contents/Resources/AppIcon.icns"_s), "icns and nothing else"));
    show(u"Mail"_s);
    EXPECT_EQ(panel.content.icon, std::nullopt);
}

TEST_F(PreviewWindowControllerTest, fades_in_at_the_centre_of_the_main_screen) {
    show(u"Mail"_s);
    EXPECT_TRUE(preview->isVisible());
    // The height of 400 was set before the panel was placed.
    EXPECT_EQ(panel.log, QStringList({u"size 720x320"_s, u"size 720x400"_s, u"origin 600,340"_s, u"alpha 0"_s,
                                      u"front"_s, u"animate 1 in 0.15"_s}));
}

TEST_F(PreviewWindowControllerTest, stays_where_it_is_when_its_size_changes) {
    start(u"Mail"_s);
    show(u"Mail"_s);
    const QPointF origin = panel.origin;
    waitForPicture();
    EXPECT_EQ(panel.contentSize, QSizeF(720, 530));
    EXPECT_EQ(panel.origin, origin);
}

TEST_F(PreviewWindowControllerTest, is_shown_where_it_is_when_there_is_no_screen) {
    panel.screen.reset();
    show(u"Mail"_s);
    EXPECT_EQ(panel.origin, QPointF(-1, -1));
    EXPECT_TRUE(panel.isShown);
}

TEST_F(PreviewWindowControllerTest, fades_out_and_is_gone_only_then) {
    start(u"Mail"_s);
    show(u"Mail"_s);
    waitForPicture();
    panel.log.clear();
    preview->hidePreview();
    scheduler.advance(0.14);
    EXPECT_TRUE(preview->isVisible());
    EXPECT_TRUE(preview->currentConfig().value());
    EXPECT_EQ(panel.log, QStringList(u"animate 0 in 0.15"_s));
    scheduler.advance(0.02);
    EXPECT_FALSE(preview->isVisible());
    EXPECT_FALSE(panel.isShown);
    EXPECT_EQ(preview->currentConfig().value(), std::nullopt);
    EXPECT_EQ(state(), Case::live) << "the state is kept";
}

TEST_F(PreviewWindowControllerTest, hiding_ends_the_updates) {
    start(u"Mail"_s);
    show(u"Mail"_s);
    waitForPicture();
    preview->hidePreview();
    scheduler.advance(5.0);
    EXPECT_EQ(screen.captured.size(), 1U);
    EXPECT_EQ(scheduler.timers(), 1U);
}

TEST_F(PreviewWindowControllerTest, hiding_while_the_first_picture_is_under_way_saves_nothing_afterwards) {
    start(u"Mail"_s);
    screen.holdsAnswers = true;
    show(u"Mail"_s);
    screen.release();
    ASSERT_EQ(screen.held(), 1U);
    preview->hidePreview();
    screen.release();
    scheduler.advance(1.0);
    EXPECT_FALSE(files.exists(previewFile(u"Mail"_s)));
    EXPECT_EQ(state(), Case::loading);
    EXPECT_THAT(panel.contents, ElementsAre(Case::loading));
}

TEST_F(PreviewWindowControllerTest, a_preview_shown_while_it_fades_out_is_cut_off) {
    show(u"Mail"_s);
    scheduler.advance(1.0);
    preview->hidePreview();
    scheduler.advance(0.1);
    show(u"News"_s);
    EXPECT_TRUE(preview->isVisible());
    scheduler.advance(0.1);
    EXPECT_FALSE(preview->isVisible());
    EXPECT_FALSE(panel.isShown);
}

TEST_F(PreviewWindowControllerTest, every_hiding_runs_to_its_end) {
    show(u"Mail"_s);
    preview->hidePreview();
    scheduler.advance(0.1);
    preview->hidePreview();
    scheduler.advance(0.1);
    EXPECT_FALSE(preview->isVisible());
    show(u"News"_s);
    scheduler.advance(0.1);
    EXPECT_FALSE(preview->isVisible()) << "the second hiding ends 0.25 s after the first began";
}

TEST_F(PreviewWindowControllerTest, another_apps_preview_ends_the_first_ones_loop) {
    start(u"Mail"_s);
    start(u"News"_s);
    show(u"Mail"_s);
    waitForPicture();
    show(u"News"_s);
    waitForPicture();
    screen.captured.clear();
    scheduler.advance(2.0);
    EXPECT_THAT(screen.captured, testing::Each(testing::Field(&FakeScreenCapture::Capture::identifier, 2U)));
    EXPECT_EQ(screen.captured.size(), 4U);
}

TEST_F(PreviewWindowControllerTest, a_late_picture_of_one_app_never_shows_in_anothers_preview) {
    start(u"Mail"_s);
    screen.holdsAnswers = true;
    show(u"Mail"_s);
    screen.release();
    show(u"News"_s);
    screen.release();
    scheduler.advance(2.0);
    EXPECT_EQ(state(), Case::noCache);
    EXPECT_EQ(panel.content.config, app(u"News"_s));
    EXPECT_FALSE(files.exists(previewFile(u"Mail"_s)));
}

TEST_F(PreviewWindowControllerTest, the_end_of_the_controller_ends_the_updates) {
    start(u"Mail"_s);
    screen.holdsAnswers = true;
    show(u"Mail"_s);
    preview.reset();
    screen.release();
    screen.release();
    scheduler.advance(2.0);
    EXPECT_EQ(scheduler.timers(), 1U);
    EXPECT_FALSE(files.exists(previewFile(u"Mail"_s)));
}

TEST_F(PreviewWindowControllerTest, launching_hides_the_preview_and_starts_the_app) {
    makeBundle(u"Mail.app"_s);
    show(u"Mail"_s);
    panel.content.onLaunch();
    EXPECT_EQ(workspace.log, QStringList(u"open-application "_s + bundle(u"Mail.app"_s)));
    scheduler.advance(0.2);
    EXPECT_FALSE(preview->isVisible());
    workspace.log.clear();
    panel.content.onLaunch();
    EXPECT_TRUE(workspace.log.isEmpty()) << "nothing is previewed any more";
}

TEST_F(PreviewWindowControllerTest, a_launch_that_fails_is_passed_over) {
    show(u"Mail"_s);
    DiagnosticsCapture output;
    panel.content.onLaunch();
    scheduler.advance(0.2);
    EXPECT_EQ(output.lines(), QStringList());
    EXPECT_TRUE(workspace.log.isEmpty());
    EXPECT_FALSE(preview->isVisible());
}

TEST_F(PreviewWindowControllerTest, the_settings_are_those_of_screen_recording) {
    show(u"Mail"_s);
    panel.content.onOpenSettings();
    EXPECT_THAT(workspace.log.join(u' ').toStdString(), testing::EndsWith("?Privacy_ScreenCapture"));
}

TEST_F(PreviewWindowControllerTest, changes_are_announced) {
    std::vector<bool> visible;
    std::vector<Case> states;
    const auto one = preview->isVisibleProperty().onWillChange([&visible](bool next) { visible.push_back(next); });
    const auto other =
        preview->previewState().onWillChange([&states](const PreviewState& next) { states.push_back(next.kind); });
    start(u"Mail"_s);
    show(u"Mail"_s);
    waitForPicture();
    preview->hidePreview();
    scheduler.advance(0.2);
    EXPECT_THAT(visible, ElementsAre(true, false));
    EXPECT_THAT(states, ElementsAre(Case::loading, Case::live));
}

TEST_F(PreviewWindowControllerTest, without_a_panel_states_change_and_nothing_else_happens) {
    PreviewWindowController none({*lifecycle, *capture, previews, files, scheduler}, nullptr);
    none.showPreview(app(u"Mail"_s));
    EXPECT_EQ(none.previewState().value().kind, Case::noCache);
    EXPECT_FALSE(none.isVisible());
    none.hidePreview();
    scheduler.advance(0.2);
    EXPECT_EQ(none.currentConfig().value(), std::nullopt);
}

struct SizeRow {
    QSizeF window;
    QSizeF panel;
};

class PanelSizeTest : public PreviewFixture, public testing::WithParamInterface<SizeRow> {};

TEST_P(PanelSizeTest, follows_the_pictures_proportions_up_to_the_largest_height) {
    start(u"Mail"_s, GetParam().window);
    preview->showPreview(app(u"Mail"_s));
    EXPECT_EQ(panel.contentSize, QSizeF(720, 400));
    scheduler.advance(0.2);
    EXPECT_NEAR(panel.contentSize.height(), GetParam().panel.height(), 1e-9);
    EXPECT_EQ(panel.contentSize.width(), GetParam().panel.width());
}

INSTANTIATE_TEST_SUITE_P(Windows, PanelSizeTest,
                         testing::Values(SizeRow{{1280, 800}, {720, 530}}, SizeRow{{240, 200}, {720, 620}},
                                         SizeRow{{2400, 10}, {720, 83}}, SizeRow{{200, 1000}, {720, 620}},
                                         SizeRow{{400, 300}, {720, 620}}));

}  // namespace wrapio
