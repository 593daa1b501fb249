#include "Platform/Darwin/ProcessToolRunner.h"

#include "Fakes/PrintQt.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <thread>
#include <vector>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class ProcessToolRunnerTest : public testing::Test {
protected:
    QString script(const QByteArray& body) {
        const QString path = m_folder.filePath(u"tool %1.sh"_s.arg(m_scripts++));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + body);
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    ToolResult run(const QByteArray& body, const QStringList& arguments = {}) {
        const auto result = m_runner.run(script(body), arguments);
        EXPECT_TRUE(result.has_value()) << result.error().description().toStdString();
        return result.value_or(ToolResult{-1, {}, {}});
    }

    QTemporaryDir m_folder;
    ProcessToolRunner m_runner;
    int m_scripts = 0;
};

TEST_F(ProcessToolRunnerTest, ArgumentsReachTheToolAsTheyAre) {
    const QStringList arguments{u"--force"_s, u"-"_s, u"a b\"$HOME`\\"_s, QString(), u"größe 🎈"_s, u"two\nlines"_s};
    const ToolResult result = run("for a in \"$@\"; do printf '%s\\0' \"$a\"; done", arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, (arguments.join(QChar(0)) + QChar(0)).toUtf8());
}

TEST_F(ProcessToolRunnerTest, BothOutputsAndTheStatusAreTold) {
    const ToolResult result = run("echo out; echo err >&2; exit 7");
    EXPECT_EQ(result.status, 7);
    EXPECT_EQ(result.standardOutput, "out\n");
    EXPECT_EQ(result.standardError, "err\n");
}

TEST_F(ProcessToolRunnerTest, MuchOutputOnBothStreamsDoesNotBlock) {
    const ToolResult result =
        run("head -c 3000000 /dev/zero >&2; head -c 2000000 /dev/zero; head -c 1000000 /dev/zero >&2");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput.size(), 2'000'000);
    EXPECT_EQ(result.standardError.size(), 4'000'000);
}

TEST_F(ProcessToolRunnerTest, DeathByASignalIsAStatusOf128AndItsNumber) {
    EXPECT_EQ(run("kill -TERM $$").status, 128 + SIGTERM);
    EXPECT_EQ(run("kill -KILL $$").status, 128 + SIGKILL);
}

TEST_F(ProcessToolRunnerTest, AToolThatDoesNotExistIsALaunchError) {
    const auto result = m_runner.run(u"/nonexistent/tool"_s, {});
    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(result.error(), (LaunchError{u"/nonexistent/tool"_s, u"No such file or directory"_s}));
    EXPECT_FALSE(m_runner.exists(u"/nonexistent/tool"_s));
}

TEST_F(ProcessToolRunnerTest, AFileThatIsNoProgramIsALaunchError) {
    const QString path = m_folder.filePath(u"plain"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.setPermissions(QFile::ReadOwner);
    ASSERT_FALSE(m_runner.run(path, {}).has_value());
    EXPECT_FALSE(m_runner.exists(path));
    EXPECT_FALSE(m_runner.exists(m_folder.path()));
    EXPECT_TRUE(m_runner.exists(script("")));
}

TEST_F(ProcessToolRunnerTest, AnArgumentThatNoProgramCanGetIsALaunchError) {
    EXPECT_FALSE(m_runner.run(script(""), {u"a"_s + QChar(0) + u"b"_s}).has_value());
}

TEST_F(ProcessToolRunnerTest, TheToolReadsNothing) {
    EXPECT_EQ(run("cat; echo done").standardOutput, "done\n");
}

TEST_F(ProcessToolRunnerTest, AToolsBackgroundProcessIsNotWaitedFor) {
    const ToolResult result = run("sleep 600 & echo $!");
    EXPECT_EQ(result.status, 0);
    const pid_t left = static_cast<pid_t>(result.standardOutput.trimmed().toInt());
    ASSERT_GT(left, 1);
    EXPECT_EQ(::kill(left, SIGKILL), 0) << "it should still have run";
}

TEST_F(ProcessToolRunnerTest, AToolThatClosesItsOutputsIsStillWaitedFor) {
    EXPECT_EQ(run("exec >&- 2>&-; sleep 0.2; exit 9").status, 9);
}

TEST_F(ProcessToolRunnerTest, SignalsThatTheCallerBlocksAreOpenForTheTool) {
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &previous);
    const ToolResult result = run("kill -TERM $$; exit 0");
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    EXPECT_EQ(result.status, 128 + SIGTERM);
}

TEST_F(ProcessToolRunnerTest, ManyThreadsRunToolsAtOnce) {
    const QString tool = script("echo $1; exit $1");
    std::vector<std::thread> threads;
    std::vector<int> statuses(16, -1);
    for (std::size_t i = 0; i < statuses.size(); ++i)
        threads.emplace_back([&, i] {
            ProcessToolRunner runner;
            const auto result = runner.run(tool, {QString::number(i)});
            if (result && result->standardOutput == QByteArray::number(static_cast<int>(i)) + '\n')
                statuses[i] = result->status;
        });
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < statuses.size(); ++i)
        EXPECT_EQ(statuses[i], static_cast<int>(i));
}

}  // namespace

}  // namespace wrapio
