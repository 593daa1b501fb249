#include "Platform/Linux/ProcessList.h"

#include "Fakes/PrintQt.h"
#include "Platform/System/OrdinaryUser.h"
#include "Platform/System/RunningBundles.h"
#include "Platform/System/TestBundle.h"
#include "Platform/System/Waiting.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

struct ProcessListTest : testing::Test {
    /// Starts a bundle's program and waits until it is that program.
    pid_t start(const QString& bundle) {
        const QByteArray program = QFile::encodeName(bundle + u"/Contents/Linux/WrapioRunner"_s);
        const pid_t process = ::fork();
        if (process == 0) {
            ::execl(program.constData(), program.constData(), nullptr);
            ::_exit(127);
        }
        EXPECT_TRUE(waitUntil([process] { return bundleOfProcess(process).has_value(); }));
        return process;
    }
    [[nodiscard]] std::vector<qint64> identifiers() const {
        std::vector<qint64> result;
        for (const BundleProcess& process : running.list())
            result.push_back(process.processIdentifier);
        return result;
    }

    QTemporaryDir folder;
    RunningBundles running{folder.path()};
};

TEST_F(ProcessListTest, ProcessesOfBundlesAreFoundOldestFirst) {
    const QString first = folder.path() + u"/First.app"_s;
    const QString second = folder.path() + u"/Ünï (x) .app in.app"_s;
    makeBundle(first);
    makeBundle(second);
    const pid_t a = start(second);
    const pid_t b = start(first);
    const auto found = running.list();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].processIdentifier, a);
    EXPECT_EQ(found[0].bundlePath, second);
    EXPECT_EQ(found[1].processIdentifier, b);
    EXPECT_EQ(found[1].bundlePath, first);
    EXPECT_LE(found[0].startTicks, found[1].startTicks);
    EXPECT_GT(found[0].startTicks, 0U);
}

TEST_F(ProcessListTest, AProgramNameThatLooksLikeFieldsDoesNotConfuseTheOrder) {
    const QString bundle = folder.path() + u"/A.app"_s;
    makeBundle(bundle);
    const QString program = bundle + u"/Contents/Linux/x) S 1 (y"_s;
    ASSERT_TRUE(QFile::rename(bundle + u"/Contents/Linux/WrapioRunner"_s, program));
    const pid_t process = ::fork();
    if (process == 0) {
        ::execl(QFile::encodeName(program).constData(), "x", nullptr);
        ::_exit(127);
    }
    ASSERT_TRUE(waitUntil([this] { return running.list().size() == 1; }));
    QFile uptime(u"/proc/uptime"_s);
    ASSERT_TRUE(uptime.open(QIODevice::ReadOnly));
    const double now = uptime.readAll().split(' ').value(0).toDouble();
    const double started =
        static_cast<double>(running.list().front().startTicks) / static_cast<double>(::sysconf(_SC_CLK_TCK));
    EXPECT_LE(started, now + 0.1);
    EXPECT_GT(started, now - 60);
}

TEST_F(ProcessListTest, ABundleThatWasRemovedStillCounts) {
    const QString bundle = folder.path() + u"/Gone.app"_s;
    makeBundle(bundle);
    const pid_t process = start(bundle);
    ASSERT_TRUE(QDir(bundle).removeRecursively());
    EXPECT_EQ(bundleOfProcess(process), bundle);
    EXPECT_EQ(identifiers(), std::vector<qint64>{process});
}

TEST_F(ProcessListTest, AProcessThatHasEndedDoesNotCountThoughNobodyAskedHow) {
    const QString bundle = folder.path() + u"/Zombie.app"_s;
    makeBundle(bundle);
    const pid_t process = start(bundle);
    ASSERT_EQ(::kill(process, SIGKILL), 0);
    siginfo_t how{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(process), &how, WEXITED | WNOWAIT), 0);
    EXPECT_TRUE(identifiers().empty());
    EXPECT_EQ(bundleOfProcess(process), std::nullopt);
    ASSERT_EQ(::waitpid(process, nullptr, 0), process);
}

TEST_F(ProcessListTest, AProcessThatBecomesAnotherProgramIsSeenAtOnce) {
    const QString bundle = folder.path() + u"/Late.app"_s;
    makeBundle(bundle);
    const QByteArray program = QFile::encodeName(bundle + u"/Contents/Linux/WrapioRunner"_s);
    std::array<int, 2> signalPipe{};
    ASSERT_EQ(::pipe(signalPipe.data()), 0);
    const pid_t process = ::fork();
    if (process == 0) {
        char go = 0;
        static_cast<void>(!::read(signalPipe[0], &go, 1));
        ::execl(program.constData(), program.constData(), nullptr);
        ::_exit(127);
    }
    EXPECT_TRUE(identifiers().empty());
    ASSERT_EQ(::write(signalPipe[1], "x", 1), 1);
    EXPECT_TRUE(waitUntil([&] { return identifiers() == std::vector<qint64>{process}; }));
    ::close(signalPipe[0]);
    ::close(signalPipe[1]);
}

TEST_F(ProcessListTest, ProcessesOfOthersDoNotCount) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs a process of another user";
    const QString bundle = folder.path() + u"/Theirs.app"_s;
    makeBundle(bundle);
    OrdinaryUser::give(bundle + u"/Contents/Linux/WrapioRunner"_s);
    const QByteArray program = QFile::encodeName(bundle + u"/Contents/Linux/WrapioRunner"_s);
    std::array<int, 2> started{};
    ASSERT_EQ(::pipe2(started.data(), O_CLOEXEC), 0);
    const pid_t process = ::fork();
    if (process == 0) {
        static_cast<void>(!::setresuid(65534, 65534, 65534));
        ::execl(program.constData(), program.constData(), nullptr);
        ::_exit(127);
    }
    ::close(started[1]);
    char end = 0;
    EXPECT_EQ(::read(started[0], &end, 1), 0) << "closed by becoming the program";
    ::close(started[0]);
    EXPECT_EQ(QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process)), QString::fromUtf8(program));
    EXPECT_TRUE(identifiers().empty());
    EXPECT_EQ(bundleOfProcess(process), std::nullopt);
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
}

TEST_F(ProcessListTest, ProgramsOutsideOfBundlesAndNumbersThatAreNoneDoNotCount) {
    EXPECT_EQ(bundleOfProcess(::getpid()), std::nullopt);
    EXPECT_EQ(bundleOfProcess(0), std::nullopt);
    EXPECT_EQ(bundleOfProcess(-1), std::nullopt);
    EXPECT_EQ(bundleOfProcess(std::numeric_limits<qint64>::max()), std::nullopt);
}

}  // namespace
}  // namespace wrapio
