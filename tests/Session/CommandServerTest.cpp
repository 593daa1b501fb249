#include "Session/CommandServer.h"

#include "SessionFixture.h"

namespace wrapio {

using namespace Qt::StringLiterals;

class CommandServerTest : public SessionFixture {
protected:
    CommandServerTest() { EXPECT_TRUE(commands.open()); }

    CommandRunner runner{commandServices()};
    QStringList asked;
    CommandServer commands{server,
                           runner,
                           keeping,
                           {[this](const QByteArray& token) { asked << u"activate "_s + QString::fromUtf8(token); },
                            [this](const QString& url, const QByteArray&) { asked << u"open "_s + url; }}};
};

TEST_F(CommandServerTest, a_command_does_what_it_would_do_in_its_own_process) {
    const auto process = call({u"create"_s, u"a.example"_s, u"--name"_s, u"Mail"_s, u"--no-icon"_s});
    EXPECT_EQ(finish(process), ExitStatus::done);
    EXPECT_EQ(process->console.printed, QStringList(u"Created Mail ("_s + bundle(u"Mail.app"_s) + u')'));
    EXPECT_EQ(namesOf(stored()), QStringList(u"Mail"_s));
}

TEST_F(CommandServerTest, a_command_that_fails_says_so_where_it_was_given) {
    const auto process = call({u"show"_s, u"Nothing"_s});
    EXPECT_EQ(finish(process), ExitStatus::noSuchApp);
    ASSERT_EQ(process->console.notes.size(), 1);
    EXPECT_TRUE(process->console.notes[0].startsWith(u"wrapio: there is no app"_s));
    EXPECT_TRUE(process->console.printed.isEmpty());
}

TEST_F(CommandServerTest, files_are_named_from_the_folder_of_the_caller) {
    QDir().mkpath(home.filePath(u"elsewhere"_s));
    CommandMessage message;
    message.folder = home.filePath(u"elsewhere"_s);
    writeFile(u"elsewhere/a.css"_s, "p {}");
    EXPECT_EQ(finish(call({u"create"_s, u"a.example"_s, u"--no-icon"_s, u"--css"_s, u"a.css"_s}, message)),
              ExitStatus::done);
    EXPECT_EQ(stored()[0].customCSS, u"p {}"_s);
}

TEST_F(CommandServerTest, progress_reaches_the_caller) {
    const auto process = call({u"create"_s, u"a.example"_s});
    EXPECT_EQ(finish(process), ExitStatus::done);
    EXPECT_EQ(process->console.progressed.size(), 1);
}

TEST_F(CommandServerTest, a_question_is_answered_by_the_caller) {
    QDir().mkpath(bundle(u"Stray.app/Contents/Linux"_s));
    ASSERT_TRUE(realFiles.write(bundle(u"Stray.app/Contents/Linux/WrapioRunner"_s), "x"));
    const auto no = call({u"doctor"_s, u"--clean"_s});
    finish(no);
    EXPECT_EQ(no->console.questions.size(), 1);
    EXPECT_TRUE(files.exists(bundle(u"Stray.app"_s)));
    const auto yes = call({u"doctor"_s, u"--clean"_s});
    yes->console.answer = true;
    finish(yes);
    EXPECT_FALSE(files.exists(bundle(u"Stray.app"_s)));
}

TEST_F(CommandServerTest, a_caller_that_goes_away_does_not_stop_its_command_half_way) {
    auto process = call({u"create"_s, u"a.example"_s, u"--name"_s, u"Mail"_s});
    scheduler.advance(0);
    ASSERT_FALSE(process->status);
    process.reset();
    scheduler.advance(0);
    http.deliverAll();
    scheduler.advance(1);
    EXPECT_EQ(namesOf(stored()), QStringList(u"Mail"_s));
    EXPECT_TRUE(files.exists(bundle(u"Mail.app"_s)));
}

TEST_F(CommandServerTest, a_caller_that_goes_away_before_it_answers_has_said_no) {
    QDir().mkpath(bundle(u"Stray.app/Contents/Linux"_s));
    ASSERT_TRUE(realFiles.write(bundle(u"Stray.app/Contents/Linux/WrapioRunner"_s), "x"));
    auto channel = server.call();
    bool isAsked = false;
    channel->listen({[&isAsked](const QByteArray& bytes) { isAsked |= bytes.contains("question"); }, [] {}});
    CommandMessage message;
    message.arguments = QStringList{u"doctor"_s, u"--clean"_s};
    channel->send(encode(message));
    scheduler.advance(0);
    ASSERT_TRUE(isAsked);
    channel.reset();
    scheduler.advance(0);
    EXPECT_TRUE(files.exists(bundle(u"Stray.app"_s)));
    EXPECT_EQ(finish(call({u"list"_s})), ExitStatus::done);
}

TEST_F(CommandServerTest, only_the_caller_who_wants_to_know_is_told_what_is_done) {
    const auto quiet = call({u"create"_s, u"a.example"_s, u"--name"_s, u"Quiet"_s});
    const auto verbose = call({u"create"_s, u"b.example"_s, u"--name"_s, u"Loud"_s, u"--verbose"_s});
    EXPECT_EQ(finish(verbose), ExitStatus::done);
    EXPECT_EQ(finish(quiet), ExitStatus::done);
    EXPECT_TRUE(quiet->console.notes.isEmpty()) << quiet->console.notes.join(u'\n').toStdString();
    EXPECT_TRUE(verbose->console.notes.contains(u"[AppLifecycle] Generating app for Loud"_s));
    EXPECT_FALSE(verbose->console.notes.join(u'\n').contains(u"Quiet"_s));
}

TEST_F(CommandServerTest, an_app_that_is_edited_by_two_callers_keeps_both_changes) {
    ASSERT_EQ(finish(call({u"create"_s, u"a.example"_s, u"--name"_s, u"Mail"_s, u"--no-icon"_s})), ExitStatus::done);
    workspace.start(bundle(u"Mail.app"_s));
    const auto one = call({u"edit"_s, u"Mail"_s, u"--user-agent"_s, u"Agent"_s});
    const auto two = call({u"edit"_s, u"Mail"_s, u"--theme-color"_s, u"#102030"_s});
    EXPECT_EQ(finish(one), ExitStatus::done);
    EXPECT_EQ(finish(two), ExitStatus::done);
    EXPECT_EQ(stored()[0].customUserAgent, u"Agent"_s);
    EXPECT_EQ(stored()[0].themeColor, u"#102030"_s);
}

TEST_F(CommandServerTest, an_app_that_is_deleted_while_a_command_waits_for_its_end_is_not_made_again) {
    ASSERT_EQ(finish(call({u"create"_s, u"a.example"_s, u"--name"_s, u"Mail"_s, u"--no-icon"_s})), ExitStatus::done);
    workspace.slowProcesses.insert(workspace.start(bundle(u"Mail.app"_s)).processIdentifier);
    const auto one = call({u"regenerate"_s, u"Mail"_s});
    scheduler.advance(0.1);
    store->removeApp(stored()[0].id);
    EXPECT_EQ(finish(one), ExitStatus::noSuchApp);
    EXPECT_FALSE(files.exists(bundle(u"Mail.app"_s)));
    EXPECT_TRUE(stored().empty());
}

TEST_F(CommandServerTest, nothing_blocks_while_an_app_ends) {
    ASSERT_EQ(finish(call({u"create"_s, u"a.example"_s, u"--name"_s, u"Mail"_s, u"--no-icon"_s})), ExitStatus::done);
    workspace.start(bundle(u"Mail.app"_s));
    lifecycle->checkRunningApps();
    EXPECT_EQ(finish(call({u"regenerate"_s, u"Mail"_s})), ExitStatus::done);
    EXPECT_TRUE(scheduler.pauses().empty());
    EXPECT_TRUE(workspace.running.empty());
}

TEST_F(CommandServerTest, cleaning_up_waits_for_an_import_whose_records_are_still_to_come) {
    QDir().mkpath(bundle(u"Stray.app/Contents/Linux"_s));
    ASSERT_TRUE(realFiles.write(bundle(u"Stray.app/Contents/Linux/WrapioRunner"_s), "x"));
    const auto first = call({u"doctor"_s, u"--clean"_s});
    QStringList order;
    first->console.beforeTheAnswer = [&] { order << u"first"_s; };
    const auto second = call({u"import"_s, u"missing.wrapio"_s});
    EXPECT_EQ(finish(second), ExitStatus::failed);
    EXPECT_TRUE(first->status);
    EXPECT_EQ(order, QStringList(u"first"_s));
}

TEST_F(CommandServerTest, a_second_start_brings_the_program_to_the_front_unless_it_wants_the_background) {
    CommandMessage message;
    message.activationToken = "token";
    EXPECT_EQ(finish(call({}, message)), ExitStatus::done);
    EXPECT_EQ(finish(call({u"--background"_s}, message)), ExitStatus::done);
    EXPECT_EQ(finish(call({u"open"_s}, message)), ExitStatus::done);
    EXPECT_EQ(asked, QStringList({u"activate token"_s, u"activate token"_s}));
}

TEST_F(CommandServerTest, a_request_is_handed_on_and_what_is_none_is_refused_besides) {
    EXPECT_EQ(finish(call({u"open"_s, u"wrapio://create?url=https%3A%2F%2Fa.example"_s})), ExitStatus::done);
    const auto process = call({u"open"_s, u"wrapio://nothing"_s});
    EXPECT_EQ(finish(process), ExitStatus::failed);
    EXPECT_TRUE(process->console.notes.value(0).contains(u"wrapio://nothing is no request"_s));
    EXPECT_EQ(asked, QStringList({u"open wrapio://create?url=https%3A%2F%2Fa.example"_s, u"open wrapio://nothing"_s}));
}

TEST_F(CommandServerTest, a_caller_of_another_version_is_told_so) {
    CommandMessage message;
    message.protocol = 99;
    const auto process = call({u"list"_s}, message);
    EXPECT_EQ(finish(process), ExitStatus::failed);
    EXPECT_TRUE(process->console.notes.value(0).contains(u"another version"_s));
}

TEST_F(CommandServerTest, wrong_usage_is_told_like_everywhere) {
    const auto process = call({u"dance"_s});
    EXPECT_EQ(finish(process), ExitStatus::usage);
    EXPECT_EQ(process->console.notes, QStringList(u"wrapio: there is no command \"dance\""_s));
}

TEST_F(CommandServerTest, noise_ends_its_channel_and_nothing_else) {
    bool isClosed = false;
    const auto channel = server.call();
    channel->listen({[](const QByteArray&) {}, [&isClosed] { isClosed = true; }});
    channel->send("GET / HTTP/1.1\r\n\r\n");
    scheduler.advance(0);
    EXPECT_TRUE(isClosed);
    EXPECT_EQ(finish(call({u"list"_s})), ExitStatus::done);
}

TEST_F(CommandServerTest, finishing_waits_for_the_commands_that_run_and_takes_no_more) {
    const auto process = call({u"create"_s, u"a.example"_s, u"--name"_s, u"Mail"_s});
    scheduler.advance(0);
    auto late = server.call();
    bool isFinished = false;
    commands.finish(10, [&isFinished] { isFinished = true; });
    scheduler.advance(0);
    EXPECT_FALSE(isFinished);
    EXPECT_EQ(server.call(), nullptr);
    CallingProcess tooLate(std::move(late));
    tooLate.client.run(CommandMessage{}, [&tooLate](ExitStatus status) { tooLate.status = status; });
    scheduler.advance(0);
    EXPECT_EQ(tooLate.status, ExitStatus::needsManager);
    EXPECT_EQ(finish(process), ExitStatus::done);
    EXPECT_TRUE(isFinished);
    EXPECT_EQ(namesOf(stored()), QStringList(u"Mail"_s));
}

TEST_F(CommandServerTest, finishing_does_not_wait_longer_than_its_time) {
    const auto process = call({u"create"_s, u"a.example"_s});  // whose icon never comes
    scheduler.advance(0);
    bool isFinished = false;
    commands.finish(10, [&isFinished] { isFinished = true; });
    scheduler.advance(9.9);
    EXPECT_FALSE(isFinished);
    scheduler.advance(0.2);
    EXPECT_TRUE(isFinished);
    EXPECT_FALSE(process->status);
}

}  // namespace wrapio
