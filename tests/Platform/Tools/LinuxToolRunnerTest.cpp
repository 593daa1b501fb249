#include "Platform/Linux/LinuxToolRunner.h"

#include "Fakes/PrintQt.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Linux/BundleSeal.h"
#include "Platform/Tools/ToolTestSupport.h"

#include <QDir>
#include <QFile>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString codesign = u"/usr/bin/codesign"_s;
const QString iconutil = u"/usr/bin/iconutil"_s;
const QString ditto = u"/usr/bin/ditto"_s;
const QString lsregister =
    u"/System/Library/Frameworks/CoreServices.framework/Frameworks/LaunchServices.framework/Support/lsregister"_s;

class LinuxToolRunnerTest : public testing::Test {
protected:
    ToolResult run(const QString& tool, const QStringList& arguments) {
        const auto result = m_tools.run(tool, arguments);
        EXPECT_TRUE(result.has_value());
        return result.value_or(ToolResult{-1, {}, {}});
    }
    void expectOneLine(const ToolResult& result) {
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.standardOutput, "");
        EXPECT_TRUE(result.standardError.endsWith('\n'));
        EXPECT_EQ(result.standardError.count('\n'), 1) << result.standardError.toStdString();
        EXPECT_TRUE(QString::fromUtf8(result.standardError).toUtf8() == result.standardError);
    }

    ScratchFolder m_scratch;
    ProcessToolRunner m_processes;
    DesktopRegistration m_registration{m_scratch.path(u"data"_s), std::nullopt, m_processes};
    LinuxToolRunner m_tools{m_registration};
};

TEST_F(LinuxToolRunnerTest, ExactlyTheFourToolsExist) {
    for (const QString& tool : {codesign, iconutil, ditto, lsregister})
        EXPECT_TRUE(m_tools.exists(tool));
    for (const QString& tool : {u"/usr/bin/true"_s, u"codesign"_s, u""_s})
        EXPECT_FALSE(m_tools.exists(tool));
}

TEST_F(LinuxToolRunnerTest, AnyOtherToolIsALaunchError) {
    const auto result = m_tools.run(u"/usr/bin/true"_s, {});
    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(result.error().description(), u"Could not start /usr/bin/true: No such file or directory"_s);
}

TEST_F(LinuxToolRunnerTest, OtherArgumentsAreRefusedWithTheUsage) {
    const std::vector<std::pair<QString, QStringList>> lines{
        {codesign, {}},
        {codesign, {u"--force"_s, u"--sign"_s, u"-"_s, u"/a.app"_s}},
        {codesign, {u"--force"_s, u"--deep"_s, u"--sign"_s, u"-"_s, u""_s}},
        {codesign, {u"--verify"_s, u"/a.app"_s}},
        {iconutil, {u"-c"_s, u"iconset"_s, u"/a"_s, u"-o"_s, u"/b"_s}},
        {lsregister, {u"-f"_s}},
        {lsregister, {u"-kill"_s, u"/a.app"_s}},
        {ditto, {u"/a"_s, u"/b"_s}},
        {ditto, {u"-c"_s, u"-k"_s, u"/a"_s, u"/b"_s}},
        {ditto, {u"-x"_s, u"-k"_s, u"/a"_s, u"/b"_s, u"/c"_s}},
    };
    for (const auto& [tool, arguments] : lines) {
        const ToolResult result = run(tool, arguments);
        EXPECT_EQ(result.status, 64) << tool.toStdString() << arguments.join(u' ').toStdString();
        EXPECT_TRUE(result.standardError.startsWith("usage: "));
        EXPECT_EQ(result.standardError.count('\n'), 1);
    }
}

TEST_F(LinuxToolRunnerTest, ABundleIsSealedRegisteredAndUnregistered) {
    const TestBundle mail{m_scratch.path(u"Mail.app"_s)};
    mail.write();
    EXPECT_EQ(run(codesign, {u"--force"_s, u"--deep"_s, u"--sign"_s, u"-"_s, mail.path}).status, 0);
    EXPECT_EQ(BundleSeal::verify(mail.path).finding, Finding::fine);
    EXPECT_EQ(run(lsregister, {u"-f"_s, mail.path}).status, 0);
    EXPECT_EQ(m_registration.registry().bundlePath(mail.identifier), mail.path);
    EXPECT_EQ(run(lsregister, {u"-u"_s, mail.path}).status, 0);
    EXPECT_FALSE(m_registration.registry().bundlePath(mail.identifier));
}

TEST_F(LinuxToolRunnerTest, AnIconSetBecomesAnIconFileOverAnOlderOne) {
    writeIconset(m_scratch.path(u"a.iconset"_s));
    const QString icns = m_scratch.path(u"out/AppIcon.icns"_s);
    writeFile(icns, "old");
    const QStringList arguments{u"-c"_s, u"icns"_s, m_scratch.path(u"a.iconset"_s), u"-o"_s, icns};
    EXPECT_EQ(run(iconutil, arguments).status, 0);
    EXPECT_TRUE(readFile(icns).startsWith("icns"));
    EXPECT_EQ(QDir(m_scratch.path(u"out"_s)).entryList(QDir::Files | QDir::Hidden), QStringList{u"AppIcon.icns"_s});
}

TEST_F(LinuxToolRunnerTest, AFolderIsPackedAndUnpacked) {
    writeFile(m_scratch.path(u"from/icons/a.png"_s), "icon");
    writeFile(m_scratch.path(u"from/manifest.json"_s), "{}");
    const QString zip = m_scratch.path(u"My Apps.wrapio"_s);
    EXPECT_EQ(run(ditto, {u"-c"_s, u"-k"_s, u"--sequesterRsrc"_s, m_scratch.path(u"from"_s), zip}).status, 0);
    EXPECT_EQ(run(ditto, {u"-x"_s, u"-k"_s, zip, m_scratch.path(u"to"_s)}).status, 0);
    EXPECT_EQ(contentsOf(m_scratch.path(u"to"_s)), contentsOf(m_scratch.path(u"from"_s)));
}

TEST_F(LinuxToolRunnerTest, EveryFailureIsOneLineOnStandardError) {
    const QString missing = m_scratch.path(u"no\nsuch"_s);
    expectOneLine(run(codesign, {u"--force"_s, u"--deep"_s, u"--sign"_s, u"-"_s, missing}));
    expectOneLine(run(iconutil, {u"-c"_s, u"icns"_s, missing, u"-o"_s, m_scratch.path(u"x"_s)}));
    expectOneLine(run(lsregister, {u"-f"_s, missing}));
    expectOneLine(run(ditto, {u"-c"_s, u"-k"_s, u"--sequesterRsrc"_s, missing, m_scratch.path(u"x"_s)}));
    expectOneLine(run(ditto, {u"-x"_s, u"-k"_s, missing, m_scratch.path(u"x"_s)}));
    writeIconset(m_scratch.path(u"a.iconset"_s));
    expectOneLine(run(iconutil, {u"-c"_s, u"icns"_s, m_scratch.path(u"a.iconset"_s), u"-o"_s, missing + u"/x"_s}));
}

}  // namespace

}  // namespace wrapio
