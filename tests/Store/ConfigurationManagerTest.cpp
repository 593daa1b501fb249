#include "Models/ConfigurationManager.h"

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/StoreFixture.h"

#include <cerrno>
#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString listKey = u"app_configurations"_s;
const QString singleKey = u"app_configuration"_s;

}  // namespace

class ConfigurationManagerTest : public StoreFixture {
protected:
    /// A store of three records A, B and C.
    void makeThree() {
        storeList({record(u"A"_s), record(u"B"_s), record(u"C"_s)});
        makeStore();
    }
    [[nodiscard]] QUuid id(std::size_t index) const { return store->configurations()[index].id; }
};

TEST_F(ConfigurationManagerTest, reads_only_the_list_when_both_keys_are_present) {
    storeList({record(u"Listed"_s)});
    defaults.values[singleKey] = R"({"appName":"Single"})";
    makeStore();
    EXPECT_EQ(namesOf(store->configurations()), QStringList(u"Listed"_s));
    EXPECT_EQ(store->selectedAppId(), id(0));
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(ConfigurationManagerTest, fails_the_whole_list_for_one_record_and_overwrites_it_with_the_first_change) {
    defaults.values[listKey] = R"([{"appName":"Good"},{"badgeEnabled":"bad"}])";
    makeStore();
    EXPECT_TRUE(store->configurations().empty());
    EXPECT_EQ(defaults.writes, 0);
    store->createApp();
    EXPECT_EQ(stored().size(), 1U);
}

TEST_F(ConfigurationManagerTest, falls_back_to_the_single_record_when_the_list_is_damaged) {
    defaults.values[listKey] = "no json";
    defaults.values[singleKey] = R"({"appName":"Single"})";
    makeBundle(u"Single.app"_s);
    makeStore();
    EXPECT_EQ(namesOf(store->configurations()), QStringList(u"Single"_s));
}

TEST_F(ConfigurationManagerTest, keeps_the_bytes_of_a_damaged_list_before_it_overwrites_them) {
    defaults.values[listKey] = "precious bytes";
    makeStore();
    EXPECT_TRUE(defaults.preserved.empty());
    store->createApp();
    store->createApp();
    EXPECT_EQ(defaults.preserved, (std::vector<QByteArray>{"precious bytes"}));
}

TEST_F(ConfigurationManagerTest, takes_the_single_record_of_older_versions_over_and_leaves_its_key) {
    defaults.values[singleKey] = R"({"appName":"Single"})";
    makeBundle(u"Single.app"_s);
    makeStore();
    EXPECT_EQ(namesOf(stored()), QStringList(u"Single"_s));
    EXPECT_EQ(defaults.values[singleKey], QByteArray(R"({"appName":"Single"})"));
    EXPECT_EQ(store->selectedAppId(), id(0));
}

TEST_F(ConfigurationManagerTest, drops_a_migrated_record_whose_bundle_is_missing) {
    defaults.values[singleKey] = R"({"appName":"Single"})";
    makeStore();
    EXPECT_TRUE(store->configurations().empty());
    EXPECT_TRUE(stored().empty());
}

TEST_F(ConfigurationManagerTest, warns_of_a_migrated_record_that_is_not_registered) {
    defaults.values[singleKey] = R"({"appName":"Single"})";
    makeBundle(u"Single.app"_s);
    DiagnosticsCapture capture;
    makeStore();
    EXPECT_EQ(capture.lines(),
              QStringList(u"⚠️ [ConfigurationManager] Launch Services warning: Not registered: Single"_s));
}

TEST_F(ConfigurationManagerTest, says_that_there_is_no_catalogue_yet) {
    DiagnosticsCapture capture;
    makeStore();
    EXPECT_EQ(capture.lines(), QStringList(u"[ConfigurationManager] No existing config found"_s));
    EXPECT_TRUE(store->configurations().empty());
    EXPECT_FALSE(store->selectedAppId());
}

TEST_F(ConfigurationManagerTest, reports_an_unusable_apps_folder_at_the_start) {
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"createDirectories"_s ? std::optional(EACCES) : std::nullopt;
    };
    QDir(home.filePath(u"Applications"_s)).removeRecursively();
    DiagnosticsCapture capture;
    makeStore();
    EXPECT_TRUE(capture.lines().contains(
        u"❌ [ConfigurationManager] Launch Services error: Apps directory not found"_s));
}

TEST_F(ConfigurationManagerTest, runs_no_maintenance_when_the_list_is_read) {
    storeList({record(u"Without bundle"_s)});
    makeStore();
    EXPECT_EQ(store->configurations().size(), 1U);
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(ConfigurationManagerTest, loads_numbered_records_in_order_and_the_others_after_them) {
    AppConfiguration two = record(u"two"_s), absent = record(u"absent"_s), zero = record(u"zero"_s);
    two.sortOrder = 2;
    zero.sortOrder = 0;
    AppConfiguration absentToo = record(u"absent too"_s);
    storeList({two, absent, zero, absentToo});
    makeStore();
    EXPECT_EQ(namesOf(store->configurations()), QStringList({u"zero"_s, u"two"_s, u"absent"_s, u"absent too"_s}));
}

TEST_F(ConfigurationManagerTest, answers_the_selected_record_else_the_first_else_a_new_one) {
    makeStore();
    EXPECT_EQ(store->configuration().displayName(), u"Wrapio"_s);
    EXPECT_TRUE(store->configurations().empty());
    makeThree();
    store->selectApp(id(1));
    EXPECT_EQ(store->configuration().displayName(), u"B"_s);
    store->selectedAppIdProperty().set(QUuid::createUuid());
    EXPECT_EQ(store->configuration().displayName(), u"A"_s);
}

TEST_F(ConfigurationManagerTest, creates_a_record_at_the_end_and_selects_it) {
    makeThree();
    const AppConfiguration created = store->createApp();
    EXPECT_EQ(created.sortOrder, 3);
    EXPECT_EQ(store->configurations().back(), created);
    EXPECT_EQ(store->selectedAppId(), created.id);
    EXPECT_EQ(stored().back(), created);
}

TEST_F(ConfigurationManagerTest, stamps_a_changed_record_with_the_time) {
    makeThree();
    scheduler.advance(60);
    AppConfiguration changed = store->configurations()[1];
    changed.appName = u"Bee"_s;
    store->updateConfiguration(changed);
    EXPECT_EQ(store->configurations()[1].displayName(), u"Bee"_s);
    EXPECT_EQ(store->configurations()[1].lastUpdated, scheduler.now());
    EXPECT_EQ(namesOf(stored()), QStringList({u"A"_s, u"Bee"_s, u"C"_s}));
}

TEST_F(ConfigurationManagerTest, takes_an_unknown_record_as_the_first_of_an_empty_catalogue) {
    makeStore();
    const AppConfiguration first = record(u"First"_s);
    store->updateConfiguration(first);
    EXPECT_EQ(namesOf(stored()), QStringList(u"First"_s));
    EXPECT_EQ(store->selectedAppId(), first.id);
}

TEST_F(ConfigurationManagerTest, ignores_an_unknown_record_otherwise) {
    makeThree();
    store->updateConfiguration(record(u"Unknown"_s));
    EXPECT_EQ(store->configurations().size(), 3U);
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(ConfigurationManagerTest, removes_a_record_with_its_bundle_registration_and_preview) {
    makeThree();
    const QString bundle = makeBundle(u"B.app"_s);
    const QUuid removed = id(1);
    ASSERT_TRUE(previews.save(QImage(16, 16, QImage::Format_RGB32), removed));
    store->removeApp(removed);
    EXPECT_EQ(tools.calls(), (std::vector<RecordingToolRunner::Call>{{lsregister, {u"-u"_s, bundle}}}));
    EXPECT_FALSE(files.exists(bundle));
    EXPECT_FALSE(previews.load(removed));
    EXPECT_EQ(namesOf(stored()), QStringList({u"A"_s, u"C"_s}));
}

TEST_F(ConfigurationManagerTest, removes_a_record_whose_bundle_is_gone_without_a_tool) {
    makeThree();
    store->removeApp(id(1));
    EXPECT_TRUE(tools.calls().empty());
    EXPECT_EQ(namesOf(stored()), QStringList({u"A"_s, u"C"_s}));
}

TEST_F(ConfigurationManagerTest, goes_on_removing_when_unregistering_fails) {
    makeThree();
    const QString bundle = makeBundle(u"B.app"_s);
    tools.answer(lsregister, ToolResult{1, "sad", ""});
    store->removeApp(id(1));
    EXPECT_FALSE(files.exists(bundle));
    EXPECT_EQ(store->configurations().size(), 2U);
}

TEST_F(ConfigurationManagerTest, reports_a_bundle_that_cannot_be_deleted_and_removes_the_record_all_the_same) {
    makeThree();
    const QString bundle = makeBundle(u"B.app"_s);
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"remove"_s ? std::optional(EACCES) : std::nullopt;
    };
    DiagnosticsCapture capture;
    store->removeApp(id(1));
    EXPECT_TRUE(capture.lines().contains(u"❌ [ConfigurationManager] Failed to delete bundle: Could not remove "_s +
                                         bundle + u": Permission denied"_s));
    EXPECT_EQ(store->configurations().size(), 2U);
}

TEST_F(ConfigurationManagerTest, removes_a_record_by_the_id_that_lies_in_the_catalogue_itself) {
    makeThree();
    store->removeApp(store->configurations()[0].id);
    EXPECT_EQ(namesOf(stored()), QStringList({u"B"_s, u"C"_s}));
    EXPECT_EQ(store->selectedAppId(), id(0));
}

TEST_F(ConfigurationManagerTest, discards_a_record_without_touching_the_bundle_of_its_name) {
    makeThree();
    const QString bundle = makeBundle(u"A.app"_s);
    const QUuid b = id(1);
    store->discardApp(store->configurations()[0].id);
    EXPECT_EQ(namesOf(stored()), QStringList({u"B"_s, u"C"_s}));
    EXPECT_EQ(store->selectedAppId(), b);
    EXPECT_TRUE(QFile::exists(bundle));
    store->discardApp(QUuid::createUuid());
    EXPECT_EQ(store->configurations().size(), 2U);
}

TEST_F(ConfigurationManagerTest, ignores_the_removal_of_an_unknown_record) {
    makeThree();
    store->removeApp(QUuid::createUuid());
    EXPECT_EQ(store->configurations().size(), 3U);
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(ConfigurationManagerTest, selects_the_other_of_two_when_the_selected_one_goes_and_nothing_when_the_last_goes) {
    storeList({record(u"A"_s), record(u"B"_s)});
    makeStore();
    const QUuid a = id(0), b = id(1);
    store->removeApp(a);
    EXPECT_EQ(store->selectedAppId(), b);
    store->removeApp(b);
    EXPECT_FALSE(store->selectedAppId());
}

TEST_F(ConfigurationManagerTest, keeps_the_selection_when_another_record_goes) {
    makeThree();
    const QUuid a = id(0);
    store->removeApp(id(2));
    EXPECT_EQ(store->selectedAppId(), a);
}

TEST_F(ConfigurationManagerTest, moves_the_first_of_three_to_the_end) {
    makeThree();
    store->moveApp(0, 2);
    EXPECT_EQ(namesOf(stored()), QStringList({u"B"_s, u"C"_s, u"A"_s}));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(stored()[i].sortOrder, static_cast<std::int64_t>(i));
}

TEST_F(ConfigurationManagerTest, ignores_moves_to_or_from_places_that_do_not_exist) {
    makeThree();
    for (const auto& [from, to] : {std::pair(0, 3), {3, 0}, {-1, 0}, {0, -1}, {1, 1}})
        store->moveApp(from, to);
    EXPECT_EQ(namesOf(store->configurations()), QStringList({u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(ConfigurationManagerTest, ignores_the_selection_of_an_unknown_record) {
    makeThree();
    store->selectApp(QUuid::createUuid());
    EXPECT_EQ(store->selectedAppId(), id(0));
}

TEST_F(ConfigurationManagerTest, resets_by_removing_every_record_with_its_bundle) {
    makeThree();
    const QString bundle = makeBundle(u"B.app"_s);
    store->reset();
    EXPECT_FALSE(files.exists(bundle));
    EXPECT_TRUE(stored().empty());
    EXPECT_FALSE(store->selectedAppId());
}

TEST_F(ConfigurationManagerTest, inserts_a_record_at_its_place_or_at_the_end) {
    makeThree();
    AppConfiguration back = record(u"Back"_s);
    back.sortOrder = 77;
    store->insertApp(back, 1);
    store->insertApp(record(u"Last"_s), 99);
    EXPECT_EQ(namesOf(stored()), QStringList({u"A"_s, u"Back"_s, u"B"_s, u"C"_s, u"Last"_s}));
    EXPECT_EQ(stored()[1], back);
}

TEST_F(ConfigurationManagerTest, tells_observers_the_coming_catalogue_before_it_changes) {
    makeThree();
    QStringList log;
    const auto list = store->configurationsProperty().onWillChange([&](const std::vector<AppConfiguration>& next) {
        log << u"list %1, now %2"_s.arg(next.size()).arg(store->configurations().size());
    });
    const auto selection = store->selectedAppIdProperty().onWillChange([&](const std::optional<QUuid>& next) {
        log << (store->selectedAppId() != next ? u"selection"_s : u"same selection"_s);
    });
    store->createApp();
    EXPECT_EQ(log, QStringList({u"list 4, now 3"_s, u"selection"_s}));
}

TEST_F(ConfigurationManagerTest, removes_forbidden_characters_from_a_bundles_place_and_keeps_dots) {
    makeStore();
    const QString folder = directories.generatedApps() + u'/';
    EXPECT_EQ(store->getBundleURL(record(u"a/b:c"_s)), folder + u"abc.app"_s);
    EXPECT_EQ(store->getBundleURL(record(u"Mail 2.0"_s)), folder + u"Mail 2.0.app"_s);
    EXPECT_TRUE(folder.endsWith(u"/Applications/Wrapio Apps/"_s));
}

TEST_F(ConfigurationManagerTest, stores_nothing_and_says_nothing_when_encoding_fails) {
    makeThree();
    AppConfiguration bad = store->configurations()[0];
    bad.themeOpacity = NAN;
    DiagnosticsCapture capture;
    store->updateConfiguration(bad);
    EXPECT_EQ(defaults.writes, 0);
    EXPECT_EQ(capture.lines(), QStringList());
}

TEST_F(ConfigurationManagerTest, knows_why_a_write_did_not_reach_the_disk) {
    makeThree();
    defaults.failure = FileError{u"write"_s, u"/full"_s, ENOSPC};
    store->createApp();
    ASSERT_TRUE(store->saveFailure());
    EXPECT_EQ(store->saveFailure()->code, ENOSPC);
    EXPECT_EQ(stored().size(), 3U);
    defaults.failure.reset();
    store->save();
    EXPECT_FALSE(store->saveFailure());
    EXPECT_EQ(stored().size(), 4U);
}

}  // namespace wrapio
