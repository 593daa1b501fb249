#include "Platform/Linux/LinuxWorkspace.h"

#include "Fakes/PrintErrors.h"
#include "Fakes/PrintQt.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/ProcessStart.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/System/RunningBundles.h"
#include "Platform/System/TestBundle.h"
#include "Platform/System/Waiting.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <optional>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;

struct LinuxWorkspaceTest : testing::Test {
    LinuxWorkspaceTest() { qputenv("WRAPIO_TEST_REPORT", QFile::encodeName(report)); }
    ~LinuxWorkspaceTest() override {
        for (const char* const name :
             {"WRAPIO_TEST_REPORT", "WRAPIO_TEST_DEAF", "XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
            qunsetenv(name);
    }

    [[nodiscard]] LinuxWorkspace makeWorkspace() {
        return LinuxWorkspace(directories, scheduler, [](const QString& identifier) -> std::optional<QString> {
            return identifier == u"com.example.mail" ? std::optional(u"/apps/Mail.app"_s) : std::nullopt;
        });
    }
    std::optional<LaunchError> open(LinuxWorkspace& opener, const QString& path, bool activates = true) {
        std::optional<std::optional<LaunchError>> result;
        opener.openApplication(path, {activates}, [&result](std::optional<LaunchError> failure) {
            EXPECT_FALSE(result) << "completed twice";
            result = std::move(failure);
        });
        EXPECT_FALSE(result) << "completed before openApplication() returned";
        EXPECT_TRUE(waitUntil([&result] { return result.has_value(); }));
        return result.value_or(std::nullopt);
    }
    /// What the application found when it was started.
    std::map<QString, QString> findings() const {
        std::map<QString, QString> found;
        EXPECT_TRUE(waitUntil([this] { return QFile::exists(report); }));
        QFile file(report);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
            found[line.section(u'=', 0, 0)] = line.section(u'=', 1);
        return found;
    }
    /// The application that is running from the folder of this test.
    [[nodiscard]] std::vector<RunningApplication> applications(const LinuxWorkspace& asked) const {
        auto all = asked.runningApplications();
        std::erase_if(all, [this](const auto& one) { return !one.bundleURL->startsWith(folder.path()); });
        return all;
    }
    RunningApplication openOne(LinuxWorkspace& opener) {
        makeBundle(bundle);
        EXPECT_EQ(open(opener, bundle), std::nullopt);
        // By then it has set its signals up.
        EXPECT_TRUE(waitUntil([this] { return QFile::exists(report); }));
        const auto found = applications(opener);
        EXPECT_EQ(found.size(), 1U);
        return found.empty() ? RunningApplication{} : found.front();
    }

    QTemporaryDir folder;
    RunningBundles running{folder.path()};
    QString report = folder.path() + u"/report"_s;
    Directories directories{folder.path(), std::nullopt, std::nullopt, QString(), QString()};
    QString bundle = directories.generatedApps() + u"/Mail.app"_s;
    QtScheduler scheduler;
    LinuxWorkspace workspace = makeWorkspace();
};

TEST_F(LinuxWorkspaceTest, AnOpenedApplicationRunsFromItsBundle) {
    const RunningApplication application = openOne(workspace);
    EXPECT_EQ(application.bundleURL, bundle);
    EXPECT_EQ(findings()[u"pid"_s], QString::number(application.processIdentifier));
}

TEST_F(LinuxWorkspaceTest, AnApplicationStandsOnItsOwn) {
    std::signal(SIGPIPE, SIG_IGN);
    QFile held(folder.path() + u"/held"_s);
    ASSERT_TRUE(held.open(QIODevice::WriteOnly));
    const int inherited = ::dup(held.handle());
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    sigprocmask(SIG_BLOCK, &blocked, nullptr);
    openOne(workspace);
    sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    ::close(inherited);
    auto found = findings();
    EXPECT_EQ(found[u"session"_s], found[u"pid"_s]);
    EXPECT_EQ(found[u"folder"_s], folder.path());
    EXPECT_EQ(found[u"files"_s], u"0:/dev/null 1:/dev/null 2:/dev/null "_s);
    EXPECT_EQ(found[u"arguments"_s], u"0"_s);
    EXPECT_EQ(found[u"blocksSignals"_s], u"0"_s);
    EXPECT_EQ(found[u"ignoresPipe"_s], u"0"_s);
}

TEST_F(LinuxWorkspaceTest, TheTokenOfTheDesktopIsHandedOn) {
    workspace.setActivationToken("token-1");
    openOne(workspace);
    auto found = findings();
    EXPECT_EQ(found[u"token"_s], u"token-1"_s);
    EXPECT_EQ(found[u"startup"_s], u"token-1"_s);
}

TEST_F(LinuxWorkspaceTest, TheTokenThatThisProgramWasStartedWithIsHandedOn) {
    qputenv("DESKTOP_STARTUP_ID", "startup-1");
    LinuxWorkspace started = makeWorkspace();
    openOne(started);
    EXPECT_EQ(findings()[u"token"_s], u"startup-1"_s);
}

TEST_F(LinuxWorkspaceTest, ATokenIsUsedOnce) {
    qputenv("XDG_ACTIVATION_TOKEN", "token-1");
    LinuxWorkspace started = makeWorkspace();
    openOne(started);
    EXPECT_EQ(findings()[u"token"_s], u"token-1"_s);
    ASSERT_TRUE(QFile::remove(report));
    const QString other = directories.generatedApps() + u"/Other.app"_s;
    makeBundle(other);
    EXPECT_EQ(open(started, other), std::nullopt);
    EXPECT_EQ(findings()[u"token"_s], u"(unset)"_s);
}

TEST_F(LinuxWorkspaceTest, AnApplicationThatIsNotToComeToTheFrontGetsNoToken) {
    workspace.setActivationToken("token-1");
    makeBundle(bundle);
    EXPECT_EQ(open(workspace, bundle, false), std::nullopt);
    EXPECT_EQ(findings()[u"token"_s], u"(unset)"_s);
}

TEST_F(LinuxWorkspaceTest, AnApplicationThatRunsIsNotStartedAgain) {
    const RunningApplication application = openOne(workspace);
    EXPECT_EQ(open(workspace, bundle + u"/"_s), std::nullopt);
    EXPECT_EQ(applications(workspace), std::vector<RunningApplication>{application});
}

TEST_F(LinuxWorkspaceTest, ABundleThatCannotBeStartedSaysWhy) {
    EXPECT_EQ(open(workspace, bundle)->description(),
              u"Could not start %1: it has no readable Contents/Info.plist"_s.arg(bundle));
    makeBundle(bundle);
    const QString program = bundle + u"/Contents/Linux/WrapioRunner"_s;
    ASSERT_TRUE(QFile::setPermissions(program, QFileDevice::ReadOwner));
    EXPECT_EQ(open(workspace, bundle), (LaunchError{program, u"Permission denied"_s}));
    ASSERT_TRUE(QFile::remove(program));
    EXPECT_EQ(open(workspace, bundle), (LaunchError{program, u"No such file or directory"_s}));
}

TEST_F(LinuxWorkspaceTest, AnExecutableOutsideOfItsBundleIsNotStarted) {
    makeBundle(bundle);
    for (const auto& name : {u"../../../evil"_s, u"/bin/sh"_s, u".."_s, QString()}) {
        PropertyList info;
        info.setText("CFBundleExecutable", name);
        ASSERT_TRUE(LinuxFileSystem().write(bundle + u"/Contents/Info.plist"_s, *info.toXml()));
        EXPECT_EQ(open(workspace, bundle), (LaunchError{bundle, u"its Info.plist names no executable"_s}));
    }
}

TEST_F(LinuxWorkspaceTest, AnApplicationThatIsAskedToEndEndsAndLeavesNoTrace) {
    const RunningApplication application = openOne(workspace);
    EXPECT_TRUE(workspace.terminate(application));
    EXPECT_TRUE(waitUntil([&] { return applications(workspace).empty(); }));
    const auto process = static_cast<pid_t>(application.processIdentifier);
    EXPECT_TRUE(waitUntil([process] { return ::kill(process, 0) == -1 && errno == ESRCH; }));
    EXPECT_FALSE(workspace.terminate(application));
    EXPECT_FALSE(workspace.forceTerminate(application));
}

TEST_F(LinuxWorkspaceTest, AnApplicationThatDoesNotListenCanBeEndedByForce) {
    qputenv("WRAPIO_TEST_DEAF", "1");
    const RunningApplication application = openOne(workspace);
    EXPECT_TRUE(workspace.terminate(application)) << "the request was delivered";
    EXPECT_EQ(applications(workspace).size(), 1U);
    EXPECT_TRUE(workspace.forceTerminate(application));
    EXPECT_TRUE(waitUntil([&] { return applications(workspace).empty(); }));
}

TEST_F(LinuxWorkspaceTest, AProcessThatIsNotTheApplicationIsLeftAlone) {
    const RunningApplication application = openOne(workspace);
    const qint64 process = application.processIdentifier;
    EXPECT_FALSE(workspace.forceTerminate({process, directories.generatedApps() + u"/Other.app"_s}));
    EXPECT_FALSE(workspace.forceTerminate({process, std::nullopt}));
    EXPECT_FALSE(workspace.terminate({0, bundle}));
    EXPECT_FALSE(workspace.terminate({-1, bundle}));
    EXPECT_FALSE(workspace.terminate({::getpid(), bundle}));
    EXPECT_EQ(applications(workspace).size(), 1U);
}

TEST_F(LinuxWorkspaceTest, AnApplicationWhoseBundleIsGoneCanBeEnded) {
    const RunningApplication application = openOne(workspace);
    ASSERT_TRUE(QDir(bundle).removeRecursively());
    EXPECT_EQ(applications(workspace), std::vector<RunningApplication>{application});
    EXPECT_TRUE(workspace.terminate(application));
    EXPECT_TRUE(waitUntil([&] { return applications(workspace).empty(); }));
}

TEST_F(LinuxWorkspaceTest, BundlesBehindALinkAreNamedAsThePersonNamesThem) {
    ASSERT_TRUE(QDir().mkpath(folder.path() + u"/disk"_s));
    ASSERT_TRUE(QFile::link(folder.path() + u"/disk"_s, folder.path() + u"/home"_s));
    directories.home = folder.path() + u"/home"_s;
    bundle = directories.generatedApps() + u"/Mail.app"_s;
    LinuxWorkspace linked = makeWorkspace();
    const RunningApplication application = openOne(linked);
    EXPECT_EQ(application.bundleURL, bundle);
    EXPECT_EQ(open(linked, bundle), std::nullopt);
    EXPECT_EQ(applications(linked).size(), 1U);
    EXPECT_TRUE(linked.terminate(application));
}

TEST_F(LinuxWorkspaceTest, ActivatingWithoutADesktopDoesNothing) {
    const RunningApplication application = openOne(workspace);
    workspace.activate(application, ActivationOptions::activateIgnoringOtherApps);
    workspace.activate({1, std::nullopt}, ActivationOptions::activateIgnoringOtherApps);
    EXPECT_EQ(applications(workspace).size(), 1U);
}

TEST_F(LinuxWorkspaceTest, TheRegistryAnswersForIdentifiers) {
    EXPECT_EQ(workspace.urlForApplication(u"com.example.mail"_s), u"/apps/Mail.app"_s);
    EXPECT_EQ(workspace.urlForApplication(u"com.example.other"_s), std::nullopt);
}

struct OpeningAddresses : LinuxWorkspaceTest {
    /// Makes a script the desktop's handler of a scheme. It writes its first argument down.
    void registerHandler(const QString& scheme) const {
        const QString applications = qEnvironmentVariable("XDG_DATA_HOME") + u"/applications"_s;
        const QString script = folder.path() + u"/handler"_s;
        LinuxFileSystem files;
        ASSERT_TRUE(files.createDirectories(applications));
        ASSERT_TRUE(files.write(script, "#!/bin/sh\nprintf '%s' \"$1\" > \"$0.part\" && mv \"$0.part\" \"$0.out\"\n"));
        ASSERT_TRUE(QFile::setPermissions(script, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
        const QString entry = u"[Desktop Entry]\nType=Application\nName=Handler\nExec=%1 %u\n"
                              "MimeType=x-scheme-handler/%2;\nNoDisplay=true\n"_s.arg(script, scheme);
        ASSERT_TRUE(files.write(applications + u"/com.example.handler.desktop"_s, entry.toUtf8()));
        ASSERT_EQ(runProcess(u"/usr/bin/update-desktop-database"_s, {applications}, 20), 0);
    }
    [[nodiscard]] QByteArray opened() const {
        const QString out = folder.path() + u"/handler.out"_s;
        EXPECT_TRUE(waitUntil([&out] { return QFile::exists(out); }));
        return LinuxFileSystem().read(out, 4096).value_or("(nothing)");
    }
};

TEST_F(OpeningAddresses, AnAddressReachesTheProgramThatIsRegisteredForIt) {
    registerHandler(u"wrapio-0b7c57e2"_s);
    const QString url = u"wrapio-0b7c57e2://import-session?source=a%20b&x='$(date)';#\"end\""_s;
    EXPECT_TRUE(workspace.open(url));
    EXPECT_EQ(opened(), url.toUtf8());
}

TEST_F(OpeningAddresses, AnAddressThatNobodyIsRegisteredForIsNotOpened) {
    EXPECT_FALSE(workspace.open(u"wrapio-nobody://x"_s));
}

TEST_F(OpeningAddresses, WhatIsNoAddressIsNotOpened) {
    for (const auto& text : {u"--help"_s, u"/etc/passwd"_s, u"relative"_s, QString(), u"://x"_s, u"1a:x"_s})
        EXPECT_FALSE(workspace.open(text));
}

struct OpeningWithoutGio : LinuxWorkspaceTest {
    OpeningWithoutGio() { qputenv("PATH", QFile::encodeName(folder.path())); }
    ~OpeningWithoutGio() override { qputenv("PATH", before); }
    void install(const QString& program, const QByteArray& script) const {
        ASSERT_TRUE(LinuxFileSystem().write(folder.path() + u'/' + program, "#!/bin/sh\n" + script));
        ASSERT_TRUE(
            QFile::setPermissions(folder.path() + u'/' + program, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    }
    QByteArray before = qgetenv("PATH");
};

TEST_F(OpeningWithoutGio, NothingIsOpenedWithoutAnyTool) {
    EXPECT_FALSE(workspace.open(u"https://example.com/"_s));
}

TEST_F(OpeningWithoutGio, TheOtherToolOpensAddressesOfTheWebOnly) {
    install(u"xdg-open"_s, "exit 0\n");
    EXPECT_TRUE(workspace.open(u"https://example.com/"_s));
    EXPECT_FALSE(workspace.open(u"wrapio-x://import-session"_s));
}

TEST_F(OpeningWithoutGio, AToolThatFailsHasOpenedNothing) {
    install(u"gio"_s, "exit 2\n");
    EXPECT_FALSE(workspace.open(u"https://example.com/"_s));
}

}  // namespace
}  // namespace wrapio
