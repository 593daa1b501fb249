// Windows on a real X11 display.

#include "Platform/Linux/X11ScreenCapture.h"

#include "Fakes/PrintQt.h"
#include "Platform/Capture/PaintedWindows.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/System/Waiting.h"

#include <QElapsedTimer>
#include <QProcess>

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

class X11ScreenCaptureTest : public testing::Test {
protected:
    std::vector<ScreenWindow> list() {
        std::optional<ScreenCapture::Windows> answer;
        capture.listOnScreenWindows(process, [&answer](ScreenCapture::Windows found) { answer = std::move(found); });
        EXPECT_TRUE(waitUntil([&answer] { return answer.has_value(); }));
        return answer->value_or(std::vector<ScreenWindow>());
    }
    /// The only window, once it is listed.
    ScreenWindow only() {
        std::vector<ScreenWindow> found;
        EXPECT_TRUE(waitUntil([&] {
            found = list();
            return found.size() == 1;
        }));
        return found.empty() ? ScreenWindow() : found.front();
    }
    QImage picture(const ScreenWindow& window) {
        std::optional<ScreenCapture::Picture> answer;
        capture.captureWindow(window, (window.frame.size() * 2).toSize(),
                              [&answer](ScreenCapture::Picture taken) { answer = std::move(taken); });
        EXPECT_TRUE(waitUntil([&answer] { return answer.has_value(); }));
        EXPECT_TRUE(*answer) << (*answer ? "" : answer->error().description().toStdString());
        return answer->value_or(QImage());
    }

    static constexpr qint64 process = 4711;
    QtScheduler scheduler;
    PaintedWindows windows;
    X11ScreenCapture capture{scheduler};
};

TEST_F(X11ScreenCaptureTest, a_picture_shows_the_windows_inside_a_window) {
    const xcb_window_t window = windows.open(process, QRect(10, 10, 200, 100), Qt::red);
    windows.fill(window, QRect(100, 0, 100, 100), Qt::blue);
    const QImage image = picture(only());
    EXPECT_EQ(image.pixelColor(198, 100), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(202, 100), QColor(Qt::blue));
}

TEST_F(X11ScreenCaptureTest, pictures_follow_what_the_window_shows_also_when_it_is_covered) {
    const xcb_window_t window = windows.open(process, QRect(10, 10, 200, 100), Qt::red);
    const ScreenWindow listed = only();
    windows.open(process + 1, QRect(0, 0, 400, 300), Qt::black);
    ASSERT_TRUE(waitUntil([this] { return list().size() == 2; }));
    EXPECT_EQ(picture(listed).pixelColor(200, 100), QColor(Qt::red));
    windows.repaint(window, Qt::green);
    EXPECT_EQ(picture(listed).pixelColor(200, 100), QColor(Qt::green));
}

TEST_F(X11ScreenCaptureTest, what_lies_beyond_the_screen_is_in_the_picture) {
    windows.open(process, QRect(700, 500, 300, 300), Qt::red);
    const QImage image = picture(only());
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1), QColor(Qt::red));
}

TEST_F(X11ScreenCaptureTest, a_window_with_an_alpha_channel_keeps_it_and_needs_no_time) {
    windows.openTranslucent(process, QRect(10, 10, 200, 100), QColor(255, 0, 0, 128));
    const ScreenWindow listed = only();
    windows.open(process + 1, QRect(0, 0, 400, 300), Qt::black);
    ASSERT_TRUE(waitUntil([this] { return list().size() == 2; }));
    QElapsedTimer time;
    time.start();
    const QColor color = picture(listed).pixelColor(200, 100);
    EXPECT_LT(time.elapsed(), 250);
    EXPECT_NEAR(color.alpha(), 128, 1);
    EXPECT_EQ(color.red(), 255);
}

TEST_F(X11ScreenCaptureTest, invisible_margins_are_no_part_of_a_window) {
    const xcb_window_t window = windows.open(process, QRect(10, 10, 200, 100), Qt::black);
    windows.fill(window, QRect(20, 15, 150, 60), Qt::yellow);
    windows.setMargins(window, {20, 30, 15, 25});
    const ScreenWindow listed = only();
    EXPECT_EQ(listed.frame, QRectF(30, 25, 150, 60));
    const QImage image = picture(listed);
    EXPECT_EQ(image.size(), QSize(300, 120));
    for (const QPoint place : {QPoint(0, 0), QPoint(299, 0), QPoint(0, 119), QPoint(299, 119)})
        EXPECT_EQ(image.pixelColor(place), QColor(Qt::yellow));
}

TEST_F(X11ScreenCaptureTest, margins_that_make_no_sense_are_passed_over) {
    const xcb_window_t window = windows.open(process, QRect(10, 10, 200, 100), Qt::black);
    for (const std::vector<std::uint32_t>& margins :
         {std::vector<std::uint32_t>{1, 2, 3}, std::vector<std::uint32_t>{4000000000U, 0, 0, 0}}) {
        windows.setMargins(window, margins);
        EXPECT_EQ(only().frame, QRectF(10, 10, 200, 100));
    }
}

TEST_F(X11ScreenCaptureTest, a_minimised_window_is_not_on_the_screen) {
    const xcb_window_t window = windows.open(process, QRect(10, 10, 200, 100), Qt::red);
    only();
    windows.minimise(window);
    EXPECT_TRUE(waitUntil([this] { return list().empty(); }));
}

TEST_F(X11ScreenCaptureTest, twice_the_size_is_every_pixel_four_times) {
    const xcb_window_t window = windows.open(process, QRect(10, 10, 40, 20), Qt::red);
    for (int x = 0; x < 40; x += 2)
        windows.fill(window, QRect(x, 0, 1, 20), Qt::blue);
    const QImage image = picture(only());
    for (int x = 0; x < image.width(); ++x)
        ASSERT_EQ(image.pixelColor(x, 7), QColor(x % 4 < 2 ? Qt::blue : Qt::red)) << x;
}

TEST_F(X11ScreenCaptureTest, the_pointer_is_not_in_the_picture) {
    windows.open(process, QRect(10, 10, 200, 100), Qt::red);
    const ScreenWindow listed = only();
    QProcess::execute(u"xdotool"_s, {u"mousemove"_s, u"60"_s, u"60"_s});
    const QImage image = picture(listed);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ASSERT_EQ(image.pixelColor(x, y), QColor(Qt::red));
    }
}

TEST_F(X11ScreenCaptureTest, without_a_display_nothing_is_permitted_and_failures_are_told) {
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":987");
    X11ScreenCapture blind(scheduler);
    EXPECT_FALSE(blind.isPermitted());
    EXPECT_FALSE(blind.canCaptureWindows());
    std::optional<ScreenCapture::Windows> answer;
    blind.listOnScreenWindows(process, [&answer](ScreenCapture::Windows found) { answer = std::move(found); });
    EXPECT_TRUE(waitUntil([&answer] { return answer.has_value(); }));
    qputenv("DISPLAY", display);
    EXPECT_FALSE(*answer);
    EXPECT_TRUE(blind.isPermitted()) << "a display that appears later is found";
}

TEST_F(X11ScreenCaptureTest, a_display_that_cannot_draw_off_the_screen_takes_no_pictures) {
    QProcess server;
    server.setStandardErrorFile(QProcess::nullDevice());
    server.start(u"Xvfb"_s,
                 {u"-displayfd"_s, u"1"_s, u"-extension"_s, u"Composite"_s, u"-noreset"_s, u"-nolisten"_s, u"tcp"_s});
    while (!server.canReadLine() && server.waitForReadyRead(20000)) {
    }
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    const X11ScreenCapture old(scheduler);
    EXPECT_TRUE(old.isPermitted());
    EXPECT_FALSE(old.canCaptureWindows());
    qputenv("DISPLAY", display);
    server.terminate();
    server.waitForFinished();
}

}  // namespace wrapio
