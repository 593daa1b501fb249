#include "Platform/Linux/LocalSocket.h"

#include "Waiting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace wrapio {

using namespace Qt::StringLiterals;

class LocalSocketTest : public testing::Test {
protected:
    /// Sends back what comes, and counts the callers that went.
    void openEcho() {
        const auto opened = server.open([this](std::unique_ptr<LocalChannel> channel) {
            LocalChannel* const raw = channel.get();
            raw->listen({[raw](const QByteArray& bytes) { raw->send(bytes); }, [this] { ++gone; }});
            channels.push_back(std::move(channel));
        });
        ASSERT_TRUE(opened) << opened.error().description().toStdString();
    }

    QTemporaryDir folder;
    LocalSocketServer server{folder.path()};
    std::vector<std::unique_ptr<LocalChannel>> channels;
    int gone = 0;
};

TEST_F(LocalSocketTest, carries_bytes_both_ways_however_many) {
    openEcho();
    const auto channel = callLocalSocket(folder.path());
    ASSERT_TRUE(channel);
    const QByteArray sent = QByteArray("0123456789abcde\n").repeated(1 << 18);
    QByteArray received;
    channel->send(sent);  // before anybody listens, and more than a socket holds
    channel->listen({[&received](const QByteArray& bytes) { received += bytes; }, [] {}});
    EXPECT_TRUE(waitUntil([&] { return received.size() >= sent.size(); }));
    EXPECT_TRUE(received == sent);
}

TEST_F(LocalSocketTest, tells_that_the_other_side_is_gone) {
    openEcho();
    auto channel = callLocalSocket(folder.path());
    ASSERT_TRUE(waitUntil([this] { return channels.size() == 1; }));
    bool isClosed = false;
    channel->listen({[](const QByteArray&) {}, [&isClosed] { isClosed = true; }});
    channels.clear();
    EXPECT_TRUE(waitUntil([&isClosed] { return isClosed; }));
    channel->send("to nobody");
    auto other = callLocalSocket(folder.path());
    ASSERT_TRUE(waitUntil([this] { return channels.size() == 1; }));
    other.reset();
    EXPECT_TRUE(waitUntil([this] { return gone == 1; }));
}

TEST_F(LocalSocketTest, may_go_away_while_it_tells_something) {
    openEcho();
    auto channel = callLocalSocket(folder.path());
    channel->listen({[&channel](const QByteArray&) { channel.reset(); }, [] {}});
    channel->send("x");
    EXPECT_TRUE(waitUntil([&channel] { return !channel; }));
    EXPECT_TRUE(waitUntil([this] { return gone == 1; }));
}

TEST_F(LocalSocketTest, nobody_but_this_user_can_open_it) {
    openEcho();
    struct stat found {};
    ASSERT_EQ(::stat(QFile::encodeName(folder.filePath(u".socket"_s)).constData(), &found), 0);
    EXPECT_EQ(found.st_mode, static_cast<mode_t>(S_IFSOCK | 0600));
}

TEST_F(LocalSocketTest, there_is_no_answer_where_nobody_listens) {
    EXPECT_FALSE(callLocalSocket(folder.path()));
    EXPECT_FALSE(callLocalSocket(folder.filePath(u"missing"_s)));
    openEcho();
    server.close();
    EXPECT_FALSE(callLocalSocket(folder.path()));
    EXPECT_FALSE(QFile::exists(folder.filePath(u".socket"_s)));
}

TEST_F(LocalSocketTest, takes_over_the_place_that_a_killed_process_has_left) {
    {
        QFile left(folder.filePath(u".socket"_s));
        ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    }
    EXPECT_FALSE(callLocalSocket(folder.path()));
    openEcho();
    EXPECT_TRUE(callLocalSocket(folder.path()));
}

TEST_F(LocalSocketTest, works_in_folders_deeper_than_an_address_has_room_for) {
    const QString deep = folder.filePath(QString(200, u'd') + u'/' + QString(200, u'e'));
    ASSERT_TRUE(QDir().mkpath(deep));
    LocalSocketServer far(deep);
    ASSERT_TRUE(far.open([](std::unique_ptr<LocalChannel>) {}));
    EXPECT_TRUE(callLocalSocket(deep));
}

TEST_F(LocalSocketTest, says_why_it_cannot_listen) {
    LocalSocketServer nowhere(folder.filePath(u"missing"_s));
    const auto opened = nowhere.open([](std::unique_ptr<LocalChannel>) {});
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().code, ENOENT);
}

}  // namespace wrapio
