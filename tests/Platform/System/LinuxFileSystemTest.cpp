#include "Platform/Linux/LinuxFileSystem.h"

#include "Fakes/PrintErrors.h"
#include "Fakes/PrintQt.h"
#include "Platform/System/FileSizeLimit.h"
#include "Platform/System/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

constexpr qint64 plenty = 1 << 30;

struct LinuxFileSystemTest : testing::Test {
    [[nodiscard]] QString at(const QString& name) const { return folder.path() + u'/' + name; }

    static mode_t modeOf(const QString& path) {
        struct stat status {};
        EXPECT_EQ(::lstat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
        return status.st_mode & 07777U;
    }
    static void setMode(const QString& path, mode_t mode) {
        ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
    }
    void makeFile(const QString& name, const QByteArray& bytes = "text") {
        ASSERT_TRUE(files.createDirectories(QFileInfo(at(name)).path()));
        ASSERT_TRUE(files.write(at(name), bytes));
    }
    void makePipe(const QString& name) const { ASSERT_EQ(::mkfifo(QFile::encodeName(at(name)).constData(), 0600), 0); }
    void makeLink(const QString& target, const QString& name) const { ASSERT_TRUE(QFile::link(target, at(name))); }
    [[nodiscard]] QByteArray contents(const QString& name) const {
        return files.read(at(name), plenty).value_or("(unreadable)");
    }

    QTemporaryDir folder;
    LinuxFileSystem files;
};

template <typename T>
int codeOf(const FileResult<T>& result) {
    return result ? 0 : result.error().code;
}

TEST_F(LinuxFileSystemTest, AnEntryExistsAlsoWhenItIsABrokenLink) {
    makeLink(at(u"nowhere"_s), u"link"_s);
    EXPECT_TRUE(files.exists(folder.path()));
    EXPECT_TRUE(files.exists(at(u"link"_s)));
    EXPECT_FALSE(files.exists(at(u"nowhere"_s)));
}

TEST_F(LinuxFileSystemTest, FoldersAreMadeWithTheirParentsAndMayExist) {
    EXPECT_TRUE(files.createDirectories(at(u"a/b/c"_s)));
    EXPECT_TRUE(QFileInfo(at(u"a/b/c"_s)).isDir());
    EXPECT_TRUE(files.createDirectories(at(u"a/b/c/"_s)));
    EXPECT_TRUE(files.createDirectories(u"/"_s));
}

TEST_F(LinuxFileSystemTest, AFolderIsNotMadeWhereAFileIsInTheWay) {
    makeFile(u"file"_s);
    const auto made = files.createDirectories(at(u"file/inner"_s));
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error(), (FileError{u"create the folder"_s, at(u"file"_s), ENOTDIR}));
    EXPECT_EQ(codeOf(files.createDirectories(at(u"file"_s))), ENOTDIR);
}

TEST_F(LinuxFileSystemTest, PathsThatAreNotAbsoluteOrHoldNulAreRefused) {
    const QString nul = at(u"a"_s) + QChar(u'\0') + u"b"_s;
    for (const QString& path : {u"relative"_s, QString(), nul}) {
        EXPECT_EQ(codeOf(files.createDirectories(path)), EINVAL);
        EXPECT_EQ(codeOf(files.remove(path)), EINVAL);
        EXPECT_EQ(codeOf(files.copyTree(path, at(u"to"_s))), EINVAL);
        EXPECT_EQ(codeOf(files.move(path, at(u"to"_s))), EINVAL);
        EXPECT_EQ(codeOf(files.read(path, plenty)), EINVAL);
        EXPECT_EQ(codeOf(files.write(path, "x")), EINVAL);
        EXPECT_EQ(codeOf(files.list(path)), EINVAL);
        EXPECT_FALSE(files.exists(path));
    }
    EXPECT_FALSE(files.exists(at(u"a"_s)));
}

TEST_F(LinuxFileSystemTest, AFolderIsRemovedWithAllItHolds) {
    makeFile(u"tree/a/b/file"_s);
    makePipe(u"tree/pipe"_s);
    EXPECT_TRUE(files.remove(at(u"tree"_s)));
    EXPECT_FALSE(files.exists(at(u"tree"_s)));
}

TEST_F(LinuxFileSystemTest, RemovingNeverFollowsLinks) {
    makeFile(u"kept/file"_s);
    ASSERT_TRUE(files.createDirectories(at(u"tree"_s)));
    makeLink(at(u"kept"_s), u"tree/inner"_s);
    makeLink(at(u"kept"_s), u"outer"_s);
    EXPECT_TRUE(files.remove(at(u"tree"_s)));
    EXPECT_TRUE(files.remove(at(u"outer/"_s)));
    EXPECT_FALSE(files.exists(at(u"outer"_s)));
    EXPECT_EQ(contents(u"kept/file"_s), "text");
}

TEST_F(LinuxFileSystemTest, RemovingWhatIsNotThereFails) {
    EXPECT_EQ(codeOf(files.remove(at(u"nothing"_s))), ENOENT);
}

TEST_F(LinuxFileSystemTest, FoldersThatAreClosedToTheirOwnerAreRemovedToo) {
    makeFile(u"tree/locked/inner/file"_s);
    for (const auto& name : {u"tree/locked/inner/file"_s, u"tree/locked/inner"_s, u"tree/locked"_s, u"tree"_s})
        OrdinaryUser::give(at(name));
    OrdinaryUser::give(folder.path());
    setMode(at(u"tree/locked/inner"_s), 0555);
    setMode(at(u"tree/locked"_s), 0000);
    const OrdinaryUser ordinary;
    EXPECT_FALSE(files.write(at(u"tree/locked/inner/other"_s), "x")) << "permissions have no effect here";
    const auto removed = files.remove(at(u"tree"_s));
    EXPECT_TRUE(removed) << (removed ? "" : removed.error().description().toStdString());
    EXPECT_FALSE(files.exists(at(u"tree"_s)));
}

TEST_F(LinuxFileSystemTest, ARemovalThatIsForbiddenNamesTheEntry) {
    makeFile(u"tree/file"_s);
    OrdinaryUser::give(at(u"tree/file"_s));
    setMode(folder.path(), 0755);
    setMode(at(u"tree"_s), 0555);
    const bool canProve = ::geteuid() == 0;
    if (canProve) {
        const OrdinaryUser ordinary;
        const auto removed = files.remove(at(u"tree"_s));
        ASSERT_FALSE(removed);
        EXPECT_EQ(removed.error(), (FileError{u"remove"_s, at(u"tree/file"_s), EACCES}));
    } else {
        GTEST_SKIP() << "needs a folder of another user";
    }
}

TEST_F(LinuxFileSystemTest, ACopyHasTheSameFilesModesAndLinks) {
    const QByteArray large(3 * 1024 * 1024 + 17, 'x');
    makeFile(u"from/large"_s, large);
    makeFile(u"from/empty"_s, "");
    makeFile(u"from/closed/program"_s, "run me");
    ASSERT_TRUE(files.createDirectories(at(u"from/nothing in it"_s)));
    makeLink(u"../elsewhere"_s, u"from/broken"_s);
    setMode(at(u"from/closed/program"_s), 0751);
    setMode(at(u"from/closed"_s), 0555);

    ASSERT_TRUE(files.copyTree(at(u"from"_s), at(u"to"_s)));

    EXPECT_THAT(*files.list(at(u"to"_s)),
                ElementsAre(u"broken"_s, u"closed"_s, u"empty"_s, u"large"_s, u"nothing in it"_s));
    EXPECT_EQ(contents(u"to/large"_s), large);
    EXPECT_EQ(contents(u"to/empty"_s), "");
    EXPECT_EQ(contents(u"to/closed/program"_s), "run me");
    EXPECT_EQ(modeOf(at(u"to/closed/program"_s)), 0751U);
    EXPECT_EQ(modeOf(at(u"to/closed"_s)), 0555U);
    EXPECT_EQ(QFile(at(u"to/broken"_s)).symLinkTarget(), folder.path() + u"/elsewhere"_s);
    EXPECT_EQ(std::filesystem::read_symlink(at(u"to/broken"_s).toStdString()), "../elsewhere");
}

TEST_F(LinuxFileSystemTest, ACopyDropsTheBitsThatLendTheOwnersRights) {
    makeFile(u"from/program"_s);
    setMode(at(u"from/program"_s), 06755);
    ASSERT_TRUE(files.copyTree(at(u"from"_s), at(u"to"_s)));
    EXPECT_EQ(modeOf(at(u"to/program"_s)), 0755U);
}

TEST_F(LinuxFileSystemTest, AFolderBehindALinkIsCopiedAsAFolder) {
    makeFile(u"from/file"_s);
    makeLink(at(u"from"_s), u"link"_s);
    ASSERT_TRUE(files.copyTree(at(u"link"_s), at(u"to"_s)));
    EXPECT_FALSE(QFileInfo(at(u"to"_s)).isSymLink());
    EXPECT_EQ(contents(u"to/file"_s), "text");
}

TEST_F(LinuxFileSystemTest, ACopyIsNotMadeOverSomething) {
    makeFile(u"from/file"_s);
    makeFile(u"to/other"_s);
    EXPECT_EQ(codeOf(files.copyTree(at(u"from"_s), at(u"to"_s))), EEXIST);
    EXPECT_THAT(*files.list(at(u"to"_s)), ElementsAre(u"other"_s));
}

TEST_F(LinuxFileSystemTest, OnlyFoldersCanBeCopied) {
    makeFile(u"file"_s);
    EXPECT_EQ(codeOf(files.copyTree(at(u"file"_s), at(u"to"_s))), ENOTDIR);
    EXPECT_EQ(codeOf(files.copyTree(at(u"missing"_s), at(u"to"_s))), ENOENT);
    EXPECT_FALSE(files.exists(at(u"to"_s)));
}

TEST_F(LinuxFileSystemTest, AFolderIsNotCopiedIntoItself) {
    makeFile(u"from/inner/file"_s);
    makeLink(at(u"from/inner"_s), u"link"_s);
    EXPECT_EQ(codeOf(files.copyTree(at(u"from"_s), at(u"from/inner/copy"_s))), EINVAL);
    EXPECT_EQ(codeOf(files.copyTree(at(u"from"_s), at(u"link/copy"_s))), EINVAL);
    EXPECT_THAT(*files.list(at(u"from/inner"_s)), ElementsAre(u"file"_s));
    EXPECT_TRUE(files.copyTree(at(u"from"_s), at(u"from copy"_s)));
}

TEST_F(LinuxFileSystemTest, ACopyStopsAtAPipeAndNamesIt) {
    makeFile(u"from/a"_s);
    makePipe(u"from/b"_s);
    const auto copied = files.copyTree(at(u"from"_s), at(u"to"_s));
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error(), (FileError{u"copy"_s, at(u"from/b"_s), EOPNOTSUPP}));
    EXPECT_TRUE(files.exists(at(u"to/a"_s))) << "what has been made is left to the caller";
}

TEST_F(LinuxFileSystemTest, ACopyOfAnUnreadableFileNamesIt) {
    makeFile(u"from/secret"_s);
    setMode(at(u"from/secret"_s), 0000);
    setMode(at(u"from"_s), 0755);
    OrdinaryUser::give(folder.path());
    const OrdinaryUser ordinary;
    const auto copied = files.copyTree(at(u"from"_s), at(u"to"_s));
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error(), (FileError{u"copy"_s, at(u"from/secret"_s), EACCES}));
}

TEST_F(LinuxFileSystemTest, ACopyThatFindsNoRoomNamesTheFileThatDidNotFit) {
    makeFile(u"from/large"_s, QByteArray(1024 * 1024, 'x'));
    const FileSizeLimit full(4096);
    const auto copied = files.copyTree(at(u"from"_s), at(u"to"_s));
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error(), (FileError{u"copy"_s, at(u"to/large"_s), EFBIG}));
}

TEST_F(LinuxFileSystemTest, EntriesAreMoved) {
    makeFile(u"a/file"_s);
    EXPECT_TRUE(files.move(at(u"a"_s), at(u"b"_s)));
    EXPECT_FALSE(files.exists(at(u"a"_s)));
    EXPECT_EQ(contents(u"b/file"_s), "text");
}

TEST_F(LinuxFileSystemTest, AMoveNeverReplaces) {
    makeFile(u"a"_s, "one");
    makeFile(u"b"_s, "two");
    makeLink(at(u"nowhere"_s), u"link"_s);
    const auto moved = files.move(at(u"a"_s), at(u"b"_s));
    ASSERT_FALSE(moved);
    EXPECT_EQ(moved.error(), (FileError{u"move"_s, at(u"b"_s), EEXIST}));
    EXPECT_EQ(codeOf(files.move(at(u"a"_s), at(u"link"_s))), EEXIST);
    EXPECT_EQ(contents(u"a"_s), "one");
    EXPECT_EQ(contents(u"b"_s), "two");
    EXPECT_EQ(codeOf(files.move(at(u"missing"_s), at(u"c"_s))), ENOENT);
}

struct AcrossFileSystems : LinuxFileSystemTest {
    AcrossFileSystems()
        : memory(u"/dev/shm/wrapio-test-XXXXXX"_s) {}

    void SetUp() override {
        struct stat here {};
        struct stat there {};
        ASSERT_EQ(::stat(QFile::encodeName(folder.path()).constData(), &here), 0);
        if (!memory.isValid() || ::stat(QFile::encodeName(memory.path()).constData(), &there) != 0 ||
            here.st_dev == there.st_dev)
            GTEST_SKIP() << "The folder /dev/shm is no file system of its own here";
    }
    [[nodiscard]] QString there(const QString& name) const { return memory.path() + u'/' + name; }

    QTemporaryDir memory;
};

TEST_F(AcrossFileSystems, EntriesOfEveryKindAreMoved) {
    makeFile(u"tree/inner/file"_s);
    makeFile(u"file"_s, "alone");
    makeLink(u"target"_s, u"link"_s);
    EXPECT_TRUE(files.move(at(u"tree"_s), there(u"tree"_s)));
    EXPECT_TRUE(files.move(at(u"file"_s), there(u"file"_s)));
    EXPECT_TRUE(files.move(at(u"link"_s), there(u"link"_s)));
    EXPECT_TRUE(files.list(folder.path())->empty());
    EXPECT_EQ(files.read(there(u"tree/inner/file"_s), plenty), QByteArray("text"));
    EXPECT_EQ(files.read(there(u"file"_s), plenty), QByteArray("alone"));
    EXPECT_TRUE(QFileInfo(there(u"link"_s)).isSymLink());
}

TEST_F(AcrossFileSystems, AMoveNeverReplaces) {
    makeFile(u"tree/file"_s);
    ASSERT_TRUE(files.createDirectories(there(u"tree"_s)));
    EXPECT_EQ(codeOf(files.move(at(u"tree"_s), there(u"tree"_s))), EEXIST);
    EXPECT_TRUE(files.list(there(u"tree"_s))->empty());
    EXPECT_EQ(contents(u"tree/file"_s), "text");
}

TEST_F(AcrossFileSystems, AFailedMoveLeavesEverythingAsItWas) {
    makeFile(u"tree/a"_s);
    makePipe(u"tree/b"_s);
    EXPECT_EQ(codeOf(files.move(at(u"tree"_s), there(u"tree"_s))), EOPNOTSUPP);
    EXPECT_FALSE(files.exists(there(u"tree"_s)));
    EXPECT_THAT(*files.list(at(u"tree"_s)), ElementsAre(u"a"_s, u"b"_s));
}

TEST_F(LinuxFileSystemTest, AFileIsReadAsFarAsItsLimitAllows) {
    makeFile(u"file"_s, QByteArray("a\0b", 3));
    EXPECT_EQ(files.read(at(u"file"_s), 3), QByteArray("a\0b", 3));
    EXPECT_EQ(codeOf(files.read(at(u"file"_s), 2)), EFBIG);
    makeFile(u"empty"_s, "");
    EXPECT_EQ(files.read(at(u"empty"_s), 0), QByteArray());
}

TEST_F(LinuxFileSystemTest, AFileWhoseSizeIsNotKnownBeforehandIsReadToItsEnd) {
    const auto bytes = files.read(u"/proc/self/status"_s, plenty);
    ASSERT_TRUE(bytes);
    EXPECT_TRUE(bytes->startsWith("Name:"));
    EXPECT_EQ(codeOf(files.read(u"/proc/self/status"_s, 10)), EFBIG);
}

TEST_F(LinuxFileSystemTest, ReadingFollowsLinks) {
    makeFile(u"file"_s);
    makeLink(at(u"file"_s), u"link"_s);
    EXPECT_EQ(contents(u"link"_s), "text");
}

TEST_F(LinuxFileSystemTest, WhatIsNoFileIsNeitherReadNorWritten) {
    makePipe(u"pipe"_s);
    EXPECT_EQ(codeOf(files.read(at(u"pipe"_s), plenty)), EOPNOTSUPP);
    EXPECT_EQ(codeOf(files.write(at(u"pipe"_s), "x")), ENXIO);
    EXPECT_EQ(codeOf(files.read(folder.path(), plenty)), EISDIR);
    EXPECT_EQ(codeOf(files.write(folder.path(), "x")), EISDIR);
    EXPECT_EQ(codeOf(files.read(u"/dev/zero"_s, plenty)), EOPNOTSUPP);
    EXPECT_EQ(codeOf(files.write(u"/dev/full"_s, "x")), EOPNOTSUPP);
    EXPECT_EQ(codeOf(files.read(at(u"missing"_s), plenty)), ENOENT);
    EXPECT_EQ(codeOf(files.write(at(u"missing/file"_s), "x")), ENOENT);
}

TEST_F(LinuxFileSystemTest, WritingReplacesTheWholeContents) {
    makeFile(u"file"_s, "a long text");
    EXPECT_TRUE(files.write(at(u"file"_s), "short"));
    EXPECT_EQ(contents(u"file"_s), "short");
    EXPECT_TRUE(files.write(at(u"file"_s), ""));
    EXPECT_EQ(contents(u"file"_s), "");
}

TEST_F(LinuxFileSystemTest, AWriteThatIsCutShortIsAFailure) {
    const FileSizeLimit full(1000);
    const auto written = files.write(at(u"file"_s), QByteArray(5000, 'x'));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error(), (FileError{u"write"_s, at(u"file"_s), EFBIG}));
}

TEST_F(LinuxFileSystemTest, AReplacementIsANewFileInThePlaceOfTheOldOne) {
    EXPECT_TRUE(files.replace(at(u"file"_s), "first"));
    QFile reader(at(u"file"_s));
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    EXPECT_TRUE(files.replace(at(u"file"_s), "second, and longer"));
    EXPECT_EQ(reader.readAll(), "first");
    EXPECT_EQ(contents(u"file"_s), "second, and longer");
    EXPECT_EQ(*files.list(folder.path()), std::vector<QString>{u"file"_s});
}

TEST_F(LinuxFileSystemTest, AReplacementThatIsCutShortLeavesTheOldFileAndNothingElse) {
    makeFile(u"file"_s, "old");
    const FileSizeLimit full(1000);
    const auto replaced = files.replace(at(u"file"_s), QByteArray(5000, 'x'));
    ASSERT_FALSE(replaced);
    EXPECT_EQ(replaced.error(), (FileError{u"write"_s, at(u"file"_s), EFBIG}));
    EXPECT_EQ(contents(u"file"_s), "old");
    EXPECT_EQ(*files.list(folder.path()), std::vector<QString>{u"file"_s});
}

TEST_F(LinuxFileSystemTest, AReplacementTakesAwayWhatAnInterruptedOneHasLeft) {
    makeFile(u".file.abcdef.new"_s, "half");
    makeFile(u".other.abcdef.new"_s, "half of another");
    EXPECT_TRUE(files.replace(at(u"file"_s), "whole"));
    EXPECT_EQ(*files.list(folder.path()), (std::vector<QString>{u".other.abcdef.new"_s, u"file"_s}));
}

TEST_F(LinuxFileSystemTest, WhereThereIsNoFolderNothingIsReplaced) {
    EXPECT_EQ(codeOf(files.replace(at(u"missing/file"_s), "x")), ENOENT);
    EXPECT_EQ(codeOf(files.replace(u"relative"_s, "x")), EINVAL);
}

TEST_F(LinuxFileSystemTest, TheNamesInAFolderAreSorted) {
    for (const auto& name : {u"b"_s, u"ä"_s, u"A"_s, u".hidden"_s})
        makeFile(name);
    EXPECT_THAT(*files.list(folder.path()), ElementsAre(u".hidden"_s, u"A"_s, u"b"_s, u"ä"_s));
    EXPECT_EQ(codeOf(files.list(at(u"missing"_s))), ENOENT);
    EXPECT_EQ(codeOf(files.list(at(u"A"_s))), ENOTDIR);
}

}  // namespace
}  // namespace wrapio
