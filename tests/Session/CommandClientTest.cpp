#include "Session/CommandClient.h"

#include "Fakes/FakeConsole.h"
#include "Fakes/FakeLocalServer.h"
#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"

#include <gmock/gmock.h>

#include <map>

namespace wrapio {

using namespace Qt::StringLiterals;

class CommandClientTest : public testing::Test {
protected:
    CommandClientTest() {
        EXPECT_TRUE(server.open([this](std::unique_ptr<LocalChannel> channel) { manager = std::move(channel); }));
        client.emplace(server.call(), console);
        client->run(CommandMessage{}, [this](ExitStatus ended) { status = ended; });
        manager->listen({[this](const QByteArray& bytes) { received += bytes; }, [] {}});
    }
    void say(const SessionMessage& message) {
        manager->send(encode(message));
        scheduler.advance(0);
    }

    ManualScheduler scheduler;
    FakeLocalServer server{scheduler};
    std::unique_ptr<LocalChannel> manager;
    FakeConsole console;
    std::optional<ExitStatus> status;
    QByteArray received;
    std::optional<CommandClient> client;
};

TEST_F(CommandClientTest, what_the_command_says_is_shown_in_order) {
    say(TakenMessage{});
    say(OutputMessage{OutputMessage::Kind::print, u"a"_s});
    say(OutputMessage{OutputMessage::Kind::note, u"b"_s});
    say(OutputMessage{OutputMessage::Kind::progress, u"c"_s});
    say(FinishedMessage{3});
    EXPECT_EQ(console.printed, QStringList(u"a"_s));
    EXPECT_EQ(console.notes, QStringList(u"b"_s));
    EXPECT_EQ(console.progressed, QStringList(u"c"_s));
    EXPECT_EQ(status, ExitStatus::noSuchApp);
}

TEST_F(CommandClientTest, a_question_is_asked_here_and_its_answer_sent) {
    console.answer = true;
    say(QuestionMessage{u"Sure?"_s});
    EXPECT_EQ(console.questions, QStringList(u"Sure?"_s));
    EXPECT_TRUE(received.endsWith(encode(AnswerMessage{true})));
}

TEST_F(CommandClientTest, a_command_that_was_not_taken_may_be_tried_again) {
    say(DeclinedMessage{});
    EXPECT_EQ(status, ExitStatus::needsManager);
    EXPECT_TRUE(console.notes.isEmpty());
}

TEST_F(CommandClientTest, a_manager_that_ends_before_it_took_the_command_has_done_nothing) {
    manager.reset();
    scheduler.advance(0);
    EXPECT_EQ(status, ExitStatus::needsManager);
    EXPECT_TRUE(console.notes.isEmpty());
}

TEST_F(CommandClientTest, a_manager_that_ends_half_way_leaves_a_failure_that_says_so) {
    say(TakenMessage{});
    manager.reset();
    scheduler.advance(0);
    EXPECT_EQ(status, ExitStatus::failed);
    ASSERT_EQ(console.notes.size(), 1);
    EXPECT_TRUE(console.notes[0].contains(u"ended before it had done this"_s));
}

TEST_F(CommandClientTest, a_status_that_is_none_of_ours_is_a_failure) {
    say(FinishedMessage{-1});
    EXPECT_EQ(status, ExitStatus::failed);
}

TEST_F(CommandClientTest, noise_is_a_failure) {
    manager->send("HTTP/1.1 400 Bad Request\r\n\r\n");
    scheduler.advance(0);
    EXPECT_EQ(status, ExitStatus::failed);
    EXPECT_TRUE(console.notes.value(0).contains(u"cannot be understood"_s));
}

namespace {

EnvironmentChanges environmentOf(const std::map<std::string, QByteArray>& variables) {
    return launchEnvironment([&variables](const char* name) -> std::optional<QByteArray> {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    });
}

}  // namespace

TEST(LaunchEnvironment, takes_the_place_of_the_managers_display_as_a_whole) {
    const auto changes = environmentOf({{"DISPLAY", ":3"}, {"HOME", "/home/a"}});
    EXPECT_THAT(changes, testing::Contains(std::pair(QByteArray("DISPLAY"), std::optional<QByteArray>(":3"))));
    EXPECT_THAT(changes, testing::Contains(std::pair(QByteArray("WAYLAND_DISPLAY"), std::optional<QByteArray>())));
    EXPECT_THAT(changes, testing::Not(testing::Contains(testing::Key(QByteArray("HOME")))));
}

TEST(LaunchEnvironment, leaves_the_managers_display_alone_where_there_is_none) {
    EXPECT_EQ(environmentOf({{"XDG_RUNTIME_DIR", "/run/user/1"}}), EnvironmentChanges());
    EXPECT_EQ(environmentOf({{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/a"}}),
              (EnvironmentChanges{{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/a"}}));
}

}  // namespace wrapio
