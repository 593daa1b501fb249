#include "Platform/Linux/FileCatalogueLock.h"

#include "Fakes/PrintQt.h"
#include "Platform/System/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <thread>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

struct FileCatalogueLockTest : testing::Test {
    QTemporaryDir folder;
    QString place = folder.path() + u"/config/Wrapio"_s;
};

/// Another process that holds the lock until it is told to end.
class Holder {
public:
    explicit Holder(const QString& place) {
        std::array<int, 2> ready{};
        EXPECT_EQ(::pipe(ready.data()), 0);
        m_process = ::fork();
        if (m_process == 0) {
            FileCatalogueLock lock(place);
            const char answer = lock.acquire(0) ? 'y' : 'n';
            static_cast<void>(!::write(ready[1], &answer, 1));
            for (;;)
                ::pause();
        }
        ::close(ready[1]);
        char answer = 'n';
        EXPECT_EQ(::read(ready[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        ::close(ready[0]);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { kill(); }

    void kill() {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
        }
        m_process = 0;
    }
    [[nodiscard]] pid_t process() const { return m_process; }

private:
    pid_t m_process = 0;
};

TEST_F(FileCatalogueLockTest, AFreeLockIsTakenAtOnceAndMayBeTakenAgain) {
    FileCatalogueLock lock(place);
    EXPECT_TRUE(lock.acquire(0));
    EXPECT_TRUE(lock.acquire(0));
    EXPECT_TRUE(QFile::exists(place + u"/.lock"_s));
}

TEST_F(FileCatalogueLockTest, TheReasonNamesTheProcessThatHoldsIt) {
    const Holder holder(place);
    FileCatalogueLock lock(place);
    const auto taken = lock.acquire(0);
    ASSERT_FALSE(taken);
    EXPECT_EQ(taken.error().description(),
              u"Another Wrapio (process %1) is changing the catalogue; try again when it has finished"_s.arg(
                  holder.process()));
}

TEST_F(FileCatalogueLockTest, AHolderThatIsUnknownIsNotNamed) {
    FileCatalogueLock holder(place);
    ASSERT_TRUE(holder.acquire(0));
    QFile file(place + u"/.lock"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Truncate));
    EXPECT_EQ(FileCatalogueLock(place).acquire(0).error().description(),
              u"Another Wrapio is changing the catalogue; try again when it has finished"_s);
}

TEST_F(FileCatalogueLockTest, ItIsFreeAgainOnceItsHolderGoesAway) {
    {
        FileCatalogueLock holder(place);
        ASSERT_TRUE(holder.acquire(0));
    }
    EXPECT_TRUE(FileCatalogueLock(place).acquire(0));
}

TEST_F(FileCatalogueLockTest, ItIsFreeAgainAfterItsHolderWasKilled) {
    Holder holder(place);
    holder.kill();
    EXPECT_TRUE(FileCatalogueLock(place).acquire(0));
}

TEST_F(FileCatalogueLockTest, WaitingEndsWhenItBecomesFree) {
    Holder holder(place);
    FileCatalogueLock lock(place);
    ASSERT_FALSE(lock.acquire(0));
    std::thread ending([&holder] { holder.kill(); });
    EXPECT_TRUE(lock.acquire(20));
    ending.join();
}

TEST_F(FileCatalogueLockTest, WaitingLastsAsLongAsWasAskedFor) {
    const Holder holder(place);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(FileCatalogueLock(place).acquire(0.05));
    const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited.count(), 0.05);
    EXPECT_LT(waited.count(), 5);
}

TEST_F(FileCatalogueLockTest, AProgramThatTheHolderStartsDoesNotInheritIt) {
    pid_t child = 0;
    {
        FileCatalogueLock holder(place);
        ASSERT_TRUE(holder.acquire(0));
        child = ::fork();
        if (child == 0)
            ::execl("/bin/sleep", "sleep", "60", nullptr);
        // Wait until it has become the other program.
        const QString program = u"/proc/%1/exe"_s.arg(child);
        const QString own = QFile::symLinkTarget(u"/proc/self/exe"_s);
        while (QFile::symLinkTarget(program) == own)
            std::this_thread::yield();
    }
    EXPECT_TRUE(FileCatalogueLock(place).acquire(0));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

TEST_F(FileCatalogueLockTest, AFolderThatCannotBeWrittenIsNamed) {
    ASSERT_TRUE(QDir().mkpath(place));
    ASSERT_TRUE(QFile::setPermissions(place, QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadOther |
                                                 QFileDevice::ExeOther));
    OrdinaryUser::give(place);
    const OrdinaryUser ordinary;
    const auto taken = FileCatalogueLock(place).acquire(10);
    ASSERT_FALSE(taken);
    EXPECT_TRUE(taken.error().isHopeless);
    EXPECT_EQ(taken.error().description(),
              u"The catalogue cannot be locked: Could not lock %1/.lock: Permission denied"_s.arg(place));
}

TEST_F(FileCatalogueLockTest, ALockFileThatWasRemovedKeepsNobodyOut) {
    FileCatalogueLock first(place);
    ASSERT_TRUE(first.acquire(0));
    ASSERT_TRUE(QFile::remove(place + u"/.lock"_s));
    FileCatalogueLock second(place);
    EXPECT_TRUE(second.acquire(0));
    EXPECT_FALSE(FileCatalogueLock(place).acquire(0));
}

}  // namespace
}  // namespace wrapio
