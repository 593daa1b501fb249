#include "Platform/Linux/BundleSeal.h"

#include "Fakes/PrintQt.h"
#include "Platform/Tools/ToolTestSupport.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class BundleSealTest : public testing::Test {
protected:
    void SetUp() override {
        TestBundle bundle{m_bundle};
        bundle.write();
        writeFile(m_bundle + u"/Contents/Resources/config.json"_s, "{}");
        writeFile(m_bundle + u"/Contents/Resources/größe & <más>\"'.txt"_s, "text");
        writeFile(m_bundle + u"/Contents/Resources/ leading and trailing "_s, "");
        ASSERT_TRUE(QFile::link(u"config.json"_s, m_bundle + u"/Contents/Resources/link"_s));
    }

    [[nodiscard]] QString inBundle(const QString& below) const { return m_bundle + u'/' + below; }

    void seal() {
        const auto sealed = BundleSeal::seal(m_bundle);
        ASSERT_TRUE(sealed.has_value()) << sealed.error().message.toStdString();
    }

    [[nodiscard]] SealDifferences differences() const {
        const auto found = BundleSeal::compare(m_bundle);
        EXPECT_TRUE(found.has_value()) << found.error().message.toStdString();
        return found.value_or(SealDifferences{});
    }

    ScratchFolder m_scratch;
    QString m_bundle = m_scratch.path(u"My Mail.app"_s);
};

TEST_F(BundleSealTest, ASealedBundleIsFine) {
    seal();
    EXPECT_TRUE(differences().empty());
    EXPECT_EQ(BundleSeal::verify(m_bundle).finding, Finding::fine);
}

TEST_F(BundleSealTest, TheSealIsAPropertyListThatOtherProgramsRead) {
    seal();
    const QByteArray read = outputOf(u"/usr/bin/python3"_s, {u"-c"_s, uR"(
import plistlib, sys, hashlib, os
root = sys.argv[1]
files = plistlib.load(open(root + "/Contents/_CodeSignature/CodeResources", "rb"))["files2"]
assert list(files) == sorted(files, key=lambda p: p.encode()), files
assert files["Contents/Resources/link"] == {"symlink": "config.json"}
assert files["Contents/Linux/WrapioRunner"]["executable"] is True
plain = [p for p in files if p not in ("Contents/Resources/link", "Contents/Linux/WrapioRunner")]
for p in plain:
    assert files[p] == {"hash2": hashlib.sha256(open(os.path.join(root, p), "rb").read()).digest()}, p
print(len(files)))"_s,
                                                             m_bundle});
    EXPECT_EQ(read, "6\n");
}

TEST_F(BundleSealTest, SealingTwiceGivesTheSameBytes) {
    seal();
    const QByteArray first = readFile(inBundle(u"Contents/_CodeSignature/CodeResources"_s));
    seal();
    EXPECT_EQ(readFile(inBundle(u"Contents/_CodeSignature/CodeResources"_s)), first);
    EXPECT_TRUE(differences().empty());
    EXPECT_EQ(
        QDir(inBundle(u"Contents/_CodeSignature"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{u"CodeResources"_s});
}

TEST_F(BundleSealTest, ChangedMissingAndAddedFilesAreFound) {
    seal();
    writeFile(inBundle(u"Contents/Resources/config.json"_s), "{ }");
    QFile::remove(inBundle(u"Contents/Info.plist"_s));
    writeFile(inBundle(u"Contents/Resources/extra"_s), "x");
    writeFile(inBundle(u"outside"_s), "x");
    const SealDifferences found = differences();
    EXPECT_EQ(found.changed, QStringList{u"Contents/Resources/config.json"_s});
    EXPECT_EQ(found.missing, QStringList{u"Contents/Info.plist"_s});
    EXPECT_EQ(found.added, (QStringList{u"Contents/Resources/extra"_s, u"outside"_s}));
    const SealReport report = BundleSeal::verify(m_bundle);
    EXPECT_EQ(report.finding, Finding::damaged);
    EXPECT_EQ(report.detail, u"changed: Contents/Resources/config.json; missing: Contents/Info.plist; "
                             "added: Contents/Resources/extra, outside"_s);
}

TEST_F(BundleSealTest, ALinkThatLeadsElsewhereIsAChange) {
    seal();
    QFile::remove(inBundle(u"Contents/Resources/link"_s));
    ASSERT_TRUE(QFile::link(u"/etc/passwd"_s, inBundle(u"Contents/Resources/link"_s)));
    EXPECT_EQ(differences().changed, QStringList{u"Contents/Resources/link"_s});
}

TEST_F(BundleSealTest, ALinkInPlaceOfAFileWithTheSameContentsIsAChange) {
    seal();
    QFile::copy(inBundle(u"Contents/Info.plist"_s), m_scratch.path(u"same"_s));
    QFile::remove(inBundle(u"Contents/Info.plist"_s));
    ASSERT_TRUE(QFile::link(m_scratch.path(u"same"_s), inBundle(u"Contents/Info.plist"_s)));
    EXPECT_EQ(differences().changed, QStringList{u"Contents/Info.plist"_s});
}

TEST_F(BundleSealTest, ALostOrGainedExecutableBitIsAChange) {
    seal();
    QFile::setPermissions(inBundle(u"Contents/Linux/WrapioRunner"_s), QFile::ReadOwner);
    QFile::setPermissions(inBundle(u"Contents/Info.plist"_s), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(differences().changed, (QStringList{u"Contents/Info.plist"_s, u"Contents/Linux/WrapioRunner"_s}));
}

TEST_F(BundleSealTest, ABundleWithoutASealIsToldApart) {
    EXPECT_EQ(BundleSeal::verify(m_bundle).finding, Finding::missing);
    EXPECT_EQ(BundleSeal::verify(m_scratch.path(u"gone.app"_s)).finding, Finding::missing);
}

TEST_F(BundleSealTest, ASealThatIsNoPropertyListIsDamage) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("junk"), QByteArray("<plist><dict><key>files2</key>"),
          QByteArray("<plist><array/></plist>"), QByteArray("<plist><dict><key>files2</key><array/></dict></plist>"),
          QByteArray("<plist><dict><key>files2</key><dict><key>a</key><true/></dict></dict></plist>")}) {
        writeFile(inBundle(u"Contents/_CodeSignature/CodeResources"_s), bytes);
        EXPECT_EQ(BundleSeal::verify(m_bundle).finding, Finding::damaged) << bytes.toStdString();
    }
}

TEST_F(BundleSealTest, WhatIsNoBundleIsRefused) {
    ASSERT_TRUE(QDir().mkpath(m_scratch.path(u"empty.app"_s)));
    EXPECT_FALSE(BundleSeal::seal(m_scratch.path(u"empty.app"_s)).has_value());
    EXPECT_FALSE(BundleSeal::seal(m_scratch.path(u"gone.app"_s)).has_value());
}

TEST_F(BundleSealTest, APipeInABundleIsRefusedWithoutWaitingForIt) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(inBundle(u"Contents/pipe"_s)).constData(), 0600), 0);
    const auto sealed = BundleSeal::seal(m_bundle);
    ASSERT_FALSE(sealed.has_value());
    EXPECT_TRUE(sealed.error().message.contains(u"Contents/pipe"_s));
}

TEST_F(BundleSealTest, ASealFolderThatIsALinkDoesNotLeadTheSealOutOfTheBundle) {
    ASSERT_TRUE(QDir().mkpath(m_scratch.path(u"elsewhere"_s)));
    ASSERT_TRUE(QFile::link(m_scratch.path(u"elsewhere"_s), inBundle(u"Contents/_CodeSignature"_s)));
    EXPECT_FALSE(BundleSeal::seal(m_bundle).has_value());
    EXPECT_TRUE(QDir(m_scratch.path(u"elsewhere"_s)).isEmpty());
}

TEST_F(BundleSealTest, NamesThatNoPropertyListCanHoldAreRefused) {
    writeFile(inBundle(u"Contents/bell\a"_s), "x");
    EXPECT_FALSE(BundleSeal::seal(m_bundle).has_value());
    QFile::remove(inBundle(u"Contents/bell\a"_s));
    const QByteArray name = QFile::encodeName(inBundle(u"Contents/"_s)) + "\xFF\xFE";
    FILE* const file = std::fopen(name.constData(), "w");
    ASSERT_NE(file, nullptr);
    std::fclose(file);
    EXPECT_FALSE(BundleSeal::seal(m_bundle).has_value());
    EXPECT_EQ(::unlink(name.constData()), 0) << "Qt would not find it to clean up";
}

}  // namespace

}  // namespace wrapio
