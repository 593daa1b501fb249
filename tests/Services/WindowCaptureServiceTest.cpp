#include "Services/WindowCaptureService.h"

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/FakeScreenCapture.h"
#include "Fakes/LifecycleFixture.h"
#include "Fakes/TestImages.h"

#include <QPainter>

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

class WindowCaptureServiceTest : public LifecycleFixture {
protected:
    WindowCaptureServiceTest() {
        storeList({record(u"Mail"_s), record(u"News"_s)});
        makeLifecycle();
        mail = store->configurations()[0];
        service = std::make_unique<WindowCaptureService>(screen, *lifecycle, workspace);
    }

    qint64 startMail() { return workspace.start(bundle(u"Mail.app"_s)).processIdentifier; }
    /// Captures and waits; fails when no answer comes or more than one.
    std::optional<QImage> capture(const AppConfiguration& config) {
        std::vector<std::optional<QImage>> answers;
        service->captureWindow(config,
                               [&answers](std::optional<QImage> image) { answers.push_back(std::move(image)); });
        scheduler.runPending();
        EXPECT_EQ(answers.size(), 1U);
        return answers.empty() ? std::nullopt : answers.front();
    }
    QStringList linesOfFailure() {
        DiagnosticsCapture output;
        EXPECT_EQ(capture(mail), std::nullopt);
        return output.lines();
    }

    FakeScreenCapture screen{scheduler};
    AppConfiguration mail;
    std::unique_ptr<WindowCaptureService> service;
};

TEST_F(WindowCaptureServiceTest, takes_the_running_apps_window_in_twice_its_size_in_points) {
    const auto window = screen.addWindow(startMail(), QRectF(10, 20, 640, 400));
    const auto image = capture(mail);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(1280, 800));
    EXPECT_EQ(image->devicePixelRatio(), 1.0);
    EXPECT_THAT(screen.captured, testing::ElementsAre(FakeScreenCapture::Capture{window.identifier, QSize(1280, 800)}));
    EXPECT_THAT(screen.asked, testing::ElementsAre(window.ownerProcessIdentifier));
}

TEST_F(WindowCaptureServiceTest, cuts_fractions_of_pixels_off) {
    screen.addWindow(startMail(), QRectF(0, 0, 100.7, 50.4));
    EXPECT_EQ(capture(mail)->size(), QSize(201, 100));
}

TEST_F(WindowCaptureServiceTest, takes_the_largest_of_several_windows) {
    const qint64 process = startMail();
    screen.addWindow(process, QRectF(0, 0, 200, 100), Qt::red);
    screen.addWindow(process, QRectF(0, 0, 800, 600), Qt::blue);
    screen.addWindow(process, QRectF(0, 0, 300, 300), Qt::yellow);
    EXPECT_EQ(capture(mail)->pixelColor(5, 5), QColor(Qt::blue));
}

TEST_F(WindowCaptureServiceTest, takes_the_first_listed_of_equally_large_windows) {
    const qint64 process = startMail();
    screen.addWindow(process, QRectF(0, 0, 10, 10), Qt::red);
    screen.addWindow(process, QRectF(0, 0, 400, 100), Qt::blue);
    screen.addWindow(process, QRectF(0, 0, 200, 200), Qt::yellow);
    EXPECT_EQ(capture(mail)->pixelColor(5, 5), QColor(Qt::blue));
}

TEST_F(WindowCaptureServiceTest, leaves_windows_of_other_processes_alone) {
    const qint64 process = startMail();
    screen.addWindow(process + 1, QRectF(0, 0, 800, 600), Qt::red);
    screen.addWindow(process, QRectF(0, 0, 1, 1), Qt::blue);
    EXPECT_EQ(capture(mail)->pixelColor(0, 0), QColor(Qt::blue));
}

TEST_F(WindowCaptureServiceTest, takes_the_first_of_two_processes_of_one_bundle) {
    const qint64 first = startMail();
    const qint64 second = startMail();
    screen.addWindow(second, QRectF(0, 0, 800, 600), Qt::red);
    screen.addWindow(first, QRectF(0, 0, 80, 60), Qt::blue);
    EXPECT_EQ(capture(mail)->pixelColor(5, 5), QColor(Qt::blue));
}

TEST_F(WindowCaptureServiceTest, keeps_the_latest_picture_of_each_app) {
    EXPECT_TRUE(service->captures().isEmpty());
    screen.addWindow(startMail(), QRectF(0, 0, 8, 6), Qt::blue);
    capture(mail);
    screen.colors[1] = Qt::red;
    capture(mail);
    ASSERT_EQ(service->captures().size(), 1);
    EXPECT_EQ(service->captures()[mail.id].pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(WindowCaptureServiceTest, keeps_the_latest_picture_when_a_capture_fails) {
    screen.addWindow(startMail(), QRectF(0, 0, 8, 6), Qt::blue);
    capture(mail);
    screen.captureFailure = ScreenCaptureError{u"gone"_s};
    capture(mail);
    EXPECT_TRUE(service->captures().contains(mail.id));
}

TEST_F(WindowCaptureServiceTest, tells_that_it_has_no_permission_and_looks_at_nothing) {
    screen.addWindow(startMail(), QRectF(0, 0, 8, 6));
    screen.permitted = false;
    EXPECT_EQ(linesOfFailure(), QStringList(u"⚠️ [WindowCapture] Screen Recording permission not granted"_s));
    EXPECT_TRUE(screen.asked.empty());
}

TEST_F(WindowCaptureServiceTest, tells_that_the_app_is_not_running) {
    workspace.start(bundle(u"News.app"_s));
    EXPECT_EQ(linesOfFailure(), QStringList(u"⚠️ [WindowCapture] App not running: Mail"_s));
}

TEST_F(WindowCaptureServiceTest, tells_why_windows_could_not_be_listed) {
    startMail();
    screen.listFailure = ScreenCaptureError{u"the display is gone"_s};
    EXPECT_EQ(linesOfFailure(),
              QStringList(u"⚠️ [WindowCapture] ScreenCaptureKit failed for Mail: the display is gone"_s));
}

TEST_F(WindowCaptureServiceTest, tells_why_a_window_could_not_be_captured) {
    screen.addWindow(startMail(), QRectF(0, 0, 8, 6));
    screen.captureFailure = ScreenCaptureError{u"no memory"_s};
    EXPECT_EQ(linesOfFailure(), QStringList(u"⚠️ [WindowCapture] ScreenCaptureKit failed for Mail: no memory"_s));
    EXPECT_TRUE(service->captures().isEmpty());
}

TEST_F(WindowCaptureServiceTest, tells_that_a_minimised_or_hidden_app_has_no_window) {
    screen.addWindow(startMail() + 7, QRectF(0, 0, 8, 6));
    EXPECT_EQ(linesOfFailure(), QStringList(u"⚠️ [WindowCapture] No suitable window found for: Mail"_s));
    EXPECT_TRUE(screen.captured.empty());
}

TEST_F(WindowCaptureServiceTest, tells_that_the_system_cannot_capture_windows) {
    screen.addWindow(startMail(), QRectF(0, 0, 8, 6));
    screen.capable = false;
    EXPECT_EQ(linesOfFailure(), QStringList(u"⚠️ [WindowCapture] Window previews require macOS 14 or newer."_s));
    EXPECT_TRUE(screen.captured.empty());
}

TEST_F(WindowCaptureServiceTest, answers_nobody_once_it_is_gone) {
    screen.addWindow(startMail(), QRectF(0, 0, 8, 6));
    screen.holdsAnswers = true;
    service->captureWindow(mail, [](const std::optional<QImage>&) { FAIL() << "answered"; });
    service.reset();
    screen.release();
}

TEST_F(WindowCaptureServiceTest, greys_every_colour_and_keeps_the_size) {
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.setPixelColor(3, 4, Qt::white);
    const auto grey = WindowCaptureService::applyGrayscale(image, 1.0);
    ASSERT_TRUE(grey);
    EXPECT_EQ(grey->size(), image.size());
    const QColor red = grey->pixelColor(0, 0);
    EXPECT_EQ(red.red(), red.green());
    EXPECT_EQ(red.green(), red.blue());
    EXPECT_GT(red.red(), 20);
    EXPECT_LT(red.red(), 150);
    EXPECT_EQ(grey->pixelColor(3, 4), QColor(Qt::white));
}

TEST_F(WindowCaptureServiceTest, greys_with_the_opacity_that_is_asked_for) {
    const auto grey = WindowCaptureService::applyGrayscale(plainImage(4, 4, Qt::white), 0.7);
    EXPECT_NEAR(grey->pixelColor(1, 1).alphaF(), 0.7, 0.01);
    EXPECT_EQ(WindowCaptureService::applyGrayscale(plainImage(4, 4), 0.0)->pixelColor(1, 1).alpha(), 0);
}

TEST_F(WindowCaptureServiceTest, keeps_what_is_transparent_when_it_greys) {
    EXPECT_EQ(WindowCaptureService::applyGrayscale(plainImage(4, 4, Qt::transparent), 1.0)->pixelColor(1, 1).alpha(),
              0);
}

TEST_F(WindowCaptureServiceTest, does_not_grey_an_image_that_is_none) {
    DiagnosticsCapture output;
    EXPECT_EQ(WindowCaptureService::applyGrayscale(QImage(), 0.7), std::nullopt);
    EXPECT_TRUE(output.lines().isEmpty());
}

struct ScalingRow {
    QSize image;
    QSizeF box;
    QSize expected;
};

class ScalingTest : public testing::TestWithParam<ScalingRow> {};

TEST_P(ScalingTest, fits_the_box_in_the_images_proportions_and_never_enlarges) {
    const auto& row = GetParam();
    EXPECT_EQ(WindowCaptureService::scaleImage(plainImage(row.image.width(), row.image.height()), row.box).size(),
              row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, ScalingTest,
    testing::Values(ScalingRow{{2560, 1600}, {480, 400}, {480, 300}}, ScalingRow{{400, 1600}, {480, 400}, {100, 400}},
                    ScalingRow{{480, 400}, {480, 400}, {480, 400}}, ScalingRow{{100, 80}, {480, 400}, {100, 80}},
                    ScalingRow{{480, 20}, {480, 400}, {480, 20}}, ScalingRow{{10000, 1}, {480, 400}, {480, 1}}));

TEST(ScalingImagesTest, draws_in_high_quality) {
    QImage stripes(400, 10, QImage::Format_RGB32);
    for (int x = 0; x < stripes.width(); ++x) {
        for (int y = 0; y < stripes.height(); ++y)
            stripes.setPixelColor(x, y, x % 2 == 0 ? Qt::black : Qt::white);
    }
    const QColor mean = WindowCaptureService::scaleImage(stripes, {100, 100}).pixelColor(50, 1);
    EXPECT_NEAR(mean.red(), 127, 10);
}

TEST(ScalingImagesTest, leaves_no_image_as_it_is) {
    EXPECT_TRUE(WindowCaptureService::scaleImage(QImage(), {480, 400}).isNull());
}

TEST_F(WindowCaptureServiceTest, opens_the_settings_of_screen_recording) {
    service->openScreenRecordingSettings();
    EXPECT_EQ(workspace.log, QStringList(u"open x-apple.systempreferences:com.apple.preference.security?"
                                         "Privacy_ScreenCapture"_s));
}

}  // namespace wrapio
