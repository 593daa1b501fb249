#include "Fakes/ExchangeFixture.h"
#include "Services/CollectionExportError.h"
#include "Services/CollectionRecords.h"

#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString archive = u"/somewhere/My Apps.wrapio"_s;

}  // namespace

class CollectionImportTest : public ExchangeFixture {
protected:
    using Result = std::optional<tl::expected<ImportOutcome, AnyError>>;

    CollectionImportTest() {
        tools.answer(dittoPath, [this](const QStringList& arguments) {
            for (const auto& [name, bytes] : entries)
                writeFile(arguments[3] + u'/' + name, bytes);
            return ToolResult{};
        });
        storeList({record(u"Old 1"_s), record(u"Old 2"_s)});
        makeLifecycle();
        entries[u"manifest.json"_s] = "not even JSON";
    }

    /// Puts `records` into the archive.
    void archiveHolds(const std::vector<AppConfiguration>& records) {
        entries[u"configs.json"_s] = *encodeConfigurations(records, JsonStyle::prettySortedKeys);
    }
    void archiveHoldsIcon(const AppConfiguration& app, const QByteArray& bytes) {
        entries[u"icons/"_s + canonicalText(app.id) + u".png"_s] = bytes;
    }

    void start() {
        service->importFromURL(
            archive, destination(),
            [this](const ImportProgress& p) {
                const bool isReading = p.stage == ImportProgress::Stage::readingIcons;
                progress << u"%1 %2/%3"_s.arg(isReading ? u"icons"_s : u"apps"_s).arg(p.done).arg(p.total);
            },
            [this](const auto& r) { result.emplace(r); });
    }
    void import() {
        start();
        scheduler.runPending();
    }
    template <typename Error>
    [[nodiscard]] const Error* error() const {
        return result && !*result ? result->error().as<Error>() : nullptr;
    }
    /// The record of that place in the catalogue.
    [[nodiscard]] const AppConfiguration& app(std::size_t index) const { return store->configurations().at(index); }

    /// Checks that an import fails with that text and changes nothing.
    void expectFailure(const QString& description) {
        const auto before = store->configurations();
        import();
        ASSERT_TRUE(result && !*result);
        EXPECT_EQ(result->error().description(), description);
        EXPECT_EQ(store->configurations(), before);
        EXPECT_EQ(defaults.writes, 0);
        EXPECT_EQ(leftovers(), QStringList());
        EXPECT_EQ(QDir(directories.generatedApps()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    }

    Entries entries;
    QStringList progress;
    Result result;
};

TEST_F(CollectionImportTest, unpacks_with_exactly_one_tool_call) {
    archiveHolds({});
    import();
    ASSERT_EQ(tools.calls().size(), 1U);
    EXPECT_EQ(tools.calls()[0].path, u"/usr/bin/ditto"_s);
    const QStringList arguments = tools.calls()[0].arguments;
    ASSERT_EQ(arguments.size(), 4);
    EXPECT_EQ(arguments.first(3), QStringList({u"-x"_s, u"-k"_s, archive}));
    EXPECT_TRUE(arguments[3].startsWith(directories.temporary + u"/wrapio-import-"_s));
    EXPECT_EQ(arguments[3].last(36), canonicalText(QUuid::fromString(arguments[3].last(36))));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionImportTest, asks_for_one_archive_and_imports_it) {
    archiveHolds({record(u"New"_s)});
    service->importCollection(
        destination(), dialogs, [](auto&) {}, [this](const auto& r) { result.emplace(r); });
    ASSERT_EQ(dialogs.openRequests.size(), 1U);
    EXPECT_EQ(dialogs.openRequests[0].extensions, QStringList(u"wrapio"_s));
    dialogs.answer(archive);
    scheduler.runPending();
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->imported, 1U);
}

TEST_F(CollectionImportTest, imports_nothing_when_the_person_cancels) {
    service->importCollection(
        destination(), dialogs, [](auto&) {}, [this](const auto& r) { result.emplace(r); });
    dialogs.answer(std::nullopt);
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->imported, 0U);
    EXPECT_TRUE(tools.calls().empty());
    EXPECT_EQ(store->configurations().size(), 2U);
}

TEST_F(CollectionImportTest, fails_with_what_the_tool_says) {
    tools.answer(dittoPath, ToolResult{1, "", "entry 3 is broken"});
    expectFailure(u"Failed to extract archive: entry 3 is broken"_s);
}

TEST_F(CollectionImportTest, fails_with_an_unknown_error_when_the_tool_says_something_unreadable) {
    tools.answer(dittoPath, ToolResult{1, "", "\xC3"});
    expectFailure(u"Failed to extract archive: unknown error"_s);
}

TEST_F(CollectionImportTest, fails_when_the_tool_cannot_be_started) {
    tools.remove(dittoPath);
    expectFailure(u"Could not start /usr/bin/ditto: No such file or directory"_s);
}

TEST_F(CollectionImportTest, fails_when_the_scratch_folder_cannot_be_made) {
    files.fault = [](const QString& operation, const QString& path) {
        return operation == u"createDirectories"_s && path.contains(u"wrapio-import-"_s) ? std::optional(EROFS)
                                                                                         : std::nullopt;
    };
    import();
    ASSERT_TRUE(error<FileError>());
    EXPECT_EQ(error<FileError>()->code, EROFS);
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(CollectionImportTest, misses_the_manifest_first) {
    entries.clear();
    expectFailure(u"Archive is missing the manifest file"_s);
}

TEST_F(CollectionImportTest, misses_the_records_when_only_the_manifest_is_there) {
    expectFailure(u"Archive is missing configuration data"_s);
}

TEST_F(CollectionImportTest, passes_a_decoding_error_on) {
    entries[u"configs.json"_s] = R"([{"badgeEnabled": "yes"}])";
    expectFailure(u"the value of \"badgeEnabled\" is not true or false"_s);
    EXPECT_TRUE(error<DecodingError>());
}

TEST_F(CollectionImportTest, refuses_a_list_of_records_of_100_megabytes_unread) {
    entries[u"configs.json"_s] = "[" + QByteArray(100 * 1024 * 1024, ' ') + "]";
    import();
    ASSERT_TRUE(error<FileError>());
    EXPECT_EQ(error<FileError>()->code, EFBIG);
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionImportTest, does_not_read_the_manifest) {
    archiveHolds({record(u"New"_s)});
    entries[u"manifest.json"_s] = R"({"version":99})";
    import();
    EXPECT_TRUE(result && *result);
    EXPECT_TRUE(files.log.filter(u"manifest.json"_s).isEmpty());
}

TEST_F(CollectionImportTest, adds_the_apps_after_the_present_ones_with_fresh_ids_in_archive_order) {
    AppConfiguration b = record(u"B"_s), a = record(u"A"_s);
    b.sortOrder = 0;
    b.customCSS = u"body{}"_s;
    b.lastUpdated = Timestamp{5};
    archiveHolds({b, a});
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"copyTree"_s ? std::optional(EIO) : std::nullopt;  // so that no bundle touches the records
    };
    import();
    EXPECT_EQ(namesOf(store->configurations()), QStringList({u"Old 1"_s, u"Old 2"_s, u"B"_s, u"A"_s}));
    EXPECT_NE(app(2).id, b.id);
    EXPECT_EQ(app(2).sortOrder, 2);
    EXPECT_EQ(app(3).sortOrder, 3);
    AppConfiguration expected = b;
    expected.id = app(2).id;
    expected.sortOrder = 2;
    EXPECT_EQ(app(2), expected);
    EXPECT_EQ(stored(), store->configurations());
    EXPECT_EQ(defaults.writes, 1);
}

TEST_F(CollectionImportTest, adds_the_apps_again_when_the_archive_is_imported_twice) {
    archiveHolds({record(u"A"_s), record(u"B"_s)});
    import();
    import();
    EXPECT_EQ(store->configurations().size(), 6U);
    std::set<QUuid> ids;
    for (std::size_t i = 0; i < 6; ++i) {
        ids.insert(app(i).id);
        if (i >= 2) {
            EXPECT_EQ(app(i).sortOrder, static_cast<std::int64_t>(i));
        }
    }
    EXPECT_EQ(ids.size(), 6U);
}

TEST_F(CollectionImportTest, saves_an_icon_under_the_new_id) {
    const AppConfiguration with = record(u"With"_s), without = record(u"Without"_s);
    archiveHolds({with, without});
    archiveHoldsIcon(with, fileOf(plainImage(24, 24), "PNG"));
    import();
    ASSERT_TRUE(favicons.loadSavedIcon(app(2).id));
    EXPECT_EQ(favicons.loadSavedIcon(app(2).id)->size(), QSize(24, 24));
    EXPECT_FALSE(favicons.loadSavedIcon(app(3).id));
    EXPECT_FALSE(favicons.loadSavedIcon(with.id));
}

TEST_F(CollectionImportTest, imports_an_app_without_an_icon_when_its_icon_is_no_image) {
    const AppConfiguration broken = record(u"Broken"_s), huge = record(u"Huge"_s);
    archiveHolds({broken, huge});
    archiveHoldsIcon(broken, "<html>not found</html>");
    archiveHoldsIcon(huge, QByteArray("\x89PNG\r\n\x1A\n", 8) + bigEndian(13) + "IHDR" + bigEndian(60000) +
                               bigEndian(60000) + QByteArray("\x08\x06\0\0\0", 5) + bigEndian(0));
    import();
    ASSERT_TRUE(result && *result);
    EXPECT_FALSE(favicons.loadSavedIcon(app(2).id));
    EXPECT_FALSE(favicons.loadSavedIcon(app(3).id));
}

TEST_F(CollectionImportTest, generates_every_app_and_records_its_version) {
    archiveHolds({record(u"A"_s), record(u"B"_s)});
    import();
    EXPECT_TRUE(QFileInfo(bundle(u"A.app"_s)).isDir());
    EXPECT_TRUE(QFileInfo(bundle(u"B.app"_s)).isDir());
    EXPECT_EQ(app(3).runnerVersion, u"1.4.0"_s);
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->imported, 2U);
    EXPECT_TRUE((*result)->ungenerated.empty());
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionImportTest, goes_on_after_an_app_that_cannot_be_generated_and_tells_of_it) {
    AppConfiguration addressless = record(u"Nowhere"_s);
    addressless.configuredURL.reset();
    archiveHolds({addressless, record(u"B"_s)});
    DiagnosticsCapture capture;
    import();
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->imported, 2U);
    ASSERT_EQ((*result)->ungenerated.size(), 1U);
    const UngeneratedApp& failed = (*result)->ungenerated[0];
    EXPECT_EQ(failed.id, app(2).id);
    EXPECT_EQ(failed.displayName, u"Nowhere"_s);
    EXPECT_TRUE(capture.lines().contains(u"[Import] Failed to generate Nowhere: "_s + failed.reason));
    EXPECT_TRUE(QFileInfo(bundle(u"B.app"_s)).isDir());
    EXPECT_EQ(store->configurations().size(), 4U);
}

TEST_F(CollectionImportTest, does_one_app_per_turn_and_tells_how_far_it_is) {
    archiveHolds({record(u"A"_s), record(u"B"_s)});
    import();
    EXPECT_EQ(progress, QStringList({u"icons 0/2"_s, u"icons 1/2"_s, u"icons 2/2"_s, u"apps 0/2"_s, u"apps 1/2"_s,
                                     u"apps 2/2"_s}));
}

TEST_F(CollectionImportTest, changes_nothing_before_everything_is_read) {
    archiveHolds({record(u"A"_s)});
    start();
    EXPECT_TRUE(tools.calls().empty());
    QString progressAtFirstChange;
    const auto subscription = store->configurationsProperty().onDidChange([&] {
        if (progressAtFirstChange.isEmpty())
            progressAtFirstChange = progress.last();
    });
    scheduler.runPending();
    EXPECT_EQ(progressAtFirstChange, u"icons 1/1"_s);
}

TEST_F(CollectionImportTest, counts_apps_that_came_while_the_archive_was_read) {
    archiveHolds({record(u"A"_s)});
    start();
    scheduler.async([this] { store->createApp(); });
    scheduler.runPending();
    EXPECT_EQ(app(3).displayName(), u"A"_s);
    EXPECT_EQ(app(3).sortOrder, 3);
}

TEST_F(CollectionImportTest, skips_an_app_that_was_removed_and_keeps_what_was_edited_meanwhile) {
    archiveHolds({record(u"A"_s), record(u"B"_s), record(u"C"_s)});
    const auto subscription = store->configurationsProperty().onDidChange([this, once = true]() mutable {
        if (!std::exchange(once, false))
            return;
        scheduler.async([this] {
            store->removeApp(app(3).id);
            AppConfiguration edited = app(3);
            edited.appName = u"Sea"_s;
            store->updateConfiguration(edited);
        });
    });
    import();
    EXPECT_EQ(namesOf(store->configurations()), QStringList({u"Old 1"_s, u"Old 2"_s, u"A"_s, u"Sea"_s}));
    EXPECT_FALSE(QFileInfo::exists(bundle(u"B.app"_s)));
    EXPECT_TRUE(QFileInfo::exists(bundle(u"Sea.app"_s)));
}

TEST_F(CollectionImportTest, leaves_nothing_behind_when_the_program_ends_before_the_catalogue_changes) {
    const AppConfiguration a = record(u"A"_s), b = record(u"B"_s);
    archiveHolds({a, b});
    archiveHoldsIcon(a, fileOf(plainImage(24, 24), "PNG"));
    start();
    scheduler.async([this] {
        scheduler.async([this] {
            EXPECT_FALSE(QDir(*directories.applicationSupport + u"/Wrapio"_s).isEmpty(QDir::Files));
            service.reset();
        });
    });
    scheduler.runPending();
    EXPECT_FALSE(result);
    EXPECT_EQ(store->configurations().size(), 2U);
    EXPECT_TRUE(QDir(*directories.applicationSupport + u"/Wrapio"_s).isEmpty(QDir::Files));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionImportTest, keeps_the_apps_when_the_program_ends_while_it_generates_them) {
    archiveHolds({record(u"A"_s), record(u"B"_s)});
    const auto subscription =
        store->configurationsProperty().onDidChange([this] { scheduler.async([this] { service.reset(); }); });
    import();
    EXPECT_FALSE(result);
    EXPECT_EQ(stored().size(), 4U);
    EXPECT_FALSE(QFileInfo::exists(bundle(u"B.app"_s)));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionImportTest, ignores_an_answer_that_comes_after_its_end) {
    service->importCollection(
        destination(), dialogs, [](auto&) {}, [this](const auto& r) { result.emplace(r); });
    service.reset();
    dialogs.answer(archive);
    scheduler.runPending();
    EXPECT_TRUE(tools.calls().empty());
    EXPECT_FALSE(result);
}

TEST_F(CollectionImportTest, imports_at_once_for_those_who_wait) {
    archiveHolds({record(u"A"_s)});
    const auto outcome = service->importAndWait(archive, destination(), [](auto&) {});
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->imported, 1U);
    EXPECT_TRUE(QFileInfo::exists(bundle(u"A.app"_s)));
    tools.answer(dittoPath, ToolResult{1, "", "no"});
    EXPECT_FALSE(service->importAndWait(archive, destination(), [](auto&) {}));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionImportTest, imports_records_with_ten_megabytes_of_style) {
    AppConfiguration heavy = record(u"Heavy"_s);
    heavy.customCSS = QString(10 * 1024 * 1024, u'x');
    archiveHolds({heavy});
    import();
    EXPECT_EQ(app(2).customCSS->size(), 10 * 1024 * 1024);
    EXPECT_TRUE(QFileInfo::exists(bundle(u"Heavy.app"_s)));
}

}  // namespace wrapio
