#include "DashboardFixture.h"

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class DashboardActionsTest : public DashboardFixture {
protected:
    DashboardActionsTest() {
        makeDashboard({app(u"Mail"_s), app(u"News"_s), app(u"Chat"_s)});
        makeBundles();
    }

    void remove(std::size_t index) {
        dashboard->requestDelete(record(index));
        dashboard->confirmDelete();
    }
};

const QString launchFailedMessage =
    u"Could not launch 'Mail'. This usually happens if the app bundle was moved or deleted."_s;

}  // namespace

TEST_F(DashboardActionsTest, launches_an_app) {
    dashboard->launchApp(idOf(0));
    EXPECT_EQ(workspace.log, QStringList{u"open-application "_s + bundle(u"Mail.app"_s)});
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardActionsTest, makes_a_missing_bundle_and_launches_it_then) {
    QDir(bundle(u"Mail.app"_s)).removeRecursively();
    DiagnosticsCapture capture;
    dashboard->launchApp(record(0));
    const QStringList lines = capture.lines();
    EXPECT_EQ(lines.front(), u"[Dashboard] App bundle missing, attempting to generate..."_s);
    EXPECT_EQ(lines.back(), u"✅ [AppLifecycle] Launched Mail.app"_s);
    EXPECT_TRUE(hasBundle(u"Mail.app"_s));
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardActionsTest, shows_launch_failed_when_a_missing_bundle_cannot_be_made) {
    QDir(bundle(u"Mail.app"_s)).removeRecursively();
    resources.paths.clear();
    DiagnosticsCapture capture;
    dashboard->launchApp(record(0));
    const QStringList lines = capture.lines();
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(lines.back(), u"Generation/Launch failed: "_s + dashboard->errorData()->error->description());
    EXPECT_EQ(dashboard->errorData()->title, u"Launch Failed"_s);
    EXPECT_EQ(dashboard->errorData()->message, launchFailedMessage);
    EXPECT_TRUE(dashboard->errorData()->error->as<GeneratorError>());
}

TEST_F(DashboardActionsTest, shows_launch_failed_when_the_bundle_is_made_but_not_found) {
    rename(0, u"v1.0"_s);
    DiagnosticsCapture capture;
    dashboard->launchApp(record(0));
    EXPECT_EQ(capture.lines().back(), u"Generation/Launch failed: App bundle not found at: "_s + bundle(u"v1.0.app"_s));
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_TRUE(dashboard->errorData()->error->as<AppLifecycleError>());
}

TEST_F(DashboardActionsTest, shows_launch_failed_at_once_for_any_other_error) {
    DiagnosticsCapture capture;
    dashboard->handleLaunchFailure(record(0), AnyError(LaunchError{u"/x"_s, u"No such file"_s}));
    EXPECT_EQ(capture.lines(), QStringList{u"Launch failed: Could not start /x: No such file"_s});
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(dashboard->errorData()->title, u"Launch Failed"_s);
    EXPECT_EQ(dashboard->errorData()->message, launchFailedMessage);
    EXPECT_EQ(workspace.log, QStringList());
}

TEST_F(DashboardActionsTest, makes_the_bundle_again_as_the_recovery_of_a_failed_launch) {
    dashboard->handleLaunchFailure(record(0), AnyError(LaunchError{u"/x"_s, u"No such file"_s}));
    QDir(bundle(u"Mail.app"_s)).removeRecursively();
    dashboard->recoverFromError();
    EXPECT_TRUE(hasBundle(u"Mail.app"_s));
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
    dashboard->recoverFromError();
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardActionsTest, drops_a_failure_of_the_recovery) {
    dashboard->handleLaunchFailure(record(0), AnyError(LaunchError{u"/x"_s, u"No such file"_s}));
    failGeneration();
    dashboard->recoverFromError();
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardActionsTest, recovers_nothing_for_an_app_that_was_removed_meanwhile) {
    const AppConfiguration mail = record(0);
    dashboard->handleLaunchFailure(mail, AnyError(LaunchError{u"/x"_s, u"No such file"_s}));
    store->removeApp(mail.id);
    dashboard->recoverFromError();
    EXPECT_FALSE(hasBundle(u"Mail.app"_s));
    EXPECT_EQ(dashboard->appCount(), 2);
}

TEST_F(DashboardActionsTest, quits_an_app) {
    workspace.start(bundle(u"Mail.app"_s));
    dashboard->quitApp(idOf(0));
    EXPECT_TRUE(workspace.running.empty());
}

TEST_F(DashboardActionsTest, starts_an_app_again_once_it_has_ended) {
    workspace.start(bundle(u"Mail.app"_s));
    scheduler.advance(1.0);
    dashboard->restartApp(idOf(0));
    EXPECT_TRUE(workspace.log.filter(u"open-application"_s).empty());
    scheduler.advance(1.0);
    EXPECT_EQ(workspace.log.last(), u"open-application "_s + bundle(u"Mail.app"_s));
    scheduler.advance(20.0);
    EXPECT_EQ(workspace.log.filter(u"open-application"_s).size(), 1);
}

TEST_F(DashboardActionsTest, starts_an_app_at_once_that_does_not_run) {
    dashboard->restartApp(idOf(0));
    EXPECT_EQ(workspace.log, QStringList{u"open-application "_s + bundle(u"Mail.app"_s)});
}

TEST_F(DashboardActionsTest, gives_up_a_restart_when_the_app_does_not_end_in_time) {
    const RunningApplication running = workspace.start(bundle(u"Mail.app"_s));
    scheduler.advance(1.0);
    dashboard->restartApp(idOf(0));
    workspace.running = {running};
    scheduler.advance(10.5);
    workspace.running.clear();
    scheduler.advance(2.0);
    EXPECT_TRUE(workspace.log.filter(u"open-application"_s).empty());
}

TEST_F(DashboardActionsTest, does_not_start_an_app_again_after_the_dashboard_is_gone) {
    workspace.start(bundle(u"Mail.app"_s));
    scheduler.advance(1.0);
    dashboard->restartApp(idOf(0));
    dashboard.reset();
    scheduler.advance(20.0);
    EXPECT_TRUE(workspace.log.filter(u"open-application"_s).empty());
}

TEST_F(DashboardActionsTest, makes_a_bundle_anew_and_shows_a_failure) {
    makeTemplate(u"2.0"_s);
    dashboard->updateApp(idOf(0));
    EXPECT_EQ(record(0).runnerVersion, u"2.0"_s);
    failGeneration();
    dashboard->updateApp(idOf(0));
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(dashboard->errorData()->title, u"Generation Failed"_s);
}

TEST_F(DashboardActionsTest, opens_the_website_of_an_app) {
    dashboard->openWebsite(idOf(0));
    EXPECT_EQ(workspace.log, QStringList{u"open https://example.com/"_s});
    workspace.openAnswers = {false};
    DiagnosticsCapture capture;
    dashboard->openWebsite(idOf(0));
    EXPECT_EQ(capture.lines(), QStringList{u"[Dashboard] Could not open https://example.com/"_s});
}

TEST_F(DashboardActionsTest, deletes_nothing_before_it_is_confirmed) {
    dashboard->requestDelete(record(0));
    ASSERT_TRUE(dashboard->pendingDeleteConfig());
    EXPECT_EQ(dashboard->appCount(), 3);
    dashboard->cancelDelete();
    EXPECT_EQ(dashboard->pendingDeleteConfig(), std::nullopt);
    dashboard->confirmDelete();
    EXPECT_EQ(dashboard->appCount(), 3);
    EXPECT_EQ(dashboard->undoableDelete(), std::nullopt);
}

TEST_F(DashboardActionsTest, removes_bundle_and_record_at_once_and_offers_to_undo_it) {
    favicons.saveIcon(plainImage(32, 32, Qt::green), record(1).id);
    const AppConfiguration news = record(1);
    remove(1);
    EXPECT_FALSE(hasBundle(u"News.app"_s));
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"Chat"_s}));
    EXPECT_EQ(dashboard->pendingDeleteConfig(), std::nullopt);
    ASSERT_TRUE(dashboard->undoableDelete());
    EXPECT_EQ(dashboard->undoableDelete()->config, news);
    EXPECT_EQ(dashboard->undoableDelete()->originalIndex, 1U);
    ASSERT_TRUE(dashboard->undoableDelete()->icon);
    EXPECT_EQ(dashboard->undoableDelete()->icon->pixelColor(0, 0), QColor(Qt::green));
    EXPECT_EQ(dashboard->undoableDelete()->displayName(), u"News"_s);
}

TEST_F(DashboardActionsTest, puts_a_deleted_app_back_at_its_place_and_builds_its_bundle_again) {
    favicons.saveIcon(plainImage(32, 32, Qt::green), record(1).id);
    AppConfiguration news = record(1);
    news.sortOrder = 41;
    store->updateConfiguration(news);
    news = record(1);
    remove(1);
    favicons.deleteSavedIcon(news.id);
    scheduler.advance(4.9);
    dashboard->undoDelete();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
    EXPECT_TRUE(hasBundle(u"News.app"_s));
    EXPECT_EQ(record(1).id, news.id);
    EXPECT_EQ(record(1).sortOrder, 41);
    EXPECT_TRUE(favicons.loadSavedIcon(news.id));
    EXPECT_EQ(dashboard->undoableDelete(), std::nullopt);
    EXPECT_EQ(namesOf(stored()), names());
}

TEST_F(DashboardActionsTest, puts_a_deleted_app_at_the_end_when_the_catalogue_has_shrunk) {
    const QUuid mail = record(0).id;
    const QUuid news = record(1).id;
    remove(2);
    store->removeApp(mail);
    store->removeApp(news);
    store->appendApps({app(u"New"_s)});
    dashboard->undoDelete();
    EXPECT_EQ(names(), (QStringList{u"New"_s, u"Chat"_s}));
}

TEST_F(DashboardActionsTest, ends_the_offer_after_five_seconds) {
    remove(0);
    scheduler.advance(4.99);
    EXPECT_TRUE(dashboard->undoableDelete());
    scheduler.advance(0.02);
    EXPECT_EQ(dashboard->undoableDelete(), std::nullopt);
    dashboard->undoDelete();
    EXPECT_EQ(names(), (QStringList{u"News"_s, u"Chat"_s}));
}

TEST_F(DashboardActionsTest, lets_only_the_second_of_two_deletions_be_undone_for_a_full_five_seconds) {
    remove(0);
    const QUuid firstOffer = dashboard->undoableDelete()->id;
    scheduler.advance(4);
    remove(0);
    EXPECT_NE(dashboard->undoableDelete()->id, firstOffer);
    EXPECT_EQ(dashboard->undoableDelete()->displayName(), u"News"_s);
    scheduler.advance(4.9);
    ASSERT_TRUE(dashboard->undoableDelete());
    dashboard->undoDelete();
    EXPECT_EQ(names(), (QStringList{u"News"_s, u"Chat"_s}));
    dashboard->undoDelete();
    EXPECT_EQ(names(), (QStringList{u"News"_s, u"Chat"_s}));
}

TEST_F(DashboardActionsTest, does_not_let_the_timer_of_an_undone_deletion_end_a_newer_offer) {
    remove(0);
    scheduler.advance(3);
    dashboard->undoDelete();
    scheduler.advance(1);
    remove(0);
    scheduler.advance(4.5);
    EXPECT_TRUE(dashboard->undoableDelete());
    scheduler.advance(0.6);
    EXPECT_EQ(dashboard->undoableDelete(), std::nullopt);
}

TEST_F(DashboardActionsTest, keeps_an_undone_record_whose_bundle_cannot_be_built) {
    remove(0);
    failGeneration();
    DiagnosticsCapture capture;
    dashboard->undoDelete();
    EXPECT_TRUE(capture.lines().last().startsWith(u"Failed to regenerate undone app: "_s));
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardActionsTest, takes_the_end_as_the_place_of_a_record_that_is_no_longer_there) {
    const AppConfiguration mail = record(0);
    dashboard->requestDelete(mail);
    store->removeApp(mail.id);
    dashboard->confirmDelete();
    ASSERT_TRUE(dashboard->undoableDelete());
    EXPECT_EQ(dashboard->undoableDelete()->originalIndex, 2U);
    dashboard->undoDelete();
    EXPECT_EQ(names(), (QStringList{u"News"_s, u"Chat"_s, u"Mail"_s}));
}

TEST_F(DashboardActionsTest, leaves_no_timer_behind_when_it_goes_away) {
    const std::size_t before = scheduler.timers();
    remove(0);
    EXPECT_EQ(scheduler.timers(), before + 1);
    dashboard.reset();
    EXPECT_EQ(scheduler.timers(), before);
    scheduler.advance(10);
}

TEST_F(DashboardActionsTest, deletes_only_the_edited_app_with_undo) {
    dashboard->editApp(idOf(1));
    ASSERT_TRUE(dashboard->editor()->removesOtherApps());
    dashboard->editor()->removeOnlyThisApp();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"Chat"_s}));
    EXPECT_EQ(dashboard->editor(), nullptr);
    dashboard->undoDelete();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
}

}  // namespace wrapio
