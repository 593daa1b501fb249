#include "Platform/Linux/ZipArchive.h"

#include "Fakes/PrintQt.h"
#include "Platform/Tools/ToolTestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <sys/stat.h>

#include <algorithm>
#include <clocale>
#include <random>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// What is told about each of the archives that the script makes.
const QMap<QString, QString>& hostileArchives() {
    static const QMap<QString, QString> archives{
        {u"absolute.zip"_s, u"is an absolute path"_s},
        {u"backslash.zip"_s, u"has a backslash"_s},
        {u"backslash-inside.zip"_s, u"has a backslash"_s},
        {u"backslash-of-dos.zip"_s, u"has a backslash"_s},
        {u"bomb.zip"_s, u"more than 1000 times its size"_s},
        {u"control-character.zip"_s, u"has a control character"_s},
        {u"deep.zip"_s, u"is too long"_s},
        {u"device.zip"_s, u"is neither a file nor a folder"_s},
        {u"duplicate.zip"_s, u"is there twice"_s},
        {u"duplicate-but-for-case.zip"_s, u"is there twice"_s},
        {u"duplicate-but-for-composition.zip"_s, u"is there twice"_s},
        {u"duplicate-folder-but-for-case.zip"_s, u"is there twice"_s},
        {u"empty-file.zip"_s, u"is no ZIP file"_s},
        {u"empty-name.zip"_s, u"is no name"_s},
        {u"empty-part.zip"_s, u"has an empty part"_s},
        {u"encrypted.zip"_s, u"is encrypted"_s},
        {u"end-that-points-nowhere.zip"_s, u"is damaged"_s},
        {u"fewer-records-than-it-says.zip"_s, u"is damaged"_s},
        {u"file-and-folder.zip"_s, u"is there twice"_s},
        {u"large-end-that-points-nowhere.zip"_s, u"more than 100000 entries"_s},
        {u"less-than-it-says.zip"_s, u"wrong size"_s},
        {u"link.zip"_s, u"is neither a file nor a folder"_s},
        {u"link-then-file-below.zip"_s, u"is neither a file nor a folder"_s},
        {u"long-name.zip"_s, u"is too long"_s},
        {u"long-path.zip"_s, u"is too long"_s},
        {u"more-records-than-it-says.zip"_s, u"is damaged"_s},
        {u"more-than-it-says.zip"_s, u"wrong size"_s},
        {u"no-deflate-stream.zip"_s, u"decompression failed"_s},
        {u"no-utf-8.zip"_s, u"is no UTF-8"_s},
        {u"no-utf-8-though-it-says-so.zip"_s, u"is no UTF-8"_s},
        {u"nul.zip"_s, u"has a control character"_s},
        {u"nul-in-the-own-header.zip"_s, u"has a control character"_s},
        {u"only-an-end.zip"_s, u"is damaged"_s},
        {u"overlong-utf-8.zip"_s, u"is no UTF-8"_s},
        {u"parent.zip"_s, u"leads out of the folder"_s},
        {u"parent-folder.zip"_s, u"leads out of the folder"_s},
        {u"parent-inside.zip"_s, u"leads out of the folder"_s},
        {u"text.zip"_s, u"is no ZIP file"_s},
        {u"truncated.zip"_s, u"is damaged"_s},
        {u"two-ends.zip"_s, u"is damaged"_s},
        {u"two-names.zip"_s, u"is damaged"_s},
        {u"two-names-of-other-lengths.zip"_s, u"is damaged"_s},
        {u"unicode-path.zip"_s, u"leads out of the folder"_s},
        {u"unknown-method.zip"_s, u"Unsupported ZIP compression method"_s},
        {u"without-its-front.zip"_s, u"is damaged"_s},
        {u"wrong-checksum.zip"_s, u"bad CRC"_s},
        {u"wrong-checksum-deflated.zip"_s, u"bad CRC"_s},
    };
    return archives;
}

class ZipArchiveTest : public testing::Test {
protected:
    void SetUp() override {
        writeFile(m_from + u"/manifest.json"_s, "{\"version\":1}");
        writeFile(m_from + u"/configs.json"_s, "[]");
        writeFile(m_from + u"/icons/a.png"_s, squarePng(64));
        writeFile(m_from + u"/icons/größe 🎈.png"_s, QByteArray(200'000, 'x'));
        ASSERT_TRUE(QDir().mkpath(m_from + u"/empty"_s));
    }

    void pack() {
        const auto packed = packZip(m_from, m_zip);
        ASSERT_TRUE(packed.has_value()) << packed.error().message.toStdString();
    }
    void unpackFine() {
        const auto unpacked = unpackZip(m_zip, m_to, {});
        ASSERT_TRUE(unpacked.has_value()) << unpacked.error().message.toStdString();
    }
    /// Expects that the archive is refused and nothing of it stays. Answers the reason.
    QString refusal(const QString& zip, const ZipLimits& limits = {}) {
        const auto unpacked = unpackZip(zip, m_to, limits);
        EXPECT_FALSE(unpacked.has_value()) << zip.toStdString();
        EXPECT_FALSE(QFileInfo::exists(m_to)) << zip.toStdString();
        return unpacked ? QString() : unpacked.error().message;
    }
    QByteArray python(const QString& script, const QStringList& arguments) {
        return outputOf(u"/usr/bin/python3"_s, QStringList{u"-c"_s, script} + arguments);
    }

    ScratchFolder m_scratch;
    QString m_from = m_scratch.path(u"from"_s);
    QString m_to = m_scratch.path(u"to"_s);
    QString m_zip = m_scratch.path(u"a.wrapio"_s);
};

TEST_F(ZipArchiveTest, WhatIsPackedComesBack) {
    pack();
    unpackFine();
    EXPECT_EQ(contentsOf(m_to), contentsOf(m_from));
}

TEST_F(ZipArchiveTest, AnotherReaderFindsTheSameFilesInTheOrderOfTheirPaths) {
    pack();
    const QByteArray names = python(uR"(
import sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as z:
    assert z.testzip() is None
    for i in z.infolist():
        if not i.is_dir():
            assert i.compress_type == zipfile.ZIP_DEFLATED, i
            assert z.read(i) == open(sys.argv[2] + "/" + i.filename, "rb").read(), i
    sys.stdout.buffer.write("\n".join(z.namelist()).encode()))"_s,
                                    {m_zip, m_from});
    EXPECT_EQ(names, "configs.json\nempty/\nicons/\nicons/a.png\nicons/größe 🎈.png\nmanifest.json");
    EXPECT_LT(QFileInfo(m_zip).size(), 5000);
    outputOf(u"/usr/bin/unzip"_s, {u"-tq"_s, m_zip});
}

TEST_F(ZipArchiveTest, PackingTwiceGivesTheSameBytes) {
    pack();
    const QByteArray first = readFile(m_zip);
    pack();
    EXPECT_EQ(readFile(m_zip), first);
    EXPECT_EQ(QDir(m_scratch.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.wrapio"_s});
}

TEST_F(ZipArchiveTest, AnEmptyFolderGivesAnArchiveWithoutEntries) {
    ASSERT_TRUE(QDir().mkpath(m_scratch.path(u"none"_s)));
    ASSERT_TRUE(packZip(m_scratch.path(u"none"_s), m_zip).has_value());
    unpackFine();
    EXPECT_TRUE(contentsOf(m_to).empty());
    EXPECT_TRUE(QFileInfo(m_to).isDir());
}

TEST_F(ZipArchiveTest, NamesAreUtf8WhateverTheLocaleIs) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "C.UTF-8"}) {
        ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
        pack();
        unpackFine();
        EXPECT_EQ(contentsOf(m_to), contentsOf(m_from)) << locale;
        QDir(m_to).removeRecursively();
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST_F(ZipArchiveTest, TheExecutableBitTravels) {
    writeExecutable(m_from + u"/tool"_s, "#!/bin/sh\n");
    pack();
    unpackFine();
    EXPECT_TRUE(QFileInfo(m_to + u"/tool"_s).isExecutable());
    EXPECT_FALSE(QFileInfo(m_to + u"/configs.json"_s).isExecutable());
}

TEST_F(ZipArchiveTest, MoreEntriesThanTheOldFormatCanCountComeBack) {
    const QString many = m_scratch.path(u"many"_s);
    python(uR"(
import os, sys
os.mkdir(sys.argv[1])
for i in range(66000):
    open("%s/%05d" % (sys.argv[1], i), "w").close())"_s,
           {many});
    ASSERT_TRUE(packZip(many, m_zip).has_value());
    EXPECT_EQ(python(u"import sys, zipfile; print(len(zipfile.ZipFile(sys.argv[1]).namelist()))"_s, {m_zip}),
              "66000\n");
    unpackFine();
    EXPECT_EQ(QDir(m_to).entryList(QDir::Files).size(), 66000);
}

TEST_F(ZipArchiveTest, PackingRefusesLinksAndPipesAndKeepsTheOlderFile) {
    pack();
    const QByteArray before = readFile(m_zip);
    ASSERT_TRUE(QFile::link(u"/etc/passwd"_s, m_from + u"/icons/link"_s));
    const auto withLink = packZip(m_from, m_zip);
    ASSERT_FALSE(withLink.has_value());
    EXPECT_EQ(withLink.error().message, m_from + u"/icons/link: only files and folders can be packed"_s);
    QFile::remove(m_from + u"/icons/link"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(m_from + u"/pipe"_s).constData(), 0600), 0);
    EXPECT_FALSE(packZip(m_from, m_zip).has_value());
    EXPECT_EQ(readFile(m_zip), before);
    EXPECT_EQ(QDir(m_scratch.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.wrapio"_s});
}

TEST_F(ZipArchiveTest, PackingIntoAFolderThatIsNotThereFails) {
    EXPECT_FALSE(packZip(m_from, m_scratch.path(u"none/a.zip"_s)).has_value());
    EXPECT_FALSE(packZip(m_scratch.path(u"none"_s), m_zip).has_value());
    EXPECT_FALSE(QFileInfo::exists(m_zip));
}

TEST_F(ZipArchiveTest, ArchivesOfOtherProgramsAreRead) {
    const auto expected = contentsOf(m_from);
    const std::map<QString, QStringList> makers{
        {u"zip"_s, {u"zip"_s, u"-qr"_s}},
        {u"zip stored"_s, {u"zip"_s, u"-qr0"_s}},
        {u"zip64"_s, {u"zip"_s, u"-qr"_s, u"-fz"_s}},
        {u"bsdtar"_s, {u"bsdtar"_s, u"--format=zip"_s, u"-cf"_s}},
        {u"python"_s, {u"python3"_s, u"-m"_s, u"zipfile"_s, u"-c"_s}},
    };
    for (const auto& [name, command] : makers) {
        outputOf(u"/bin/sh"_s, QStringList{u"-c"_s, u"cd \"$1\" && shift && \"$@\" *"_s, u"-"_s, m_from} + command +
                                   QStringList{m_zip});
        unpackFine();
        EXPECT_EQ(contentsOf(m_to), expected) << name.toStdString();
        QDir(m_to).removeRecursively();
        QFile::remove(m_zip);
    }
}

TEST_F(ZipArchiveTest, AnArchiveWrittenToAPipeIsRead) {
    outputOf(u"/bin/sh"_s, {u"-c"_s, u"cd \"$1\" && zip -qr - . | cat > \"$2\""_s, u"-"_s, m_from, m_zip});
    unpackFine();
    EXPECT_EQ(contentsOf(m_to), contentsOf(m_from));
}

TEST_F(ZipArchiveTest, WhatAnotherPlatformAddsIsLeftOut) {
    python(uR"(
import sys, zipfile
with zipfile.ZipFile(sys.argv[1], "w") as z:
    z.writestr("manifest.json", "{}")
    z.writestr("__MACOSX/", "")
    z.writestr("__MACOSX/._manifest.json", "x")
    z.writestr("icons/._a.png", "x")
    z.writestr("icons/a.png", "icon"))"_s,
           {m_zip});
    unpackFine();
    EXPECT_EQ(contentsOf(m_to), (std::map<QString, QByteArray>{
                                    {u"icons/"_s, {}}, {u"icons/a.png"_s, "icon"}, {u"manifest.json"_s, "{}"}}));
}

TEST_F(ZipArchiveTest, HostileArchivesAreRefusedAndNothingOfThemStays) {
    const QString folder = m_scratch.path(u"hostile"_s);
    outputOf(u"/usr/bin/python3"_s, {QStringLiteral(WRAPIO_TEST_FIXTURES "/make_hostile_zips.py"), folder});
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList(hostileArchives().keys()));
    for (const auto& [name, reason] : hostileArchives().asKeyValueRange()) {
        const QString told = refusal(folder + u'/' + name);
        EXPECT_TRUE(told.startsWith(u"the archive is"_s) && told.contains(reason))
            << name.toStdString() << ": " << told.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(m_scratch.path(u"evil"_s)));
    EXPECT_FALSE(QFileInfo::exists(u"/tmp/wrapio-evil"_s));
}

TEST_F(ZipArchiveTest, EachLimitHolds) {
    pack();
    EXPECT_EQ(refusal(m_zip, {.entries = 5}), u"the archive is refused: more than 5 entries"_s);
    EXPECT_EQ(refusal(m_zip, {.fileBytes = 199'999}),
              u"the archive is refused: “icons/größe 🎈.png” is larger than 199999 bytes"_s);
    EXPECT_EQ(refusal(m_zip, {.totalBytes = 200'000}), u"the archive is refused: it holds more than 200000 bytes"_s);
    EXPECT_EQ(refusal(m_zip, {.ratio = 10, .ratioFloorBytes = 1000}),
              u"the archive is refused: it holds more than 10 times its size"_s);
    EXPECT_TRUE(
        unpackZip(m_zip, m_to, {.entries = 6, .fileBytes = 200'000, .totalBytes = 210'000, .ratio = 1}).has_value());
}

TEST_F(ZipArchiveTest, AFolderThatIsThereKeepsWhatItHas) {
    writeFile(m_to + u"/mine"_s, "mine");
    pack();
    unpackFine();
    EXPECT_EQ(readFile(m_to + u"/mine"_s), "mine");
    EXPECT_EQ(readFile(m_to + u"/configs.json"_s), "[]");
}

TEST_F(ZipArchiveTest, AFileThatIsThereIsNotOverwrittenAndTheRestIsTakenBack) {
    writeFile(m_to + u"/icons/größe 🎈.png"_s, "mine");
    pack();
    EXPECT_FALSE(unpackZip(m_zip, m_to, {}).has_value());
    EXPECT_EQ(contentsOf(m_to), (std::map<QString, QByteArray>{{u"icons/"_s, {}}, {u"icons/größe 🎈.png"_s, "mine"}}));
}

TEST_F(ZipArchiveTest, ALinkThatIsThereIsNotFollowed) {
    ASSERT_TRUE(QDir().mkpath(m_to));
    ASSERT_TRUE(QDir().mkpath(m_scratch.path(u"elsewhere"_s)));
    ASSERT_TRUE(QFile::link(m_scratch.path(u"elsewhere"_s), m_to + u"/icons"_s));
    pack();
    EXPECT_FALSE(unpackZip(m_zip, m_to, {}).has_value());
    EXPECT_TRUE(QDir(m_scratch.path(u"elsewhere"_s)).isEmpty());
    EXPECT_EQ(QDir(m_to).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{u"icons"_s});
}

TEST_F(ZipArchiveTest, EveryTruncationIsRefused) {
    pack();
    const QByteArray whole = readFile(m_zip);
    for (qsizetype size = 0; size < whole.size(); size += 7) {
        writeFile(m_zip, whole.first(size));
        refusal(m_zip);
    }
}

TEST_F(ZipArchiveTest, AnyDamageIsRefusedOrLeavesOnlyWholeFilesInTheFolder) {
    pack();
    const QByteArray whole = readFile(m_zip);
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        QByteArray broken = whole;
        for (unsigned k = 0; k <= random() % 4; ++k)
            broken[static_cast<qsizetype>(random() % static_cast<unsigned>(broken.size()))] =
                static_cast<char>(random());
        writeFile(m_zip, broken);
        if (unpackZip(m_zip, m_to, {}).has_value())
            QDir(m_to).removeRecursively();
        EXPECT_FALSE(QFileInfo::exists(m_to));
    }
    EXPECT_EQ(QDir(m_scratch.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              (QStringList{u"a.wrapio"_s, u"from"_s}));
}

TEST_F(ZipArchiveTest, AFileThatIsMissingOrAFolderIsAnError) {
    EXPECT_TRUE(refusal(m_scratch.path(u"none.zip"_s)).endsWith(u"No such file or directory"_s));
    refusal(m_from);
    pack();
    EXPECT_FALSE(unpackZip(m_zip, m_scratch.path(u"no/parent"_s), {}).has_value());
    EXPECT_FALSE(unpackZip(m_zip, m_zip, {}).has_value());
}

}  // namespace

}  // namespace wrapio
