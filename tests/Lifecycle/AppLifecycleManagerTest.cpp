#include "Services/AppLifecycleManager.h"

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/LifecycleFixture.h"

#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString codesign = u"/usr/bin/codesign"_s;

}  // namespace

class AppLifecycleManagerTest : public LifecycleFixture {
protected:
    /// One record in the catalogue, and a manager.
    AppConfiguration start(const QString& name = u"Mail"_s) {
        storeList({record(name)});
        makeStore();
        makeLifecycle();
        return store->configurations().front();
    }
    [[nodiscard]] QString importURL(const AppConfiguration& config) const {
        return u"wrapio-"_s + canonicalText(config.id).toLower() + u"://import-session"_s;
    }
};

TEST_F(AppLifecycleManagerTest, puts_an_underscore_for_each_forbidden_character) {
    makeLifecycle();
    EXPECT_EQ(lifecycle->getBundleURL(record(u"Mail: Work/Home"_s)), bundle(u"Mail_ Work_Home.app"_s));
}

TEST_F(AppLifecycleManagerTest, names_a_bundle_of_underscores_for_a_name_of_separators) {
    makeLifecycle();
    EXPECT_EQ(lifecycle->getBundleURL(record(u"//"_s)), bundle(u"__.app"_s));
}

TEST_F(AppLifecycleManagerTest, shows_both_records_of_one_display_name_as_running) {
    storeList({record(u"Mail"_s), record(u"Mail"_s), record(u"Other"_s)});
    makeStore();
    workspace.start(bundle(u"Mail.app"_s));
    makeLifecycle();
    scheduler.runPending();
    EXPECT_EQ(lifecycle->runningAppIds(),
              (AppLifecycleManager::Ids{store->configurations()[0].id, store->configurations()[1].id}));
}

TEST_F(AppLifecycleManagerTest, looks_at_once_and_then_every_second) {
    const AppConfiguration config = start();
    EXPECT_EQ(scheduler.timers(), 1U);
    workspace.start(bundle(u"Mail.app"_s));
    scheduler.advance(0.9);
    EXPECT_TRUE(lifecycle->runningAppIds().empty());
    scheduler.advance(0.2);
    EXPECT_EQ(lifecycle->runningAppIds(), AppLifecycleManager::Ids{config.id});
    workspace.running.clear();
    scheduler.advance(1);
    EXPECT_TRUE(lifecycle->runningAppIds().empty());
}

TEST_F(AppLifecycleManagerTest, publishes_real_changes_only_and_in_a_later_turn) {
    start();
    int told = 0;
    const auto subscription =
        lifecycle->runningAppIdsProperty().onWillChange([&](const AppLifecycleManager::Ids&) { ++told; });
    scheduler.advance(3);
    EXPECT_EQ(told, 0);
    workspace.start(bundle(u"Mail.app"_s));
    lifecycle->checkRunningApps();
    EXPECT_EQ(told, 0);
    scheduler.runPending();
    EXPECT_EQ(told, 1);
    scheduler.advance(5);
    EXPECT_EQ(told, 1);
}

TEST_F(AppLifecycleManagerTest, assigns_nothing_without_configurations_or_running_applications) {
    makeLifecycle();
    int told = 0;
    const auto subscription =
        lifecycle->runningAppIdsProperty().onWillChange([&](const AppLifecycleManager::Ids&) { ++told; });
    workspace.start(bundle(u"Mail.app"_s));
    scheduler.advance(2);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(lifecycle->runningAppIds().empty());
}

TEST_F(AppLifecycleManagerTest, never_matches_an_application_without_a_bundle) {
    start();
    workspace.running.push_back({77, std::nullopt});
    scheduler.advance(1);
    EXPECT_TRUE(lifecycle->runningAppIds().empty());
}

TEST_F(AppLifecycleManagerTest, stops_watching_when_it_goes_away) {
    start();
    workspace.start(bundle(u"Mail.app"_s));
    lifecycle->checkRunningApps();
    lifecycle.reset();
    EXPECT_EQ(scheduler.timers(), 0U);
    scheduler.runPending();
}

TEST_F(AppLifecycleManagerTest, launches_a_bundle_and_brings_it_to_the_front) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    DiagnosticsCapture capture;
    ASSERT_TRUE(lifecycle->launch(config));
    EXPECT_EQ(workspace.log, QStringList(u"open-application "_s + bundle(u"Mail.app"_s)));
    EXPECT_EQ(capture.lines(), QStringList(u"✅ [AppLifecycle] Launched Mail.app"_s));
}

TEST_F(AppLifecycleManagerTest, fails_to_launch_a_missing_bundle_without_a_line) {
    const AppConfiguration config = start();
    DiagnosticsCapture capture;
    const auto launched = lifecycle->launch(config);
    ASSERT_FALSE(launched);
    EXPECT_EQ(launched.error(), AppLifecycleError::appNotFound(bundle(u"Mail.app"_s)));
    EXPECT_EQ(launched.error().description(), u"App bundle not found at: "_s + bundle(u"Mail.app"_s));
    EXPECT_EQ(capture.lines(), QStringList());
    EXPECT_TRUE(workspace.log.isEmpty());
}

TEST_F(AppLifecycleManagerTest, logs_a_launch_that_the_platform_fails) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    workspace.launchFailure = LaunchError{u"/x"_s, u"Permission denied"_s};
    DiagnosticsCapture capture;
    EXPECT_TRUE(lifecycle->launch(config));
    EXPECT_EQ(capture.lines(), QStringList(u"❌ [AppLifecycle] Failed to launch Mail.app: "_s +
                                           workspace.launchFailure->description()));
}

TEST_F(AppLifecycleManagerTest, focuses_the_first_process_of_a_running_app) {
    const AppConfiguration config = start();
    const auto first = workspace.start(bundle(u"Mail.app"_s));
    workspace.start(bundle(u"Mail.app"_s));
    DiagnosticsCapture capture;
    lifecycle->focus(config);
    EXPECT_EQ(workspace.log, QStringList(u"activate %1 2"_s.arg(first.processIdentifier)));
    EXPECT_EQ(capture.lines(), QStringList(u"✅ [AppLifecycle] Focused app: Mail"_s));
}

TEST_F(AppLifecycleManagerTest, warns_when_the_app_to_focus_does_not_run_and_does_not_launch_it) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    DiagnosticsCapture capture;
    lifecycle->focus(config);
    EXPECT_TRUE(workspace.log.isEmpty());
    EXPECT_EQ(capture.lines(), QStringList(u"⚠️ [AppLifecycle] Could not find running app to focus: Mail"_s));
}

TEST_F(AppLifecycleManagerTest, forces_an_app_to_end_only_when_it_cannot_be_asked) {
    const AppConfiguration config = start();
    const auto polite = workspace.start(bundle(u"Mail.app"_s));
    lifecycle->quit(config);
    EXPECT_EQ(workspace.log, QStringList(u"terminate %1"_s.arg(polite.processIdentifier)));
    const auto deaf = workspace.start(bundle(u"Mail.app"_s));
    workspace.deafProcesses.insert(deaf.processIdentifier);
    workspace.log.clear();
    lifecycle->quit(config);
    EXPECT_EQ(workspace.log, QStringList({u"terminate %1"_s.arg(deaf.processIdentifier),
                                          u"force-terminate %1"_s.arg(deaf.processIdentifier)}));
}

TEST_F(AppLifecycleManagerTest, does_nothing_to_quit_an_app_that_does_not_run) {
    const AppConfiguration config = start();
    DiagnosticsCapture capture;
    lifecycle->quit(config);
    EXPECT_TRUE(workspace.log.isEmpty());
    EXPECT_EQ(capture.lines(), QStringList());
}

TEST_F(AppLifecycleManagerTest, generates_a_bundle_and_records_the_version) {
    const AppConfiguration config = start();
    DiagnosticsCapture capture;
    ASSERT_TRUE(lifecycle->generate(config));
    EXPECT_TRUE(files.exists(bundle(u"Mail.app"_s) + u"/Contents/Resources/config.json"_s));
    EXPECT_EQ(stored().front().runnerVersion, u"1.4.0"_s);
    EXPECT_EQ(capture.lines(),
              QStringList({u"[AppLifecycle] Generating app for Mail"_s,
                           u"[AppLifecycle] Generated successfully at "_s + bundle(u"Mail.app"_s) +
                               u" (Version 1.4.0)"_s}));
    EXPECT_TRUE(scheduler.pauses().empty());
}

TEST_F(AppLifecycleManagerTest, creates_the_apps_folder_on_the_way) {
    const AppConfiguration config = start();
    QDir(home.filePath(u"Applications"_s)).removeRecursively();
    ASSERT_TRUE(lifecycle->generate(config));
    EXPECT_TRUE(files.exists(bundle(u"Mail.app"_s)));
}

TEST_F(AppLifecycleManagerTest, quits_a_running_app_waits_half_a_second_and_replaces_its_bundle) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app/Old"_s);
    const auto running = workspace.start(bundle(u"Mail.app"_s));
    scheduler.advance(1);
    ASSERT_TRUE(lifecycle->generate(config));
    EXPECT_EQ(workspace.log, QStringList(u"terminate %1"_s.arg(running.processIdentifier)));
    EXPECT_EQ(scheduler.pauses(), std::vector<double>{0.5});
    EXPECT_FALSE(files.exists(bundle(u"Mail.app/Old"_s)));
    EXPECT_EQ(stored().front().runnerVersion, u"1.4.0"_s);
    scheduler.runPending();
    EXPECT_TRUE(lifecycle->runningAppIds().empty());
}

TEST_F(AppLifecycleManagerTest, does_not_pause_for_a_bundle_that_does_not_run) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    ASSERT_TRUE(lifecycle->generate(config));
    EXPECT_TRUE(scheduler.pauses().empty());
}

TEST_F(AppLifecycleManagerTest, passes_on_a_folder_that_cannot_be_created) {
    const AppConfiguration config = start();
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"createDirectories"_s ? std::optional(EROFS) : std::nullopt;
    };
    const auto generated = lifecycle->generate(config);
    ASSERT_FALSE(generated);
    ASSERT_TRUE(generated.error().as<FileError>());
    EXPECT_EQ(generated.error().as<FileError>()->code, EROFS);
    EXPECT_FALSE(stored().front().runnerVersion);
}

TEST_F(AppLifecycleManagerTest, passes_on_an_old_bundle_that_cannot_be_removed_and_generates_nothing) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app/Old"_s);
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"remove"_s ? std::optional(EACCES) : std::nullopt;
    };
    DiagnosticsCapture capture;
    EXPECT_FALSE(lifecycle->generate(config));
    EXPECT_EQ(capture.lines(), QStringList(u"[AppLifecycle] Generating app for Mail"_s));
    EXPECT_FALSE(stored().front().runnerVersion);
}

TEST_F(AppLifecycleManagerTest, passes_on_what_the_generator_fails_with) {
    const AppConfiguration config = start();
    tools.answer(codesign, ToolResult{3, "", "no identity"});
    const auto generated = lifecycle->generate(config);
    ASSERT_FALSE(generated);
    ASSERT_TRUE(generated.error().as<CodeSigningError>());
    EXPECT_EQ(generated.error().as<CodeSigningError>()->code, 3);
    EXPECT_FALSE(stored().front().runnerVersion);
}

TEST_F(AppLifecycleManagerTest, opens_the_bare_import_address_for_an_absent_and_an_empty_source) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    ASSERT_TRUE(lifecycle->openImportSession(config, std::nullopt));
    ASSERT_TRUE(lifecycle->openImportSession(config, u""_s));
    EXPECT_EQ(workspace.log, QStringList({u"open "_s + importURL(config), u"open "_s + importURL(config)}));
}

TEST_F(AppLifecycleManagerTest, names_the_source_percent_encoded) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    ASSERT_TRUE(lifecycle->openImportSession(config, u"Fire fox&x=1"_s));
    EXPECT_EQ(workspace.log, QStringList(u"open "_s + importURL(config) + u"?source=Fire%20fox%26x%3D1"_s));
}

TEST_F(AppLifecycleManagerTest, generates_a_missing_bundle_before_it_opens_the_import) {
    const AppConfiguration config = start();
    ASSERT_TRUE(lifecycle->openImportSession(config, std::nullopt));
    EXPECT_TRUE(files.exists(bundle(u"Mail.app"_s)));
    EXPECT_EQ(workspace.log, QStringList(u"open "_s + importURL(config)));
}

TEST_F(AppLifecycleManagerTest, generates_and_tries_once_more_when_the_import_cannot_be_opened) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    workspace.openAnswers = {false, true};
    ASSERT_TRUE(lifecycle->openImportSession(config, std::nullopt));
    EXPECT_EQ(workspace.log.size(), 2);
    EXPECT_EQ(stored().front().runnerVersion, u"1.4.0"_s);
}

TEST_F(AppLifecycleManagerTest, launches_the_app_when_the_import_cannot_be_opened_twice) {
    const AppConfiguration config = start();
    makeBundle(u"Mail.app"_s);
    workspace.openAnswers = {false, false};
    ASSERT_TRUE(lifecycle->openImportSession(config, std::nullopt));
    EXPECT_EQ(workspace.log.last(), u"open-application "_s + bundle(u"Mail.app"_s));
    EXPECT_EQ(workspace.log.size(), 3);
}

TEST_F(AppLifecycleManagerTest, passes_on_a_generation_that_fails_on_the_way_to_the_import) {
    const AppConfiguration config = start();
    resources.paths.clear();
    const auto opened = lifecycle->openImportSession(config, std::nullopt);
    ASSERT_FALSE(opened);
    EXPECT_TRUE(opened.error().as<GeneratorError>());
    EXPECT_TRUE(workspace.log.isEmpty());
}

}  // namespace wrapio
