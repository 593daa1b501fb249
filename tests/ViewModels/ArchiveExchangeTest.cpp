#include "ViewModels/ArchiveExchange.h"

#include "Fakes/ExchangeFixture.h"

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// A catalogue, and a packer that pretends: an archive of any name holds two apps.
class ArchiveExchangeTest : public ExchangeFixture {
protected:
    ArchiveExchangeTest() {
        storeList({record(u"Mail"_s)});
        makeLifecycle();
        tools.answer(dittoPath, [](const QStringList& arguments) {
            if (arguments.first() == u"-c"_s) {
                writeFile(arguments.last(), "archive");
            } else {
                writeFile(arguments.last() + u"/manifest.json"_s, "{}");
                writeFile(arguments.last() + u"/configs.json"_s,
                          *encodeConfigurations({record(u"A"_s), record(u"B"_s)}));
            }
            return ToolResult{};
        });
    }

    void startExport() {
        task = exchange.exportAll(
            store->configurations(), favicons, [this](const Progress& step) { progress.push_back(step); },
            [this](const tl::expected<std::optional<QString>, AnyError>& result) {
                ++completions;
                exportResult = result;
            });
    }
    void startImport() {
        task = exchange.importCollection(
            *store, favicons, *lifecycle, [this](const Progress& step) { progress.push_back(step); },
            [this](const tl::expected<int, AnyError>& result) {
                ++completions;
                importResult = result;
            });
    }

    ArchiveExchange exchange{tools, files, dialogs, scheduler, directories};
    std::vector<Progress> progress;
    tl::expected<std::optional<QString>, AnyError> exportResult;
    tl::expected<int, AnyError> importResult = -1;
    int completions = 0;
    ScheduledTask task;
};

}  // namespace

TEST_F(ArchiveExchangeTest, exports_to_the_place_that_is_chosen) {
    startExport();
    scheduler.runPending();
    ASSERT_TRUE(dialogs.isOpen());
    dialogs.answer(place(u"Mine.wrapio"_s));
    scheduler.runPending();
    EXPECT_EQ(completions, 1);
    ASSERT_TRUE(exportResult);
    EXPECT_EQ(*exportResult, place(u"Mine.wrapio"_s));
    EXPECT_EQ(readFile(place(u"Mine.wrapio"_s)), "archive");
    EXPECT_EQ(progress.back(), (Progress{1, 1}));
}

TEST_F(ArchiveExchangeTest, answers_nothing_when_saving_is_cancelled) {
    startExport();
    scheduler.runPending();
    dialogs.answer(std::nullopt);
    scheduler.runPending();
    EXPECT_EQ(completions, 1);
    ASSERT_TRUE(exportResult);
    EXPECT_EQ(*exportResult, std::nullopt);
}

TEST_F(ArchiveExchangeTest, passes_the_failure_of_an_export_on) {
    tools.answer(dittoPath, ToolResult{.status = 1, .standardOutput = {}, .standardError = "disk full"});
    startExport();
    scheduler.runPending();
    EXPECT_EQ(completions, 1);
    ASSERT_FALSE(exportResult);
    EXPECT_EQ(exportResult.error().description(), u"Failed to create archive: disk full"_s);
}

TEST_F(ArchiveExchangeTest, imports_the_apps_of_an_archive_with_progress) {
    startImport();
    dialogs.answer(place(u"Theirs.wrapio"_s));
    scheduler.runPending();
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(importResult, 2);
    EXPECT_EQ(namesOf(store->configurations()), (QStringList{u"Mail"_s, u"A"_s, u"B"_s}));
    EXPECT_EQ(progress.back(), (Progress{2, 2}));
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end(),
                               [](const Progress& a, const Progress& b) { return a.current < b.current; }));
}

TEST_F(ArchiveExchangeTest, imports_nothing_when_choosing_is_cancelled) {
    startImport();
    dialogs.answer(std::nullopt);
    scheduler.runPending();
    EXPECT_EQ(importResult, 0);
    EXPECT_EQ(store->configurations().size(), 1U);
}

TEST_F(ArchiveExchangeTest, passes_the_failure_of_an_import_on) {
    tools.answer(dittoPath, ToolResult{.status = 1, .standardOutput = {}, .standardError = "no archive"});
    startImport();
    dialogs.answer(place(u"Theirs.wrapio"_s));
    scheduler.runPending();
    ASSERT_FALSE(importResult);
    EXPECT_EQ(importResult.error().description(), u"Failed to extract archive: no archive"_s);
    EXPECT_EQ(store->configurations().size(), 1U);
}

TEST_F(ArchiveExchangeTest, stops_between_two_apps_when_its_task_goes_away) {
    startImport();
    dialogs.answer(place(u"Theirs.wrapio"_s));
    // Looks after every turn and ends the import once the first bundle stands.
    std::function<void()> watch = [&] {
        if (QFile::exists(bundle(u"A.app"_s)))
            task.cancel();
        else
            scheduler.async(watch);
    };
    scheduler.async(watch);
    scheduler.runPending();
    EXPECT_EQ(completions, 0);
    EXPECT_FALSE(QFile::exists(bundle(u"B.app"_s)));
    EXPECT_EQ(stored(), store->configurations());
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(ArchiveExchangeTest, does_not_answer_a_dialog_that_outlives_its_task) {
    startImport();
    task.cancel();
    dialogs.answer(place(u"Theirs.wrapio"_s));
    scheduler.runPending();
    EXPECT_EQ(completions, 0);
    EXPECT_EQ(store->configurations().size(), 1U);
}

}  // namespace wrapio
