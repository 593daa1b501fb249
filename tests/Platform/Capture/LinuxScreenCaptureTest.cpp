// Where pictures come from: the display, or the app itself.

#include "Platform/Linux/LinuxScreenCapture.h"

#include "Fakes/PrintErrors.h"
#include "Fakes/PrintQt.h"
#include "Platform/Capture/PaintedWindows.h"
#include "Platform/Capture/StandInSocket.h"
#include "Platform/Linux/LinuxWorkspace.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/System/RunningBundles.h"
#include "Platform/System/TestBundle.h"
#include "Platform/System/Waiting.h"

#include <QTemporaryDir>

namespace wrapio {

using namespace Qt::StringLiterals;

/// A running app with a record; its socket and its window are opened by the tests.
class LinuxScreenCaptureTest : public testing::Test {
protected:
    void SetUp() override {
        const QString bundle = folder.path() + u"/Mail.app"_s;
        makeBundle(bundle);
        PropertyList info;
        info.setText("CFBundleExecutable", u"WrapioRunner"_s);
        info.setUrlType(u"com.example.test"_s, u"wrapio-"_s + canonicalText(record).toLower());
        QFile list(bundle + u"/Contents/Info.plist"_s);
        ASSERT_TRUE(list.open(QIODevice::WriteOnly));
        list.write(info.toXml().value_or(QByteArray()));
        list.close();
        std::optional<std::optional<LaunchError>> started;
        workspace.openApplication(bundle, {}, [&started](std::optional<LaunchError> failure) { started = failure; });
        ASSERT_TRUE(waitUntil([&started] { return started.has_value(); }));
        ASSERT_EQ(*started, std::nullopt);
        process = running.list().front().processIdentifier;
    }

    ScreenCapture::Windows list(LinuxScreenCapture& from) const {
        std::optional<ScreenCapture::Windows> answer;
        from.listOnScreenWindows(process, [&answer](ScreenCapture::Windows found) { answer = std::move(found); });
        EXPECT_TRUE(waitUntil([&answer] { return answer.has_value(); }));
        return answer.value_or(std::vector<ScreenWindow>());
    }
    static ScreenCapture::Picture picture(LinuxScreenCapture& from, const ScreenWindow& window) {
        std::optional<ScreenCapture::Picture> answer;
        from.captureWindow(window, (window.frame.size() * 2).toSize(),
                           [&answer](ScreenCapture::Picture taken) { answer = std::move(taken); });
        EXPECT_FALSE(answer);
        EXPECT_TRUE(waitUntil([&answer] { return answer.has_value(); }));
        return answer.value_or(tl::unexpected(ScreenCaptureError{u"no answer"_s}));
    }

    QTemporaryDir folder;
    RunningBundles running{folder.path()};
    const QUuid record = QUuid::createUuid();
    QtScheduler scheduler;
    LinuxWorkspace workspace{{folder.path(), std::nullopt, std::nullopt, QString(), QString()},
                             scheduler,
                             [](const QString&) { return std::nullopt; }};
    PaintedWindows windows;
    LinuxScreenCapture capture{folder.path(), scheduler};
    qint64 process = 0;
};

TEST_F(LinuxScreenCaptureTest, the_record_of_a_process_is_read_from_its_bundle) {
    EXPECT_EQ(RunnerSnapshot::recordOfProcess(process), record);
    EXPECT_EQ(RunnerSnapshot::recordOfProcess(1), std::nullopt);
    EXPECT_EQ(RunnerSnapshot::recordOfProcess(-1), std::nullopt);
}

TEST_F(LinuxScreenCaptureTest, a_window_on_the_display_is_taken_from_there) {
    StandInSocket app(folder.path(), record);
    app.reply = StandInSocket::picture(QSize(30, 20), Qt::blue);
    windows.open(process, QRect(10, 10, 200, 100), Qt::red);
    ASSERT_TRUE(waitUntil([this] { return list(capture).value().front().frame.size() == QSizeF(200, 100); }))
        << testing::PrintToString(list(capture).value().front().frame.size());
    app.connections = 0;
    const auto listed = list(capture).value();
    EXPECT_EQ(listed.front().frame.size(), QSizeF(200, 100));
    EXPECT_EQ(picture(capture, listed.front())->pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(app.connections, 0);
}

TEST_F(LinuxScreenCaptureTest, an_app_without_a_window_on_the_display_gives_a_picture_of_its_own) {
    StandInSocket app(folder.path(), record);
    app.reply = StandInSocket::picture(QSize(30, 20), Qt::blue);
    windows.open(process + 1, QRect(10, 10, 200, 100), Qt::red);
    const auto listed = list(capture).value();
    ASSERT_FALSE(listed.empty());
    EXPECT_EQ(listed.front().ownerProcessIdentifier, process);
    EXPECT_EQ(listed.front().frame, QRectF(0, 0, 30, 20));
    const auto taken = picture(capture, listed.front());
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->size(), QSize(60, 40));
    EXPECT_EQ(taken->pixelColor(59, 39), QColor(Qt::blue));
    EXPECT_FALSE(picture(capture, listed.front())) << "each picture is handed out once";
}

TEST_F(LinuxScreenCaptureTest, an_app_without_window_and_socket_has_nothing_to_show) {
    EXPECT_TRUE(list(capture).value().empty());
}

TEST_F(LinuxScreenCaptureTest, an_app_that_has_no_picture_on_a_display_has_nothing_to_show) {
    StandInSocket app(folder.path(), record);
    app.reply = "error not ready\n";
    EXPECT_TRUE(list(capture).value().empty());
}

TEST_F(LinuxScreenCaptureTest, without_a_display_pictures_come_from_apps_and_failures_too) {
    const QByteArray display = qgetenv("DISPLAY");
    qunsetenv("DISPLAY");
    LinuxScreenCapture blind(folder.path(), scheduler);
    LinuxScreenCapture nothing(std::nullopt, scheduler);
    EXPECT_TRUE(blind.isPermitted());
    EXPECT_TRUE(blind.canCaptureWindows());
    EXPECT_FALSE(nothing.isPermitted());
    EXPECT_FALSE(nothing.canCaptureWindows());
    EXPECT_TRUE(list(blind).value().empty());
    StandInSocket app(folder.path(), record);
    app.reply = "error not ready\n";
    EXPECT_EQ(list(blind).error().description(), u"not ready"_s);
    app.asked.clear();
    app.reply = StandInSocket::picture(QSize(30, 20), Qt::blue);
    const auto listed = list(blind).value();
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(picture(blind, listed.front())->pixelColor(5, 5), QColor(Qt::blue));
    qputenv("DISPLAY", display);
}

}  // namespace wrapio
