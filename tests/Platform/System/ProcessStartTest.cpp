#include "Platform/Linux/ProcessStart.h"

#include "Fakes/PrintQt.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QString shell = u"/bin/sh"_s;

TEST(ProcessStartTest, TheExitStatusOfAProgramIsAnswered) {
    EXPECT_EQ(runProcess(shell, {u"-c"_s, u"exit 0"_s}, 20), 0);
    EXPECT_EQ(runProcess(shell, {u"-c"_s, u"exit 7"_s}, 20), 7);
}

TEST(ProcessStartTest, AProgramThatASignalEndedHasNoStatus) {
    EXPECT_EQ(runProcess(shell, {u"-c"_s, u"kill -9 $$"_s}, 20), std::nullopt);
}

TEST(ProcessStartTest, AProgramThatTakesTooLongIsEnded) {
    const QTemporaryDir folder;
    const QString pidFile = folder.path() + u"/pid"_s;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(runProcess(shell, {u"-c"_s, u"echo $$ > \"$0\"; exec sleep 60"_s, pidFile}, 0.5), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    QFile file(pidFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const int process = file.readAll().trimmed().toInt();
    ASSERT_GT(process, 0);
    EXPECT_EQ(::kill(process, 0), -1) << "it still runs";
    EXPECT_EQ(errno, ESRCH);
}

TEST(ProcessStartTest, ArgumentsReachTheProgramAsTheyAre) {
    const QString odd = u"a b\t\"'$HOME`;&*\\%20ä\n"_s;
    EXPECT_EQ(runProcess(shell, {u"-c"_s, u"test \"$1\" = \"$2\" -a ${#1} = 22"_s, u"-"_s, odd, odd}, 20), 0);
    EXPECT_EQ(runProcess(shell, {u"-c"_s, u"test $# = 2 -a \"$2\" = \"\""_s, u"-"_s, u"x"_s, QString()}, 20), 0);
}

TEST(ProcessStartTest, TheEnvironmentIsOursWithTheChanges) {
    qputenv("WRAPIO_TEST_KEPT", "kept");
    qputenv("WRAPIO_TEST_CHANGED", "old");
    qputenv("WRAPIO_TEST_REMOVED", "old");
    const QString check = u"test \"$WRAPIO_TEST_KEPT,$WRAPIO_TEST_CHANGED,$WRAPIO_TEST_REMOVED\" = kept,new,"_s;
    EXPECT_EQ(runProcess(shell, {u"-c"_s, check}, 20,
                         {{"WRAPIO_TEST_CHANGED", "new"}, {"WRAPIO_TEST_REMOVED", std::nullopt}}),
              0);
}

TEST(ProcessStartTest, AProgramThatCannotBeStartedSaysWhy) {
    const QTemporaryDir folder;
    const QString text = folder.path() + u"/text"_s;
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no program");
    file.close();
    EXPECT_EQ(startProcess(folder.path() + u"/missing"_s, {}, u"/"_s).error().reason, u"No such file or directory"_s);
    EXPECT_EQ(startProcess(text, {}, u"/"_s).error().reason, u"Permission denied"_s);
    ASSERT_TRUE(file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    EXPECT_EQ(startProcess(text, {}, u"/"_s).error().reason, u"Exec format error"_s);
    EXPECT_EQ(startProcess(shell, {}, folder.path() + u"/missing"_s).error().reason, u"No such file or directory"_s);
    EXPECT_EQ(startProcess(u"sh"_s, {}, u"/"_s).error().reason, u"Invalid argument"_s);
    EXPECT_EQ(startProcess(shell, {u"a"_s + QChar(u'\0')}, u"/"_s).error().reason, u"Invalid argument"_s);
    EXPECT_EQ(runProcess(folder.path() + u"/missing"_s, {}, 20), std::nullopt);
}

}  // namespace
}  // namespace wrapio
