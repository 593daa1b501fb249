// The command that writes what the preview shows.
#include "Fakes/CommandFixture.h"
#include "Fakes/TestImages.h"
#include "Platform/Diagnostics.h"
#include "Platform/Imaging.h"

namespace wrapio {

using namespace Qt::StringLiterals;

class CaptureCommandTest : public CommandFixture {
protected:
    CaptureCommandTest() {
        setDiagnosticsDestination(DiagnosticsDestination::nowhere);
        storeList({record(u"Mail"_s)});
        makeLifecycle();
    }
    ~CaptureCommandTest() override { setDiagnosticsDestination(DiagnosticsDestination::standardOutput); }

    void startMail() {
        const auto process = workspace.start(bundle(u"Mail.app"_s)).processIdentifier;
        screen.addWindow(process, QRectF(0, 0, 1280, 800), Qt::blue);
    }
    [[nodiscard]] QUuid mail() const { return store->configurations().front().id; }
    [[nodiscard]] std::optional<QImage> written(const QString& name) const {
        const auto bytes = realFiles.read(home.filePath(name), 1 << 24);
        return bytes ? decodeImage(*bytes) : std::nullopt;
    }
};

TEST_F(CaptureCommandTest, writes_the_live_picture_of_a_running_app) {
    startMail();
    EXPECT_EQ(run({u"capture"_s, u"Mail"_s, u"a.png"_s}), ExitStatus::done);
    EXPECT_EQ(console.printed, QStringList(u"Wrote a picture of Mail to "_s + home.filePath(u"a.png"_s)));
    ASSERT_TRUE(written(u"a.png"_s));
    EXPECT_EQ(written(u"a.png"_s)->size(), QSize(480, 300));
    EXPECT_EQ(written(u"a.png"_s)->pixelColor(5, 5), QColor(Qt::blue));
}

TEST_F(CaptureCommandTest, writes_the_grey_earlier_picture_of_an_app_that_is_not_running) {
    previews.save(plainImage(40, 30, Qt::red), mail());
    EXPECT_EQ(run({u"capture"_s, u"Mail"_s, u"a.png"_s}), ExitStatus::done);
    const QColor color = written(u"a.png"_s)->pixelColor(5, 5);
    EXPECT_NEAR(color.red(), color.blue(), 1);
    EXPECT_NEAR(color.alphaF(), 0.7, 0.01);
}

TEST_F(CaptureCommandTest, says_what_to_do_when_there_is_no_picture) {
    EXPECT_EQ(run({u"capture"_s, u"Mail"_s, u"a.png"_s}), ExitStatus::failed);
    EXPECT_EQ(console.notes, QStringList(u"wrapio: Mail is not running and there is no earlier picture of it; start it "
                                         "with: wrapio launch "_s +
                                         canonicalText(mail())));
    EXPECT_FALSE(written(u"a.png"_s));
}

TEST_F(CaptureCommandTest, says_that_no_window_can_be_looked_at) {
    startMail();
    screen.permitted = false;
    EXPECT_EQ(run({u"capture"_s, u"Mail"_s, u"a.png"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.value(0).contains(u"DISPLAY"_s));
}

TEST_F(CaptureCommandTest, says_that_an_app_has_no_window) {
    startMail();
    screen.windows.clear();
    EXPECT_EQ(run({u"capture"_s, u"Mail"_s, u"a.png"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.value(0).contains(u"has no window on the screen"_s));
}

TEST_F(CaptureCommandTest, says_why_the_file_was_not_written_and_keeps_the_old_one) {
    startMail();
    writeFile(u"a.png"_s, "old");
    files.fault = [](const QString& operation, const QString& path) {
        return operation == u"replace"_s && path.endsWith(u".png"_s) ? std::optional(ENOSPC) : std::nullopt;
    };
    EXPECT_EQ(run({u"capture"_s, u"Mail"_s, u"a.png"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.value(0).contains(u"No space left on device"_s));
    EXPECT_EQ(*realFiles.read(home.filePath(u"a.png"_s), 10), "old");
}

TEST_F(CaptureCommandTest, takes_an_app_and_a_file_that_ends_in_png) {
    for (const QStringList& wrong : {QStringList{u"capture"_s}, QStringList{u"capture"_s, u"Mail"_s},
                                     QStringList{u"capture"_s, u"Mail"_s, u"a.jpg"_s},
                                     QStringList{u"capture"_s, u"Mail"_s, u"a.png"_s, u"b.png"_s}})
        EXPECT_FALSE(parseCommand(wrong)) << wrong.join(u' ').toStdString();
    EXPECT_EQ(run({u"capture"_s, u"News"_s, u"a.png"_s}), ExitStatus::noSuchApp);
}

}  // namespace wrapio
