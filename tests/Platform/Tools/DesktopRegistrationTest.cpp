#include "Platform/Linux/DesktopRegistration.h"

#include "Fakes/PrintQt.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Linux/IcnsFile.h"
#include "Platform/Tools/ToolTestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <optional>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// A system on which no tool is installed.
class NoTools : public ToolRunner {
public:
    bool exists(const QString&) const override { return false; }
    tl::expected<ToolResult, LaunchError> run(const QString& path, const QStringList&) override {
        return tl::unexpected(LaunchError{path, u"No such file or directory"_s});
    }
};

/// A system whose tool fails.
class FailingTools : public ToolRunner {
public:
    bool exists(const QString&) const override { return true; }
    tl::expected<ToolResult, LaunchError> run(const QString&, const QStringList&) override {
        return ToolResult{1, {}, "cannot\nwrite"};
    }
};

class DesktopRegistrationTest : public testing::Test {
protected:
    static constexpr auto id = "com.wrapio.generated.mail-0b7c57e2";

    TestBundle bundle(const QString& fileName = u"Mail.app"_s) const {
        return {m_scratch.path(u"Wrapio Apps/"_s + fileName)};
    }
    void registerFine(const QString& path) {
        const auto registered = m_registration.registerBundle(path);
        ASSERT_TRUE(registered.has_value()) << registered.error().message.toStdString();
    }
    void unregisterFine(const QString& path) {
        const auto done = m_registration.unregisterBundle(path);
        ASSERT_TRUE(done.has_value()) << done.error().message.toStdString();
    }
    [[nodiscard]] QString data(const QString& below) const { return m_dataHome + u'/' + below; }
    [[nodiscard]] QString entry(const QString& desktopId = QString::fromLatin1(id)) const {
        return data(u"applications/%1.desktop"_s.arg(desktopId));
    }
    [[nodiscard]] QString icon(int edge) const {
        return data(u"icons/hicolor/%1x%1/apps/%2.png"_s.arg(edge).arg(QLatin1StringView(id)));
    }
    [[nodiscard]] QByteArray handlers() const { return readFile(data(u"applications/mimeinfo.cache"_s)); }

    ScratchFolder m_scratch;
    ProcessToolRunner m_processes;
    QString m_dataHome = m_scratch.path(u"data"_s);
    DesktopRegistration m_registration{m_dataHome, u"/opt/wrapio/bin/wrapio"_s, m_processes};
};

TEST_F(DesktopRegistrationTest, ARegisteredBundleHasAValidEntryUnderItsIdentifier) {
    const TestBundle mail = bundle();
    mail.write();
    registerFine(mail.path);
    EXPECT_EQ(outputOf(u"/usr/bin/desktop-file-validate"_s, {entry()}), "");
    const QByteArray text = readFile(entry());
    EXPECT_TRUE(text.contains("\nName=Mail\n"));
    EXPECT_TRUE(text.contains("\nX-Wrapio-Bundle=" + mail.path.toUtf8() + "\n"));
    EXPECT_TRUE(text.contains("edit \"0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40\"\n"));
    EXPECT_TRUE(handlers().contains("x-scheme-handler/wrapio-0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40="
                                    "com.wrapio.generated.mail-0b7c57e2.desktop"));
}

TEST_F(DesktopRegistrationTest, AnIdentifierElementThatBeginsWithADigitGetsAnUnderscore) {
    TestBundle mail = bundle();
    mail.identifier = u"com.wrapio.generated.9gag-0b7c57e2"_s;
    mail.write();
    registerFine(mail.path);
    EXPECT_TRUE(QFile::exists(entry(u"com.wrapio.generated._9gag-0b7c57e2"_s)));
    EXPECT_EQ(m_registration.registry().bundlePath(mail.identifier), mail.path);
}

TEST_F(DesktopRegistrationTest, TheIconIsThereInTheSizesThatDesktopsLookFor) {
    TestBundle mail = bundle();
    mail.withIcon = true;
    mail.write();
    registerFine(mail.path);
    for (const int edge : {48, 64, 128, 256, 512})
        EXPECT_EQ(squarePngEdge(readFile(icon(edge))), edge) << edge;
    const auto pictures = pngPicturesOfIcns(readFile(mail.path + u"/Contents/Resources/AppIcon.icns"_s));
    EXPECT_EQ(readFile(icon(128)), pictures->at(128));
}

TEST_F(DesktopRegistrationTest, IconCachesAreOlderThanTheThemeAfterwards) {
    TestBundle mail = bundle();
    mail.withIcon = true;
    mail.write();
    ASSERT_TRUE(QDir().mkpath(data(u"icons/hicolor"_s)));
    outputOf(u"/usr/bin/touch"_s, {u"-d"_s, u"2001-01-01"_s, data(u"icons/hicolor"_s)});
    registerFine(mail.path);
    EXPECT_GT(QFileInfo(data(u"icons/hicolor"_s)).lastModified().date().year(), 2001);
    outputOf(u"/usr/bin/touch"_s, {u"-d"_s, u"2001-01-01"_s, data(u"icons/hicolor"_s)});
    unregisterFine(mail.path);
    EXPECT_GT(QFileInfo(data(u"icons/hicolor"_s)).lastModified().date().year(), 2001);
}

TEST_F(DesktopRegistrationTest, ABundleThatHasNoIconAnyMoreKeepsNoOldPictures) {
    TestBundle mail = bundle();
    mail.withIcon = true;
    mail.write();
    registerFine(mail.path);
    QFile::remove(mail.path + u"/Contents/Resources/AppIcon.icns"_s);
    registerFine(mail.path);
    EXPECT_FALSE(QFile::exists(icon(128)));
}

TEST_F(DesktopRegistrationTest, ABrokenIconDoesNotKeepABundleFromBeingRegistered) {
    const TestBundle mail = bundle();
    mail.write();
    for (const QByteArray& bytes :
         {QByteArray("junk"), QByteArray("icns\0\0\0\x08", 8), QByteArray("icns\xFF\xFF\xFF\xFF")}) {
        writeFile(mail.path + u"/Contents/Resources/AppIcon.icns"_s, bytes);
        registerFine(mail.path);
        EXPECT_FALSE(QFile::exists(icon(128)));
    }
}

TEST_F(DesktopRegistrationTest, UnregisteringRemovesAllOfItAndTheHandlerToo) {
    TestBundle mail = bundle();
    mail.withIcon = true;
    mail.write();
    registerFine(mail.path);
    unregisterFine(mail.path);
    EXPECT_FALSE(QFile::exists(entry()));
    for (const int edge : {48, 64, 128, 256, 512})
        EXPECT_FALSE(QFile::exists(icon(edge))) << edge;
    EXPECT_FALSE(handlers().contains("wrapio"));
}

TEST_F(DesktopRegistrationTest, ABundleThatIsGoneCanBeUnregistered) {
    const TestBundle mail = bundle();
    mail.write();
    registerFine(mail.path);
    ASSERT_TRUE(QDir(mail.path).removeRecursively());
    unregisterFine(mail.path + u"/"_s);
    EXPECT_FALSE(QFile::exists(entry()));
}

TEST_F(DesktopRegistrationTest, UnregisteringWhatIsNotRegisteredIsFine) {
    unregisterFine(m_scratch.path(u"never.app"_s));
    EXPECT_FALSE(QFile::exists(m_dataHome));
}

TEST_F(DesktopRegistrationTest, OfTwoBundlesWithOneIdentifierTheLastWins) {
    const TestBundle first = bundle(u"First.app"_s);
    const TestBundle second = bundle(u"Second.app"_s);
    first.write();
    second.write();
    registerFine(first.path);
    registerFine(second.path);
    EXPECT_EQ(m_registration.registry().bundlePath(first.identifier), second.path);
    unregisterFine(first.path);
    EXPECT_EQ(m_registration.registry().bundlePath(first.identifier), second.path);
    unregisterFine(second.path);
    EXPECT_FALSE(m_registration.registry().bundlePath(first.identifier));
}

TEST_F(DesktopRegistrationTest, ABundleMadeAnewUnderAnotherIdentifierLeavesNoOldEntry) {
    TestBundle mail = bundle();
    mail.write();
    registerFine(mail.path);
    mail.identifier = u"com.wrapio.generated.mail-11111111"_s;
    mail.write();
    registerFine(mail.path);
    const auto registrations = m_registration.registry().registrations();
    ASSERT_EQ(registrations.size(), 1U);
    EXPECT_EQ(registrations.front().identifier, mail.identifier);
}

TEST_F(DesktopRegistrationTest, RegistrationsAreListedAndOtherProgramsEntriesAreNot) {
    TestBundle mail = bundle();
    mail.write();
    registerFine(mail.path);
    TestBundle news = bundle(u"News.app"_s);
    news.identifier = u"com.wrapio.generated.news-22222222"_s;
    news.write();
    registerFine(news.path);
    writeFile(data(u"applications/org.other.App.desktop"_s), "[Desktop Entry]\nName=Other\nExec=true\n");
    ASSERT_TRUE(QDir(mail.path).removeRecursively());
    const auto registrations = m_registration.registry().registrations();
    ASSERT_EQ(registrations.size(), 2U);
    EXPECT_EQ(registrations[0].bundlePath, mail.path);
    EXPECT_EQ(registrations[1].identifier, news.identifier);
    EXPECT_FALSE(m_registration.registry().bundlePath(u"org.other.App"_s));
    unregisterFine(news.path);
    EXPECT_TRUE(QFile::exists(data(u"applications/org.other.App.desktop"_s)));
}

TEST_F(DesktopRegistrationTest, ARegistrationIsRemovedByItsDesktopId) {
    TestBundle mail = bundle();
    mail.withIcon = true;
    mail.write();
    registerFine(mail.path);
    ASSERT_TRUE(m_registration.removeRegistration(QString::fromLatin1(id)).has_value());
    EXPECT_FALSE(QFile::exists(entry()));
    EXPECT_FALSE(QFile::exists(icon(48)));
    EXPECT_TRUE(m_registration.removeRegistration(QString::fromLatin1(id)).has_value());
}

TEST_F(DesktopRegistrationTest, RemovingNeverLeavesTheFolderNorTakesOtherProgramsEntries) {
    writeFile(data(u"applications/org.other.App.desktop"_s), "[Desktop Entry]\nName=Other\n");
    writeFile(data(u"outside.desktop"_s), "[Desktop Entry]\nX-Wrapio-Bundle=/a.app\n");
    EXPECT_TRUE(m_registration.removeRegistration(u"org.other.App"_s).has_value());
    EXPECT_TRUE(m_registration.removeRegistration(u"../outside"_s).has_value());
    EXPECT_TRUE(QFile::exists(data(u"applications/org.other.App.desktop"_s)));
    EXPECT_TRUE(QFile::exists(data(u"outside.desktop"_s)));
}

TEST_F(DesktopRegistrationTest, UnusableIdentifiersAreRefused) {
    for (const QString& identifier : {u""_s, u"single"_s, u"a..b"_s, u"../../evil"_s, u"com.a/b"_s, u"com.größe"_s,
                                      u"com."_s + QString(300, u'a')}) {
        TestBundle mail = bundle();
        mail.identifier = identifier;
        mail.write();
        EXPECT_FALSE(m_registration.registerBundle(mail.path).has_value()) << identifier.toStdString();
    }
    EXPECT_TRUE(m_registration.registry().registrations().empty());
}

TEST_F(DesktopRegistrationTest, WhatIsNoBundleIsRefusedWithTheReason) {
    const auto missing = m_registration.registerBundle(m_scratch.path(u"gone.app"_s));
    ASSERT_FALSE(missing.has_value());
    EXPECT_TRUE(missing.error().message.contains(u"Info.plist"_s));
    const TestBundle mail = bundle();
    mail.write();
    QFile::remove(mail.path + u"/Contents/Linux/WrapioRunner"_s);
    const auto unrunnable = m_registration.registerBundle(mail.path);
    ASSERT_FALSE(unrunnable.has_value());
    EXPECT_TRUE(unrunnable.error().message.endsWith(u"WrapioRunner: not an executable file"_s));
    writeFile(mail.path + u"/Contents/Info.plist"_s, "junk");
    EXPECT_FALSE(m_registration.registerBundle(mail.path).has_value());
}

TEST_F(DesktopRegistrationTest, ABundleCannotTakeASchemeThatIsNotItsOwn) {
    for (const QString& scheme :
         {u"https"_s, u"wrapio"_s, u"wrapio-a;x-scheme-handler/https"_s, u"wrapio-A"_s, u""_s}) {
        TestBundle mail = bundle();
        mail.scheme = scheme;
        mail.write();
        registerFine(mail.path);
        EXPECT_FALSE(readFile(entry()).contains("MimeType")) << scheme.toStdString();
    }
}

TEST_F(DesktopRegistrationTest, AnEmptyNameFallsBackToTheNameOfTheFile) {
    TestBundle mail = bundle(u"My Post.app"_s);
    mail.name = u"\u202E\u200B"_s;
    mail.write();
    registerFine(mail.path);
    EXPECT_TRUE(readFile(entry()).contains("\nName=My Post\n"));
}

TEST_F(DesktopRegistrationTest, ASystemWithoutTheDatabaseToolStillRegisters) {
    NoTools none;
    DesktopRegistration registration(m_dataHome, std::nullopt, none);
    const TestBundle mail = bundle();
    mail.write();
    EXPECT_TRUE(registration.registerBundle(mail.path).has_value());
    EXPECT_TRUE(QFile::exists(entry()));
    EXPECT_FALSE(readFile(entry()).contains("Action"));
    EXPECT_TRUE(registration.unregisterBundle(mail.path).has_value());
    EXPECT_FALSE(QFile::exists(entry()));
}

TEST_F(DesktopRegistrationTest, AFailingDatabaseToolIsToldInOneLine) {
    FailingTools failing;
    DesktopRegistration registration(m_dataHome, std::nullopt, failing);
    const TestBundle mail = bundle();
    mail.write();
    const auto registered = registration.registerBundle(mail.path);
    ASSERT_FALSE(registered.has_value());
    EXPECT_EQ(registered.error().message, u"update-desktop-database failed with status 1: cannot write"_s);
}

TEST_F(DesktopRegistrationTest, AFolderThatCannotBeMadeIsAnError) {
    writeFile(data(u"applications"_s), "a file in the way");
    const TestBundle mail = bundle();
    mail.write();
    EXPECT_FALSE(m_registration.registerBundle(mail.path).has_value());
    EXPECT_EQ(readFile(data(u"applications"_s)), "a file in the way");
}

/// Bundle names and folders that a careless entry would not survive.
class StartedByTheDesktop : public DesktopRegistrationTest,
                            public testing::WithParamInterface<std::pair<const char*, QString>> {
protected:
    /// What the started program wrote, once it is whole.
    [[nodiscard]] QByteArray awaitRecord() const {
        QElapsedTimer timer;
        timer.start();
        QByteArray record;
        while (!record.endsWith("done\n") && timer.elapsed() < 20'000) {
            QThread::msleep(5);
            record = readFile(m_record);
        }
        return record;
    }

    void open(const QString& url) const {
        const ToolResult result =
            runProgram(u"/usr/bin/env"_s, {u"XDG_DATA_HOME="_s + m_dataHome, u"gio"_s, u"open"_s, url});
        ASSERT_EQ(result.status, 0) << result.standardError.toStdString();
    }

    QString m_record = m_scratch.path(u"record"_s);
};

TEST_P(StartedByTheDesktop, TheBundlesProgramGetsTheAddressOfItsScheme) {
    TestBundle mail = bundle(GetParam().second + u".app"_s);
    mail.name = GetParam().second;
    mail.executable = "#!/bin/sh\nprintf '%s\\n' \"$0\" \"$#\" \"$1\" done > '" + m_record.toUtf8() + "'\n";
    mail.write();
    registerFine(mail.path);
    EXPECT_EQ(outputOf(u"/usr/bin/desktop-file-validate"_s, {entry()}), "");
    const QString url = mail.scheme + u"://import-session?source=x"_s;
    open(url);
    EXPECT_EQ(awaitRecord(), (mail.path + u"/Contents/Linux/WrapioRunner\n1\n"_s + url + u"\ndone\n"_s).toUtf8());
}

INSTANTIATE_TEST_SUITE_P(
    DesktopRegistrationTest, StartedByTheDesktop,
    testing::Values(std::pair("OrdinaryName", u"Mail"_s), std::pair("Quotes", u"say \"hi\" 'there' `now` $HOME"_s),
                    std::pair("Percent", u"100%u %% off %F"_s), std::pair("Backslashes", u"a\\b\\\\n\\"_s),
                    std::pair("LineBreaks", u"two\nlines\tand tab"_s),
                    std::pair("RightToLeftMarks", u"a\u202Ecod.exe\u200F"_s),
                    std::pair("Emoji", u"\U0001F468\u200D\U0001F469\u200D\U0001F467 \U0001F388"_s),
                    std::pair("AsLongAsAFileNameMayBe", QString(250, u'x')),
                    std::pair("ShellWords", u"a;b=c&d|e#f (g) *~ <h>"_s), std::pair("LeadingSpace", u" x"_s)),
    [](const auto& row) { return std::string(row.param.first); });

TEST_F(StartedByTheDesktop, ANameOfThreeHundredCharactersIsFine) {
    TestBundle mail = bundle();
    mail.name = QString(300, u'ß');
    mail.write();
    registerFine(mail.path);
    EXPECT_EQ(outputOf(u"/usr/bin/desktop-file-validate"_s, {entry()}), "");
    EXPECT_TRUE(readFile(entry()).contains("\nName=" + mail.name.toUtf8() + "\n"));
}

}  // namespace

}  // namespace wrapio
