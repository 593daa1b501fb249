#include "Fakes/ExchangeFixture.h"
#include "Services/CollectionExportError.h"

#include <cerrno>
#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

class CollectionExportTest : public ExchangeFixture {
protected:
    using Result = std::optional<tl::expected<std::optional<QString>, AnyError>>;

    CollectionExportTest() {
        tools.answer(dittoPath, [this](const QStringList& arguments) {
            packed = contentsOf(arguments[3]);
            writeFile(arguments[4], "the archive");
            return ToolResult{};
        });
    }

    /// Starts an export of `records`; its result is in `result` once it ends.
    void start(const std::vector<AppConfiguration>& records) {
        service->exportAll(
            records, favicons, dialogs,
            [this](std::size_t done, std::size_t total) { progress << u"%1/%2"_s.arg(done).arg(total); },
            [this](const auto& r) { result.emplace(r); });
    }
    /// Exports `records` to `url`, or cancels at the question where to.
    void exportTo(const std::optional<QString>& url, const std::vector<AppConfiguration>& records) {
        start(records);
        scheduler.runPending();
        if (dialogs.isOpen())
            dialogs.answer(url);
    }
    [[nodiscard]] std::optional<QString> path() const { return result && *result ? **result : std::nullopt; }
    /// The error of the latest export, when it is of that type.
    template <typename Error>
    [[nodiscard]] const Error* error() const {
        return result && !*result ? result->error().as<Error>() : nullptr;
    }

    /// A record of which every field is known.
    static AppConfiguration fixedRecord() {
        AppConfiguration fixed = record(u"Mail"_s);
        fixed.id = QUuid(u"{3f2a9c01-5d0f-4c51-9a57-3e1f6b1d2a40}"_s);
        fixed.lastUpdated = Timestamp{700000000.5};
        fixed.sortOrder = 3;
        return fixed;
    }

    Entries packed;
    QStringList progress;
    Result result;
};

TEST_F(CollectionExportTest, packs_with_exactly_one_tool_call_and_then_asks_where_to_save) {
    start({record(u"A"_s)});
    scheduler.runPending();
    ASSERT_EQ(tools.calls().size(), 1U);
    EXPECT_EQ(tools.calls()[0].path, u"/usr/bin/ditto"_s);
    const QStringList arguments = tools.calls()[0].arguments;
    ASSERT_EQ(arguments.size(), 5);
    EXPECT_EQ(arguments.first(3), QStringList({u"-c"_s, u"-k"_s, u"--sequesterRsrc"_s}));
    EXPECT_TRUE(arguments[3].startsWith(directories.temporary + u"/wrapio-export-"_s));
    EXPECT_FALSE(QUuid::fromString(arguments[3].last(36)).isNull());
    EXPECT_EQ(arguments[3].last(36), arguments[3].last(36).toUpper());
    EXPECT_EQ(arguments[4], directories.temporary + u"/Wrapio Export.wrapio"_s);
    ASSERT_EQ(dialogs.saveRequests.size(), 1U);
    EXPECT_EQ(dialogs.saveRequests[0].proposedName, u"My Apps.wrapio"_s);
    EXPECT_EQ(dialogs.saveRequests[0].extension, u"wrapio"_s);
    EXPECT_FALSE(result);
}

TEST_F(CollectionExportTest, writes_the_manifest_compactly_in_the_order_of_its_keys) {
    exportTo(place(u"a.wrapio"_s), {record(u"A"_s), record(u"B"_s)});
    EXPECT_EQ(packed[u"manifest.json"_s], QByteArray(R"({"version":1,"exportDate":800000000.0,"appCount":2})"));
}

TEST_F(CollectionExportTest, writes_the_records_prettily_with_sorted_keys) {
    exportTo(place(u"a.wrapio"_s), {fixedRecord()});
    EXPECT_EQ(packed[u"configs.json"_s], QByteArray(R"([
  {
    "allowedHosts": [],
    "appName": "Mail",
    "badgeEnabled": true,
    "configuredURL": "https://www.example.com/",
    "iconSource": "default",
    "id": "3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40",
    "isDevMode": false,
    "jsInjectionTime": "documentEnd",
    "lastUpdated": 700000000.5,
    "sortOrder": 3,
    "themeBorderEnabled": false
  }
])"));
}

TEST_F(CollectionExportTest, writes_one_png_for_every_saved_icon_and_no_file_for_an_app_without_one) {
    const AppConfiguration with = fixedRecord();
    ASSERT_TRUE(favicons.saveIcon(plainImage(20, 20), with.id));
    exportTo(place(u"a.wrapio"_s), {record(u"Without"_s), with});
    QStringList names;
    for (const auto& [name, bytes] : packed)
        names << name;
    const QString icon = u"icons/3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40.png"_s;
    EXPECT_EQ(names, QStringList({u"configs.json"_s, u"icons/"_s, icon, u"manifest.json"_s}));
    EXPECT_TRUE(packed[icon].startsWith("\x89PNG"));
    EXPECT_EQ(QImage::fromData(packed[icon]).size(), QSize(20, 20));
}

TEST_F(CollectionExportTest, makes_a_valid_archive_of_an_empty_collection) {
    exportTo(place(u"a.wrapio"_s), {});
    EXPECT_EQ(packed[u"configs.json"_s], QByteArray("[]"));
    EXPECT_TRUE(packed[u"manifest.json"_s].endsWith(R"("appCount":0})"));
    EXPECT_TRUE(packed.contains(u"icons/"_s));
    EXPECT_EQ(path(), place(u"a.wrapio"_s));
}

TEST_F(CollectionExportTest, moves_the_archive_to_the_chosen_place_and_leaves_nothing_behind) {
    exportTo(place(u"My Apps.wrapio"_s), {record(u"A"_s)});
    EXPECT_EQ(path(), place(u"My Apps.wrapio"_s));
    EXPECT_EQ(readFile(place(u"My Apps.wrapio"_s)), QByteArray("the archive"));
    EXPECT_EQ(leftovers(), QStringList());
    EXPECT_EQ(QDir(home.path()).entryList({u".wrapio*"_s}, QDir::AllEntries | QDir::Hidden), QStringList());
}

TEST_F(CollectionExportTest, replaces_a_file_at_the_chosen_place) {
    writeFile(place(u"old.wrapio"_s), "older and longer than the new one");
    exportTo(place(u"old.wrapio"_s), {record(u"A"_s)});
    EXPECT_EQ(readFile(place(u"old.wrapio"_s)), QByteArray("the archive"));
}

TEST_F(CollectionExportTest, keeps_the_file_at_the_chosen_place_when_the_new_one_cannot_be_moved_there) {
    writeFile(place(u"old.wrapio"_s), "old");
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"move"_s ? std::optional(ENOSPC) : std::nullopt;
    };
    exportTo(place(u"old.wrapio"_s), {record(u"A"_s)});
    ASSERT_TRUE(error<FileError>());
    EXPECT_EQ(*error<FileError>(), (FileError{u"move"_s, place(u"old.wrapio"_s), ENOSPC}));
    EXPECT_EQ(readFile(place(u"old.wrapio"_s)), QByteArray("old"));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionExportTest, fails_when_the_file_at_the_chosen_place_cannot_be_removed) {
    writeFile(place(u"old.wrapio"_s), "old");
    files.fault = [this](const QString& operation, const QString& path) {
        return operation == u"remove"_s && path == place(u"old.wrapio"_s) ? std::optional(EPERM) : std::nullopt;
    };
    exportTo(place(u"old.wrapio"_s), {record(u"A"_s)});
    ASSERT_TRUE(error<FileError>());
    EXPECT_EQ(error<FileError>()->code, EPERM);
    EXPECT_EQ(QDir(home.path()).entryList({u".wrapio*"_s}, QDir::AllEntries | QDir::Hidden), QStringList());
}

TEST_F(CollectionExportTest, never_replaces_a_folder) {
    writeFile(place(u"Documents/letter"_s), "precious");
    exportTo(place(u"Documents"_s), {record(u"A"_s)});
    ASSERT_TRUE(error<FileError>());
    EXPECT_EQ(error<FileError>()->code, EISDIR);
    EXPECT_EQ(readFile(place(u"Documents/letter"_s)), QByteArray("precious"));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionExportTest, answers_nothing_when_the_person_cancels_and_leaves_nothing_behind) {
    exportTo(std::nullopt, {record(u"A"_s)});
    ASSERT_TRUE(result);
    ASSERT_TRUE(*result);
    EXPECT_EQ(**result, std::nullopt);
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionExportTest, removes_what_is_left_at_the_archives_place_first) {
    writeFile(directories.temporary + u"/Wrapio Export.wrapio"_s, "from a crash");
    bool wasThere = true;
    tools.answer(dittoPath, [&](const QStringList& arguments) {
        wasThere = QFile::exists(arguments[4]);
        writeFile(arguments[4], "");
        return ToolResult{};
    });
    exportTo(place(u"a.wrapio"_s), {});
    EXPECT_FALSE(wasThere);
    EXPECT_TRUE(path());
}

TEST_F(CollectionExportTest, goes_on_when_that_cannot_be_removed) {
    writeFile(directories.temporary + u"/Wrapio Export.wrapio"_s, "from a crash");
    files.fault = [](const QString& operation, const QString& path) {
        return operation == u"remove"_s && path.endsWith(u".wrapio"_s) ? std::optional(EPERM) : std::nullopt;
    };
    exportTo(place(u"a.wrapio"_s), {});
    EXPECT_EQ(readFile(place(u"a.wrapio"_s)), QByteArray("the archive"));
}

TEST_F(CollectionExportTest, fails_with_what_the_tool_says) {
    tools.answer(dittoPath, ToolResult{1, "", "disk on fire"});
    exportTo(place(u"a.wrapio"_s), {record(u"A"_s)});
    ASSERT_TRUE(error<CollectionExportError>());
    EXPECT_EQ(*error<CollectionExportError>(), CollectionExportError::archiveFailed(u"disk on fire"_s));
    EXPECT_EQ(result->error().description(), u"Failed to create archive: disk on fire"_s);
    EXPECT_TRUE(dialogs.saveRequests.empty());
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionExportTest, fails_with_an_unknown_error_when_the_tool_says_something_unreadable) {
    tools.answer(dittoPath, ToolResult{2, "", "\xFF\xFE"});
    exportTo(place(u"a.wrapio"_s), {record(u"A"_s)});
    ASSERT_TRUE(error<CollectionExportError>());
    EXPECT_EQ(result->error().description(), u"Failed to create archive: unknown error"_s);
}

TEST_F(CollectionExportTest, fails_when_the_tool_cannot_be_started) {
    tools.remove(dittoPath);
    exportTo(place(u"a.wrapio"_s), {record(u"A"_s)});
    ASSERT_TRUE(error<LaunchError>());
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionExportTest, passes_every_failed_file_operation_on_and_leaves_nothing_behind) {
    const AppConfiguration app = fixedRecord();
    ASSERT_TRUE(favicons.saveIcon(plainImage(20, 20), app.id));
    const std::pair<QString, QString> faults[] = {
        {u"createDirectories"_s, u"/wrapio-export-"_s},
        {u"write"_s, u"/manifest.json"_s},
        {u"write"_s, u"/configs.json"_s},
        {u"createDirectories"_s, u"/icons"_s},
        {u"write"_s, u".png"_s},
    };
    for (const auto& [operation, part] : faults) {
        files.fault = [operation = operation, part = part](const QString& tried, const QString& path) {
            const bool hit = tried == operation && path.contains(u"wrapio-export-"_s) && path.contains(part);
            return hit ? std::optional(ENOSPC) : std::nullopt;
        };
        exportTo(place(u"a.wrapio"_s), {app});
        ASSERT_TRUE(error<FileError>()) << part.toStdString();
        EXPECT_EQ(error<FileError>()->operation, operation);
        EXPECT_EQ(leftovers(), QStringList()) << part.toStdString();
    }
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(CollectionExportTest, fails_when_a_record_has_no_json_form) {
    AppConfiguration bad = record(u"Bad"_s);
    bad.themeOpacity = NAN;
    exportTo(place(u"a.wrapio"_s), {bad});
    ASSERT_TRUE(error<CollectionExportError>());
    EXPECT_EQ(result->error().description(), u"Failed to encode app configurations"_s);
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionExportTest, does_nothing_before_the_next_turn_and_tells_how_far_it_is) {
    start({record(u"A"_s), record(u"B"_s)});
    EXPECT_EQ(leftovers(), QStringList());
    scheduler.runPending();
    EXPECT_EQ(progress, QStringList({u"0/2"_s, u"1/2"_s, u"2/2"_s, u"2/2"_s}));
}

TEST_F(CollectionExportTest, refuses_a_second_export_while_one_is_under_way) {
    start({record(u"A"_s)});
    scheduler.runPending();
    const FakeFileDialogs::Answer none;
    Result second;
    service->exportAll(
        {}, favicons, dialogs, [](auto...) {}, [&](const auto& r) { second.emplace(r); });
    EXPECT_FALSE(second);
    scheduler.runPending();
    ASSERT_TRUE(second && !*second);
    EXPECT_EQ(second->error().description(), u"Failed to create archive: another export is under way"_s);
    dialogs.answer(place(u"a.wrapio"_s));
    EXPECT_EQ(path(), place(u"a.wrapio"_s));
    exportTo(place(u"b.wrapio"_s), {});
    EXPECT_EQ(path(), place(u"b.wrapio"_s));
}

TEST_F(CollectionExportTest, leaves_nothing_behind_when_the_program_ends_in_the_middle) {
    start({record(u"A"_s)});
    scheduler.runPending();
    EXPECT_EQ(leftovers(), QStringList(u"Wrapio Export.wrapio"_s));
    service.reset();
    EXPECT_EQ(leftovers(), QStringList());
    dialogs.answer(place(u"late.wrapio"_s));
    EXPECT_FALSE(QFile::exists(place(u"late.wrapio"_s)));
    EXPECT_FALSE(result);
}

TEST_F(CollectionExportTest, exports_to_a_given_place_at_once_and_without_asking) {
    QStringList steps;
    const auto exported =
        service->exportTo(place(u"now.wrapio"_s), {record(u"A"_s)}, favicons,
                          [&](std::size_t done, std::size_t total) { steps << u"%1/%2"_s.arg(done).arg(total); });
    EXPECT_TRUE(exported);
    EXPECT_EQ(readFile(place(u"now.wrapio"_s)), QByteArray("the archive"));
    EXPECT_EQ(steps, QStringList({u"0/1"_s, u"1/1"_s, u"1/1"_s}));
    EXPECT_TRUE(dialogs.saveRequests.empty());
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(CollectionExportTest, has_a_text_for_every_error) {
    EXPECT_EQ(CollectionExportError::archiveFailed(u"x"_s).description(), u"Failed to create archive: x"_s);
    EXPECT_EQ(CollectionExportError::extractFailed(u"x"_s).description(), u"Failed to extract archive: x"_s);
    EXPECT_EQ(CollectionExportError::encodingFailed().description(), u"Failed to encode app configurations"_s);
    EXPECT_EQ(CollectionExportError::invalidArchive().description(),
              u"The selected file is not a valid .wrapio archive"_s);
    EXPECT_EQ(CollectionExportError::manifestMissing().description(), u"Archive is missing the manifest file"_s);
    EXPECT_EQ(CollectionExportError::configsMissing().description(), u"Archive is missing configuration data"_s);
}

}  // namespace wrapio
