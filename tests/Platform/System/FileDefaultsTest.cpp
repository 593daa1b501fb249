#include "Platform/Linux/FileDefaults.h"

#include "Fakes/PrintErrors.h"
#include "Fakes/PrintQt.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/System/FileSizeLimit.h"
#include "Platform/System/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <thread>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

struct FileDefaultsTest : testing::Test {
    [[nodiscard]] QStringList names() const {
        return QDir(place).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }
    void put(const QString& name, const QByteArray& bytes) const {
        ASSERT_TRUE(QDir().mkpath(place));
        ASSERT_TRUE(LinuxFileSystem().write(place + u'/' + name, bytes));
    }

    QTemporaryDir folder;
    QString place = folder.path() + u"/config/Wrapio"_s;
    FileDefaults defaults{place};
};

mode_t modeOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_mode & 07777U;
}

TEST_F(FileDefaultsTest, TheFileOfAKeyHasItsNameAndNobodyElseCanReadIt) {
    ASSERT_TRUE(defaults.setData("bytes", u"appConfigurations"_s));
    EXPECT_EQ(names(), QStringList{u"appConfigurations"_s});
    EXPECT_EQ(modeOf(place), 0700U);
    EXPECT_EQ(modeOf(place + u"/appConfigurations"_s), 0600U);
}

TEST_F(FileDefaultsTest, AFolderThatWasOpenToOthersIsClosed) {
    ASSERT_TRUE(QDir().mkpath(place));
    ASSERT_EQ(::chmod(QFile::encodeName(place).constData(), 0755), 0);
    ASSERT_TRUE(defaults.setData("bytes", u"key"_s));
    EXPECT_EQ(modeOf(place), 0700U);
}

TEST_F(FileDefaultsTest, KeysThatAreNoPlainFileNameAreRefused) {
    for (const QString& key : {u"a/b"_s, u"../key"_s, u".."_s, u".lock"_s, QString(), u"a"_s + QChar(u'\0')}) {
        EXPECT_EQ(defaults.data(key), std::nullopt);
        EXPECT_EQ(defaults.setData("x", key).error().code, EINVAL);
        EXPECT_EQ(defaults.preserveCopy(key).error().code, EINVAL);
    }
    EXPECT_FALSE(QFile::exists(place));
}

TEST_F(FileDefaultsTest, AFailedWriteLeavesTheOldBytesAndNothingElse) {
    ASSERT_TRUE(defaults.setData("old", u"key"_s));
    const FileSizeLimit full(100);
    const auto stored = defaults.setData(QByteArray(1000, 'x'), u"key"_s);
    ASSERT_FALSE(stored);
    EXPECT_EQ(stored.error().code, EFBIG);
    EXPECT_EQ(defaults.data(u"key"_s), QByteArray("old"));
    EXPECT_EQ(names(), QStringList{u"key"_s});
}

TEST_F(FileDefaultsTest, BytesThatCannotBeReadAreNotOverwritten) {
    put(u"key"_s, "precious");
    const QString path = place + u"/key"_s;
    OrdinaryUser::give(path);
    OrdinaryUser::give(place);
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0), 0);
    {
        const OrdinaryUser ordinary;
        EXPECT_EQ(defaults.data(u"key"_s), std::nullopt);
        EXPECT_EQ(defaults.setData("other", u"key"_s).error(), (FileError{u"read"_s, path, EACCES}));
        EXPECT_EQ(defaults.preserveCopy(u"key"_s).error().code, EACCES);
    }
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_EQ(LinuxFileSystem().read(path, 100), QByteArray("precious"));
}

TEST_F(FileDefaultsTest, AFolderThatCannotBeMadeIsAFailure) {
    ASSERT_TRUE(LinuxFileSystem().write(folder.path() + u"/config"_s, "a file"));
    EXPECT_EQ(defaults.setData("x", u"key"_s).error().code, ENOTDIR);
    EXPECT_EQ(defaults.data(u"key"_s), std::nullopt);
}

TEST_F(FileDefaultsTest, WhatACrashLeftBehindGoesWithTheNextWriteOfThatKey) {
    put(u".key.abc123.new"_s, "half");
    put(u".other.abc123.new"_s, "half");
    put(u".key.note"_s, "somebody else's");
    ASSERT_TRUE(defaults.setData("whole", u"key"_s));
    EXPECT_EQ(names(), (QStringList{u".key.note"_s, u".other.abc123.new"_s, u"key"_s}));
}

TEST_F(FileDefaultsTest, WhatAnotherProcessIsWritingStays) {
    put(u".key.abc123.new"_s, "half");
    const int other = ::open(QFile::encodeName(place + u"/.key.abc123.new"_s).constData(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    ASSERT_TRUE(defaults.setData("whole", u"key"_s));
    EXPECT_TRUE(names().contains(u".key.abc123.new"_s));
    ::close(other);
    ASSERT_TRUE(defaults.setData("whole", u"key"_s));
    EXPECT_EQ(names(), QStringList{u"key"_s});
}

TEST_F(FileDefaultsTest, AReaderNeverMeetsHalfAValue) {
    const QByteArray first(200000, 'a');
    const QByteArray second(300000, 'b');
    ASSERT_TRUE(defaults.setData(first, u"key"_s));
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        for (int i = 0; i < 20; ++i)
            EXPECT_TRUE(FileDefaults(place).setData(i % 2 == 0 ? second : first, u"key"_s));
        isDone = true;
    });
    int reads = 0;
    while (!isDone) {
        const auto bytes = defaults.data(u"key"_s);
        ++reads;
        EXPECT_TRUE(bytes == first || bytes == second);
    }
    writer.join();
    EXPECT_GT(reads, 0);
}

TEST_F(FileDefaultsTest, WritersAtTheSameTimeDoNotDisturbEachOther) {
    const auto write = [this](char letter) {
        for (int i = 0; i < 25; ++i)
            EXPECT_TRUE(FileDefaults(place).setData(QByteArray(5000, letter), u"key"_s));
    };
    std::thread other(write, 'a');
    write('b');
    other.join();
    const auto bytes = defaults.data(u"key"_s);
    EXPECT_TRUE(bytes == QByteArray(5000, 'a') || bytes == QByteArray(5000, 'b'));
    EXPECT_EQ(names(), QStringList{u"key"_s});
}

TEST_F(FileDefaultsTest, CopiesAreNumberedAndNeverOverwritten) {
    put(u"key"_s, "first");
    EXPECT_EQ(*defaults.preserveCopy(u"key"_s), place + u"/key.damaged-1"_s);
    put(u"key"_s, "second");
    EXPECT_EQ(*defaults.preserveCopy(u"key"_s), place + u"/key.damaged-2"_s);
    EXPECT_EQ(LinuxFileSystem().read(place + u"/key.damaged-1"_s, 100), QByteArray("first"));
    EXPECT_EQ(LinuxFileSystem().read(place + u"/key.damaged-2"_s, 100), QByteArray("second"));
}

TEST_F(FileDefaultsTest, BytesThatHaveBeenPreservedAreNotCopiedAgain) {
    put(u"key"_s, "first");
    ASSERT_TRUE(defaults.preserveCopy(u"key"_s));
    put(u"key"_s, "other");
    ASSERT_TRUE(defaults.preserveCopy(u"key"_s));
    put(u"key"_s, "first");
    EXPECT_EQ(*defaults.preserveCopy(u"key"_s), place + u"/key.damaged-1"_s);
    EXPECT_EQ(names(), (QStringList{u"key"_s, u"key.damaged-1"_s, u"key.damaged-2"_s}));
}

TEST_F(FileDefaultsTest, ACopyThatFindsNoRoomLeavesNothing) {
    put(u"key"_s, QByteArray(1000, 'x'));
    const FileSizeLimit full(100);
    EXPECT_EQ(defaults.preserveCopy(u"key"_s).error().code, EFBIG);
    EXPECT_EQ(names(), QStringList{u"key"_s});
}

TEST_F(FileDefaultsTest, ThereIsNoCopyOfNothing) {
    EXPECT_EQ(defaults.preserveCopy(u"key"_s).error().code, ENOENT);
}

}  // namespace
}  // namespace wrapio
