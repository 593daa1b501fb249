#include "Platform/Linux/RunnerSnapshot.h"

#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"
#include "Platform/Capture/StandInSocket.h"
#include "Platform/System/Waiting.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <unistd.h>

namespace wrapio {

using namespace Qt::StringLiterals;

class RunnerSnapshotTest : public testing::Test {
protected:
    ScreenCapture::Picture take() {
        std::optional<ScreenCapture::Picture> answer;
        snapshot.take(record, [&answer](ScreenCapture::Picture picture) { answer = std::move(picture); });
        EXPECT_FALSE(answer) << "answered before the call had returned";
        EXPECT_TRUE(waitUntil([&] {
            scheduler.advance(0);
            return answer.has_value();
        }));
        return answer.value_or(tl::unexpected(ScreenCaptureError{u"no answer"_s}));
    }
    QString failureOfTaking() {
        const auto picture = take();
        return picture ? u"a picture"_s : picture.error().description();
    }

    QTemporaryDir folder;
    const QUuid record = QUuid::createUuid();
    ManualScheduler scheduler;
    StandInSocket app{folder.path(), record};
    RunnerSnapshot snapshot{folder.path(), scheduler, ::geteuid()};
};

TEST_F(RunnerSnapshotTest, asks_with_one_line_and_answers_the_picture) {
    app.reply = StandInSocket::picture(QSize(1280, 800), Qt::red);
    const auto picture = take();
    ASSERT_TRUE(picture) << picture.error().description().toStdString();
    EXPECT_EQ(picture->size(), QSize(1280, 800));
    EXPECT_EQ(picture->pixelColor(1279, 799), QColor(Qt::red));
    EXPECT_EQ(app.asked, "snapshot\n");
    EXPECT_EQ(scheduler.timers(), 0U);
}

TEST_F(RunnerSnapshotTest, knows_which_apps_offer_pictures) {
    EXPECT_TRUE(snapshot.isOffered(record));
    EXPECT_FALSE(snapshot.isOffered(QUuid::createUuid()));
}

TEST_F(RunnerSnapshotTest, tells_the_apps_own_error) {
    app.reply = "error no page is loaded\n";
    EXPECT_EQ(failureOfTaking(), u"no page is loaded"_s);
}

TEST_F(RunnerSnapshotTest, tells_that_the_app_ended_half_way) {
    app.reply = StandInSocket::picture(QSize(10, 10), Qt::red).chopped(1);
    EXPECT_EQ(failureOfTaking(), u"the app ended before it had sent its picture"_s);
    app.asked.clear();
    app.reply = "";
    EXPECT_EQ(failureOfTaking(), u"the app ended before it had sent its picture"_s);
}

TEST_F(RunnerSnapshotTest, does_not_wait_for_the_app_to_close) {
    app.closesAfterwards = false;
    app.reply = StandInSocket::picture(QSize(10, 10), Qt::red);
    EXPECT_TRUE(take());
}

TEST_F(RunnerSnapshotTest, gives_up_on_an_app_that_does_not_answer) {
    std::optional<ScreenCapture::Picture> answer;
    snapshot.take(record, [&answer](ScreenCapture::Picture picture) { answer = std::move(picture); });
    ASSERT_TRUE(waitUntil([this] { return app.asked == "snapshot\n"; }));
    scheduler.advance(1.9);
    EXPECT_FALSE(answer);
    scheduler.advance(0.2);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->error().description(), u"the app did not answer in time"_s);
}

TEST_F(RunnerSnapshotTest, refuses_an_app_of_another_user_and_asks_it_nothing) {
    RunnerSnapshot strict(folder.path(), scheduler, ::geteuid() + 1);
    std::optional<ScreenCapture::Picture> answer;
    strict.take(record, [&answer](ScreenCapture::Picture picture) { answer = std::move(picture); });
    ASSERT_TRUE(waitUntil([&] {
        scheduler.advance(0);
        return answer.has_value();
    }));
    EXPECT_EQ(answer->error().description(), u"the app belongs to somebody else"_s);
    ASSERT_TRUE(waitUntil([this] { return app.connections == 1; }));
    EXPECT_EQ(app.asked, "");
}

TEST_F(RunnerSnapshotTest, tells_that_nobody_listens) {
    std::optional<ScreenCapture::Picture> answer;
    snapshot.take(QUuid::createUuid(), [&answer](ScreenCapture::Picture picture) { answer = std::move(picture); });
    ASSERT_TRUE(waitUntil([&] {
        scheduler.advance(0);
        return answer.has_value();
    }));
    EXPECT_TRUE(answer->error().description().startsWith(u"the app cannot be asked: "_s));
}

TEST_F(RunnerSnapshotTest, asks_several_apps_at_a_time) {
    const QUuid other = QUuid::createUuid();
    StandInSocket second(folder.path(), other);
    app.reply = StandInSocket::picture(QSize(10, 10), Qt::red);
    second.reply = StandInSocket::picture(QSize(20, 10), Qt::blue);
    std::vector<int> widths;
    for (const QUuid& id : {record, other})
        snapshot.take(id, [&widths](const auto& picture) { widths.push_back(picture ? picture->width() : 0); });
    ASSERT_TRUE(waitUntil([&] {
        scheduler.advance(0);
        return widths.size() == 2;
    }));
    EXPECT_EQ(widths[0] + widths[1], 30);
}

TEST_F(RunnerSnapshotTest, nobody_is_answered_once_it_is_gone) {
    {
        RunnerSnapshot gone(folder.path(), scheduler, ::geteuid());
        gone.take(record, [](const auto&) { FAIL() << "answered"; });
    }
    app.reply = StandInSocket::picture(QSize(10, 10), Qt::red);
    EXPECT_TRUE(take());
    scheduler.advance(5.0);
}

TEST_F(RunnerSnapshotTest, nobody_can_be_asked_without_a_runtime_folder) {
    const RunnerSnapshot none(std::nullopt, scheduler, ::geteuid());
    EXPECT_FALSE(none.isPossible());
    EXPECT_FALSE(none.isOffered(record));
}

TEST_F(RunnerSnapshotTest, the_runtime_folder_is_that_of_the_session) {
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
    EXPECT_EQ(RunnerSnapshot::runtimeFolderOfSession(), folder.path());
    qputenv("XDG_RUNTIME_DIR", "relative");
    EXPECT_EQ(RunnerSnapshot::runtimeFolderOfSession(), std::nullopt);
    qunsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(RunnerSnapshot::runtimeFolderOfSession(), std::nullopt);
}

}  // namespace wrapio
