// What every capture of windows does, whether the screen is real or made up.

#include "Fakes/FakeScreenCapture.h"
#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"
#include "Platform/Capture/PaintedWindows.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/Linux/X11ScreenCapture.h"
#include "Platform/System/Waiting.h"

#include <gmock/gmock.h>

#include <optional>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

struct MadeUpScreen {
    /// In front of those that are there.
    void open(qint64 process, QRect frame, QColor color) {
        capture->addWindow(process, frame, color);
        std::rotate(capture->windows.begin(), capture->windows.end() - 1, capture->windows.end());
    }
    void close(const ScreenWindow& window) {
        std::erase(capture->windows, window);
        capture->colors.erase(window.identifier);
    }
    template <typename Condition>
    bool wait(Condition condition) {
        for (int turn = 0; turn < 1000 && !condition(); ++turn)
            scheduler.advance(0.01);
        return condition();
    }

    ManualScheduler scheduler;
    std::unique_ptr<FakeScreenCapture> capture = std::make_unique<FakeScreenCapture>(scheduler);
};

struct RealScreen {
    void open(qint64 process, QRect frame, QColor color) { windows.open(process, frame, color); }
    void close(const ScreenWindow& window) { windows.close(xcb_window_t(window.identifier)); }
    template <typename Condition>
    bool wait(Condition condition) {
        return waitUntil(condition);
    }

    QtScheduler scheduler;
    PaintedWindows windows;
    std::unique_ptr<X11ScreenCapture> capture = std::make_unique<X11ScreenCapture>(scheduler);
};

template <typename Screen>
struct ScreenCaptureContract : testing::Test {
    ScreenCapture::Windows list() {
        std::optional<ScreenCapture::Windows> answer;
        screen.capture->listOnScreenWindows(process, [&answer](ScreenCapture::Windows windows) { answer = windows; });
        EXPECT_TRUE(screen.wait([&answer] { return answer.has_value(); }));
        return answer.value_or(std::vector<ScreenWindow>());
    }
    /// The windows of the tests' own processes, once there are that many.
    std::vector<ScreenWindow> windows(std::size_t count) {
        std::vector<ScreenWindow> found;
        EXPECT_TRUE(screen.wait([&] {
            found = list().value();
            return found.size() == count;
        }));
        found.resize(count);
        return found;
    }
    ScreenCapture::Picture capture(const ScreenWindow& window, QSize pixels) {
        std::optional<ScreenCapture::Picture> answer;
        screen.capture->captureWindow(window, pixels, [&answer](ScreenCapture::Picture picture) { answer = picture; });
        EXPECT_TRUE(screen.wait([&answer] { return answer.has_value(); }));
        return answer.value_or(tl::unexpected(ScreenCaptureError{u"no answer"_s}));
    }

    static constexpr qint64 process = 4711;
    Screen screen;
};

using Screens = testing::Types<MadeUpScreen, RealScreen>;
TYPED_TEST_SUITE(ScreenCaptureContract, Screens);

TYPED_TEST(ScreenCaptureContract, PicturesMayBeTakenAndCan) {
    EXPECT_TRUE(this->screen.capture->isPermitted());
    EXPECT_TRUE(this->screen.capture->canCaptureWindows());
}

TYPED_TEST(ScreenCaptureContract, WindowsAreListedWithTheirOwnersAndFramesTheFrontmostFirst) {
    this->screen.open(4711, QRect(10, 20, 200, 100), Qt::red);
    this->windows(1);
    this->screen.open(4712, QRect(40, 50, 120, 80), Qt::blue);
    const auto windows = this->windows(2);
    EXPECT_EQ(windows[0].ownerProcessIdentifier, 4712);
    EXPECT_EQ(windows[0].frame, QRectF(40, 50, 120, 80));
    EXPECT_EQ(windows[1].ownerProcessIdentifier, 4711);
    EXPECT_EQ(windows[1].frame, QRectF(10, 20, 200, 100));
    EXPECT_NE(windows[0].identifier, windows[1].identifier);
}

TYPED_TEST(ScreenCaptureContract, AScreenWithoutWindowsHasNone) {
    EXPECT_TRUE(this->list().value().empty());
}

TYPED_TEST(ScreenCaptureContract, APictureHasTheSizeThatIsAskedFor) {
    this->screen.open(4711, QRect(10, 20, 200, 100), Qt::red);
    const auto window = this->windows(1).front();
    for (const QSize pixels : {QSize(400, 200), QSize(200, 100), QSize(50, 70), QSize(1, 1)}) {
        const auto picture = this->capture(window, pixels);
        ASSERT_TRUE(picture) << picture.error().description().toStdString();
        EXPECT_EQ(picture->size(), pixels);
        EXPECT_EQ(picture->pixelColor(pixels.width() / 2, pixels.height() / 2), QColor(Qt::red));
    }
}

TYPED_TEST(ScreenCaptureContract, ACoveredWindowComesOutWhole) {
    this->screen.open(4711, QRect(100, 100, 200, 100), Qt::red);
    this->windows(1);
    this->screen.open(4712, QRect(50, 50, 400, 300), Qt::blue);
    const auto windows = this->windows(2);
    const auto picture = this->capture(windows[1], QSize(400, 200));
    ASSERT_TRUE(picture);
    for (const QPoint place : {QPoint(0, 0), QPoint(399, 0), QPoint(200, 100), QPoint(0, 199), QPoint(399, 199)})
        EXPECT_EQ(picture->pixelColor(place), QColor(Qt::red)) << place.x() << "," << place.y();
}

TYPED_TEST(ScreenCaptureContract, AWindowThatIsGoneIsAFailureInWords) {
    this->screen.open(4711, QRect(10, 20, 200, 100), Qt::red);
    const auto window = this->windows(1).front();
    this->screen.close(window);
    const auto picture = this->capture(window, QSize(400, 200));
    ASSERT_FALSE(picture);
    EXPECT_FALSE(picture.error().description().isEmpty());
}

TYPED_TEST(ScreenCaptureContract, ASizeThatIsNoneIsAFailureInWords) {
    this->screen.open(4711, QRect(10, 20, 200, 100), Qt::red);
    const auto window = this->windows(1).front();
    EXPECT_FALSE(this->capture(window, QSize(0, 0)));
    EXPECT_FALSE(this->capture(window, QSize(10, -1)));
}

TYPED_TEST(ScreenCaptureContract, AnswersComeOnceAndAfterTheCall) {
    this->screen.open(4711, QRect(10, 20, 200, 100), Qt::red);
    const auto window = this->windows(1).front();
    int answers = 0;
    this->screen.capture->listOnScreenWindows(4711, [&answers](const auto&) { ++answers; });
    this->screen.capture->captureWindow(window, QSize(4, 4), [&answers](const auto&) { ++answers; });
    EXPECT_EQ(answers, 0);
    EXPECT_TRUE(this->screen.wait([&answers] { return answers == 2; }));
    static_cast<void>(this->list());
    EXPECT_EQ(answers, 2);
}

TYPED_TEST(ScreenCaptureContract, NobodyIsAnsweredOnceItIsGone) {
    this->screen.open(4711, QRect(10, 20, 200, 100), Qt::red);
    const auto window = this->windows(1).front();
    this->screen.capture->listOnScreenWindows(4711, [](const auto&) { FAIL() << "answered"; });
    this->screen.capture->captureWindow(window, QSize(4, 4), [](const auto&) { FAIL() << "answered"; });
    this->screen.capture.reset();
    bool isLater = false;
    const auto later = this->screen.scheduler.after(0.05, [&isLater] { isLater = true; });
    EXPECT_TRUE(this->screen.wait([&isLater] { return isLater; }));
}

}  // namespace
}  // namespace wrapio
