#include "DashboardFixture.h"

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Three outdated apps with a current one between them.
class DashboardCollectionTest : public DashboardFixture {
protected:
    DashboardCollectionTest() {
        makeDashboard({app(u"One"_s, u"https://one.example/"_s, u"1.0"_s), app(u"Current"_s),
                       app(u"Two"_s, u"https://two.example/"_s, u"1.0"_s),
                       app(u"Three"_s, u"https://three.example/"_s, u"1.0"_s)});
        makeBundles();
        m_progress = dashboard->updateProgressProperty().onDidChange([this] {
            const auto progress = dashboard->updateProgress();
            log << (progress ? u"%1 of %2"_s.arg(progress->current).arg(progress->total) : u"none"_s);
        });
        m_running = dashboard->isUpdatingAllProperty().onDidChange(
            [this] { log << (dashboard->isUpdatingAll() ? u"running"_s : u"idle"_s); });
    }

    QStringList log;

private:
    Subscription m_progress;
    Subscription m_running;
};

const AnyError failure(FileError{u"write"_s, u"/x"_s, ENOSPC});

}  // namespace

TEST_F(DashboardCollectionTest, updates_every_outdated_app_in_catalogue_order) {
    const AppConfiguration current = record(1);
    dashboard->updateAllApps();
    EXPECT_TRUE(dashboard->isUpdatingAll());
    EXPECT_EQ(dashboard->updateProgress(), (Progress{0, 3}));
    scheduler.runPending();
    EXPECT_EQ(log,
              (QStringList{u"running"_s, u"0 of 3"_s, u"1 of 3"_s, u"2 of 3"_s, u"3 of 3"_s, u"idle"_s, u"none"_s}));
    EXPECT_EQ(dashboard->outdatedCount(), 0);
    EXPECT_EQ(record(1), current);
    EXPECT_EQ(record(3).runnerVersion, u"1.4.0"_s);
}

TEST_F(DashboardCollectionTest, goes_on_when_one_app_fails_and_ends_at_three_of_three) {
    failGeneration(u"Two.app"_s);
    DiagnosticsCapture capture;
    dashboard->updateAllApps();
    scheduler.runPending();
    const QStringList failed = capture.lines().filter(u"Failed to update "_s);
    ASSERT_EQ(failed.size(), 1);
    EXPECT_TRUE(failed.first().startsWith(u"Failed to update Two: "_s));
    EXPECT_EQ(log.filter(u"of"_s).last(), u"3 of 3"_s);
    EXPECT_EQ(log.last(), u"none"_s);
    EXPECT_EQ(namesOf(dashboard->outdatedApps()), QStringList{u"Two"_s});
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardCollectionTest, updates_one_app_per_turn_of_the_event_loop) {
    // A task that is queued behind each step sees exactly one more app done.
    std::vector<int> seen;
    std::function<void()> look = [&] {
        seen.push_back(dashboard->updateProgress() ? dashboard->updateProgress()->current : -1);
        if (dashboard->isUpdatingAll())
            scheduler.async(look);
    };
    dashboard->updateAllApps();
    scheduler.async(look);
    scheduler.runPending();
    EXPECT_THAT(seen, testing::ElementsAre(1, 2, 3, -1));
}

TEST_F(DashboardCollectionTest, ignores_a_second_request_while_it_runs) {
    dashboard->updateAllApps();
    dashboard->updateAllApps();
    scheduler.runPending();
    EXPECT_EQ(log.filter(u"running"_s).size(), 1);
    EXPECT_EQ(log.filter(u"3 of 3"_s).size(), 1);
}

TEST_F(DashboardCollectionTest, does_nothing_when_no_app_is_outdated) {
    makeTemplate(u"1.0"_s);
    dashboard->updateAllApps();
    EXPECT_FALSE(dashboard->isUpdatingAll());
    EXPECT_EQ(log, QStringList());
}

TEST_F(DashboardCollectionTest, takes_each_record_as_it_is_when_its_turn_comes) {
    dashboard->updateAllApps();
    rename(2, u"Renamed"_s);
    store->removeApp(record(3).id);
    scheduler.runPending();
    EXPECT_EQ(names(), (QStringList{u"One"_s, u"Current"_s, u"Renamed"_s}));
    EXPECT_TRUE(hasBundle(u"Renamed.app"_s));
    EXPECT_FALSE(hasBundle(u"Three.app"_s));
    EXPECT_EQ(log.filter(u"of"_s).last(), u"3 of 3"_s);
}

TEST_F(DashboardCollectionTest, stops_between_two_apps_when_the_program_ends) {
    bool isGone = false;
    dashboard->updateAllApps();
    scheduler.async([&] {
        dashboard.reset();
        isGone = true;
    });
    scheduler.runPending();
    EXPECT_TRUE(isGone);
    EXPECT_EQ(record(0).runnerVersion, u"1.4.0"_s);
    EXPECT_EQ(record(2).runnerVersion, u"1.0"_s);
    EXPECT_EQ(stored(), store->configurations());
}

TEST_F(DashboardCollectionTest, exports_the_whole_catalogue_whatever_the_search) {
    dashboard->setSearchText(u"One"_s);
    dashboard->exportApps();
    EXPECT_EQ(exchange.exported, store->configurations());
    EXPECT_EQ(exchange.exportIcons, &favicons);
    EXPECT_TRUE(dashboard->isExchanging());
    exchange.tell({1, 4});
    EXPECT_EQ(dashboard->exchangeProgress(), (Progress{1, 4}));
    DiagnosticsCapture capture;
    exchange.finishExport(std::optional(u"/home/me/My Apps.wrapio"_s));
    EXPECT_EQ(capture.lines(), QStringList{u"[Dashboard] Exported to /home/me/My Apps.wrapio"_s});
    EXPECT_FALSE(dashboard->isExchanging());
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardCollectionTest, says_nothing_when_an_export_is_cancelled) {
    dashboard->exportApps();
    DiagnosticsCapture capture;
    exchange.finishExport(std::optional<QString>());
    EXPECT_EQ(capture.lines(), QStringList());
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
    EXPECT_FALSE(dashboard->isExchanging());
}

TEST_F(DashboardCollectionTest, shows_export_failed) {
    dashboard->exportApps();
    exchange.finishExport(tl::unexpected(failure));
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(dashboard->errorData()->title, u"Export Failed"_s);
    EXPECT_EQ(dashboard->errorData()->message, u"Could not export app collection."_s);
    EXPECT_EQ(dashboard->errorData()->details(), failure.description());
    EXPECT_FALSE(dashboard->errorData()->isRecoverable());
}

TEST_F(DashboardCollectionTest, imports_into_the_store_with_progress) {
    dashboard->importApps();
    EXPECT_EQ(exchange.importedInto, store.get());
    EXPECT_EQ(exchange.importIcons, &favicons);
    EXPECT_EQ(exchange.importLifecycle, lifecycle.get());
    exchange.tell({2, 5});
    EXPECT_EQ(dashboard->exchangeProgress(), (Progress{2, 5}));
    DiagnosticsCapture capture;
    exchange.finishImport(5);
    EXPECT_EQ(capture.lines(), QStringList{u"[Dashboard] Imported 5 app(s)"_s});
    EXPECT_EQ(dashboard->exchangeProgress(), std::nullopt);
    EXPECT_FALSE(dashboard->isExchanging());
}

TEST_F(DashboardCollectionTest, shows_import_failed) {
    dashboard->importApps();
    exchange.finishImport(tl::unexpected(failure));
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(dashboard->errorData()->title, u"Import Failed"_s);
    EXPECT_EQ(dashboard->errorData()->message, u"Could not import app collection."_s);
    EXPECT_EQ(dashboard->errorData()->details(), failure.description());
}

TEST_F(DashboardCollectionTest, runs_one_exchange_at_a_time) {
    dashboard->importApps();
    dashboard->importApps();
    dashboard->exportApps();
    EXPECT_EQ(exchange.imports, 1);
    EXPECT_EQ(exchange.exports, 0);
    exchange.finishImport(0);
    dashboard->exportApps();
    EXPECT_EQ(exchange.exports, 1);
    dashboard->exportApps();
    EXPECT_EQ(exchange.exports, 1);
}

TEST_F(DashboardCollectionTest, ends_an_import_when_the_program_ends) {
    dashboard->importApps();
    ASSERT_TRUE(exchange.isAwaited());
    dashboard.reset();
    EXPECT_FALSE(exchange.isAwaited());
}

}  // namespace wrapio
