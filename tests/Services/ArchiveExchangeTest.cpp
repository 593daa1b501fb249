// Collections on real archives, from the record to the ZIP file and back.
#include "Fakes/ExchangeFixture.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/LinuxToolRunner.h"
#include "Services/CollectionExportError.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstring>
#include <random>

namespace wrapio {

using namespace Qt::StringLiterals;

class ArchiveExchangeTest : public ExchangeFixture {
protected:
    ArchiveExchangeTest() {
        tools.answer(dittoPath, [this](const QStringList& arguments) { return linuxTools.run(dittoPath, arguments); });
        storeList({record(u"Old"_s)});
        makeLifecycle();
        setDiagnosticsDestination(DiagnosticsDestination::nowhere);  // thousands of lines otherwise
    }
    ~ArchiveExchangeTest() override { setDiagnosticsDestination(DiagnosticsDestination::standardOutput); }

    /// Makes generating fail at its first step, for tests of what comes before.
    void generateNothing() {
        files.fault = [](const QString& operation, const QString&) {
            return operation == u"copyTree"_s ? std::optional(EIO) : std::nullopt;
        };
    }
    void exportTo(const QString& path, const std::vector<AppConfiguration>& records) {
        const auto exported = service->exportTo(path, records, favicons, [](auto...) {});
        ASSERT_TRUE(exported) << exported.error().description().toStdString();
    }
    tl::expected<ImportOutcome, AnyError> import(const QString& path) {
        return service->importAndWait(path, destination(), [](auto&) {});
    }
    /// Checks that the archive is refused and that nothing came of it. Answers the reason.
    QString refusal(const QString& path) {
        const auto before = store->configurations();
        const auto outcome = import(path);
        EXPECT_FALSE(outcome) << path.toStdString();
        EXPECT_EQ(store->configurations(), before) << path.toStdString();
        EXPECT_EQ(defaults.writes, 0) << path.toStdString();
        EXPECT_EQ(leftovers(), QStringList()) << path.toStdString();
        return outcome ? QString() : outcome.error().description();
    }
    QByteArray outputOf(const QString& program, const QStringList& arguments) {
        const auto result = ProcessToolRunner().run(program, arguments);
        EXPECT_TRUE(result && result->status == 0)
            << program.toStdString() << ": " << (result ? result->standardError.toStdString() : "");
        return result ? result->standardOutput : QByteArray();
    }
    /// Runs a script of the fixtures that writes archives into a folder, and answers the folder.
    QString made(const QString& script) {
        outputOf(u"/usr/bin/python3"_s, {QStringLiteral(WRAPIO_TEST_FIXTURES "/") + script, place(u"made"_s)});
        return place(u"made"_s);
    }
    static QStringList archivesIn(const QString& folder) {
        QStringList paths;
        for (const QString& name : QDir(folder).entryList(QDir::Files))
            paths << folder + u'/' + name;
        return paths;
    }
    [[nodiscard]] const AppConfiguration& app(std::size_t index) const { return store->configurations().at(index); }

    RecordingToolRunner noProcesses;
    DesktopRegistration registration{home.path(), std::nullopt, noProcesses};
    LinuxToolRunner linuxTools{registration};
};

TEST_F(ArchiveExchangeTest, what_is_exported_comes_back_under_new_ids) {
    AppConfiguration full = record(u"Größe 🎈"_s);
    full.configuredURL = WebAddress::parse(u"HTTPS://Bücher.Example:8443/a?b=%20#c"_s);
    full.iconSource = IconSource::custom;
    full.lastVisitedURL = WebAddress::parse(u"https://example.com/last"_s);
    full.runnerVersion = u"0.9"_s;
    full.lastUpdated = Timestamp{712345678.123456};
    full.customUserAgent = u"Agent/1.0"_s;
    full.allowedHosts = {u"a.example"_s, u"b.example"_s};
    full.badgeEnabled = false;
    full.customCSS = u"body { color: \"red\" }\n"_s;
    full.customJS = u"alert('\u2028')"_s;
    full.jsInjectionTime = JSInjectionTime::documentStart;
    full.themeColor = u"#112233"_s;
    full.themeOpacity = 0.35;
    full.themeBorderEnabled = true;
    full.isDevMode = true;
    full.sortOrder = 12;
    const QImage icon = plainImage(48, 48, QColor(10, 200, 30, 128));
    ASSERT_TRUE(favicons.saveIcon(icon, full.id));
    exportTo(place(u"a.wrapio"_s), {full});
    generateNothing();
    const auto outcome = import(place(u"a.wrapio"_s));
    ASSERT_TRUE(outcome);
    AppConfiguration expected = full;
    expected.id = app(1).id;
    expected.sortOrder = 1;
    EXPECT_NE(app(1).id, full.id);
    EXPECT_EQ(app(1), expected);
    EXPECT_EQ(favicons.loadSavedIcon(app(1).id)->convertToFormat(QImage::Format_ARGB32), icon);
}

TEST_F(ArchiveExchangeTest, an_empty_collection_comes_back_as_none) {
    exportTo(place(u"a.wrapio"_s), {});
    const auto outcome = import(place(u"a.wrapio"_s));
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->imported, 0U);
    EXPECT_EQ(store->configurations().size(), 1U);
}

TEST_F(ArchiveExchangeTest, other_programs_open_an_exported_archive) {
    const AppConfiguration with = record(u"With"_s);
    ASSERT_TRUE(favicons.saveIcon(plainImage(16, 16), with.id));
    const QString archive = place(u"a.wrapio"_s);
    exportTo(archive, {with});
    const QByteArray names = "configs.json\nicons/\nicons/" + canonicalText(with.id).toUtf8() + ".png\nmanifest.json\n";
    EXPECT_EQ(outputOf(u"/usr/bin/unzip"_s, {u"-Z1"_s, archive}), names);
    outputOf(u"/usr/bin/unzip"_s, {u"-tq"_s, archive});
    EXPECT_EQ(outputOf(u"/usr/bin/bsdtar"_s, {u"-tf"_s, archive}), names);
    EXPECT_EQ(outputOf(u"/usr/bin/python3"_s,
                       {u"-c"_s,
                        u"import sys, zipfile, json; z = zipfile.ZipFile(sys.argv[1]); assert not z.testzip();"
                        "print(*z.namelist(), sep='\\n'); json.loads(z.read('configs.json'))"_s,
                        archive}),
              names);
}

TEST_F(ArchiveExchangeTest, archives_that_other_programs_made_are_imported) {
    const AppConfiguration with = record(u"With"_s);
    ASSERT_TRUE(favicons.saveIcon(plainImage(16, 16), with.id));
    exportTo(place(u"a.wrapio"_s), {with});
    outputOf(u"/usr/bin/unzip"_s, {u"-q"_s, place(u"a.wrapio"_s), u"-d"_s, place(u"from"_s)});
    const std::map<QString, QStringList> makers{
        {u"zip"_s, {u"zip"_s, u"-qr"_s}},
        {u"zip64"_s, {u"zip"_s, u"-qr"_s, u"-fz"_s}},
        {u"bsdtar"_s, {u"bsdtar"_s, u"--format=zip"_s, u"-cf"_s}},
        {u"python"_s, {u"python3"_s, u"-m"_s, u"zipfile"_s, u"-c"_s}},
    };
    for (const auto& [name, command] : makers) {
        const QString archive = place(name + u".wrapio"_s);
        outputOf(u"/bin/sh"_s, QStringList{u"-c"_s, u"cd \"$1\" && shift && \"$@\" *"_s, u"-"_s, place(u"from"_s)} +
                                   command + QStringList{archive});
        const auto outcome = import(archive);
        ASSERT_TRUE(outcome) << name.toStdString() << ": " << outcome.error().description().toStdString();
        EXPECT_EQ(store->configurations().back().displayName(), u"With"_s);
        EXPECT_TRUE(favicons.loadSavedIcon(store->configurations().back().id)) << name.toStdString();
    }
    EXPECT_EQ(store->configurations().size(), 5U);
}

TEST_F(ArchiveExchangeTest, odd_but_harmless_archives_are_imported_whole) {
    const QStringList archives = archivesIn(made(u"make_collections.py"_s) + u"/imports"_s);
    ASSERT_GE(archives.size(), 19);
    for (const QString& archive : archives) {
        const auto outcome = import(archive);
        ASSERT_TRUE(outcome) << archive.toStdString() << ": " << outcome.error().description().toStdString();
        EXPECT_EQ(outcome->imported, 2U) << archive.toStdString();
        EXPECT_TRUE(outcome->ungenerated.empty()) << archive.toStdString();
        const std::size_t count = store->configurations().size();
        EXPECT_EQ(namesOf({app(count - 2), app(count - 1)}), QStringList({u"One"_s, u"Two"_s}));
        EXPECT_EQ(app(count - 1).sortOrder, static_cast<std::int64_t>(count - 1));
        EXPECT_EQ(favicons.loadSavedIcon(app(count - 2).id).has_value(), !archive.contains(u"without-icon"_s))
            << archive.toStdString();
        EXPECT_EQ(leftovers(), QStringList()) << archive.toStdString();
        store->configurationsProperty().set({});  // ten megabytes of style are slow to write again and again
    }
}

TEST_F(ArchiveExchangeTest, archives_without_a_usable_collection_are_refused_whole) {
    const QStringList archives = archivesIn(made(u"make_collections.py"_s) + u"/failures"_s);
    ASSERT_GE(archives.size(), 19);
    for (const QString& archive : archives) {
        const QString reason = refusal(archive);
        EXPECT_FALSE(reason.isEmpty()) << archive.toStdString();
        EXPECT_LT(reason.size(), 400) << archive.toStdString();
    }
    EXPECT_EQ(refusal(place(u"made/failures/no-manifest.wrapio"_s)), u"Archive is missing the manifest file"_s);
    EXPECT_EQ(refusal(place(u"made/failures/no-records.wrapio"_s)), u"Archive is missing configuration data"_s);
    EXPECT_EQ(QDir(*directories.applicationSupport + u"/Wrapio"_s).entryList(QDir::Files), QStringList());
}

TEST_F(ArchiveExchangeTest, hostile_archives_are_refused_and_nothing_lands_outside_the_scratch_folder) {
    const QStringList archives = archivesIn(made(u"make_hostile_zips.py"_s));
    ASSERT_GT(archives.size(), 40);
    const Entries before = contentsOf(home.path());
    for (const QString& archive : archives)
        EXPECT_THAT(refusal(archive).toStdString(), testing::StartsWith("Failed to extract archive: "))
            << archive.toStdString();
    EXPECT_EQ(contentsOf(home.path()), before);
    EXPECT_FALSE(QFileInfo::exists(u"/tmp/wrapio-evil"_s));
}

TEST_F(ArchiveExchangeTest, files_that_are_no_archives_are_refused) {
    writeFile(place(u"text.wrapio"_s), "hello");
    for (const QString& path : {place(u"text.wrapio"_s), place(u"missing.wrapio"_s), home.path(), u"/dev/zero"_s})
        EXPECT_THAT(refusal(path).toStdString(), testing::StartsWith("Failed to extract archive: "));
    EXPECT_THAT(refusal(place(u"missing.wrapio"_s)).toStdString(), testing::HasSubstr("No such file or directory"));
}

TEST_F(ArchiveExchangeTest, an_archive_behind_a_link_is_imported) {
    exportTo(place(u"a.wrapio"_s), {record(u"A"_s)});
    ASSERT_TRUE(QFile::link(u"a.wrapio"_s, place(u"link.wrapio"_s)));
    EXPECT_TRUE(import(place(u"link.wrapio"_s)));
    EXPECT_EQ(store->configurations().size(), 2U);
}

TEST_F(ArchiveExchangeTest, every_truncation_is_refused) {
    exportTo(place(u"a.wrapio"_s), {record(u"A"_s)});
    const QByteArray whole = readFile(place(u"a.wrapio"_s));
    for (qsizetype size = 0; size < whole.size(); size += 11) {
        writeFile(place(u"cut.wrapio"_s), whole.first(size));
        EXPECT_FALSE(refusal(place(u"cut.wrapio"_s)).isEmpty());
    }
}

TEST_F(ArchiveExchangeTest, any_flipped_bits_are_refused_or_leave_a_whole_catalogue) {
    generateNothing();
    const AppConfiguration with = record(u"With"_s);
    ASSERT_TRUE(favicons.saveIcon(plainImage(16, 16), with.id));
    exportTo(place(u"a.wrapio"_s), {with, record(u"B"_s)});
    const QByteArray whole = readFile(place(u"a.wrapio"_s));
    std::mt19937 random(7);
    int refused = 0;
    for (int i = 0; i < 200; ++i) {
        QByteArray flipped = whole;
        const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(flipped.size()));
        flipped[at] = static_cast<char>(flipped[at] ^ (1 << (random() % 8)));
        writeFile(place(u"flipped.wrapio"_s), flipped);
        const std::size_t before = store->configurations().size();
        const auto outcome = import(place(u"flipped.wrapio"_s));
        EXPECT_EQ(store->configurations().size(), before + (outcome ? outcome->imported : 0));
        EXPECT_EQ(leftovers(), QStringList());
        refused += outcome ? 0 : 1;
    }
    EXPECT_GT(refused, 100);
}

TEST_F(ArchiveExchangeTest, ten_thousand_apps_travel) {
    generateNothing();
    std::vector<AppConfiguration> records;
    for (int i = 0; i < 10'000; ++i)
        records.push_back(record(u"App %1"_s.arg(i)));
    for (int i = 0; i < 10'000; i += 100)
        ASSERT_TRUE(favicons.saveIcon(plainImage(8, 8), records[static_cast<std::size_t>(i)].id));
    exportTo(place(u"many.wrapio"_s), records);
    const auto outcome = import(place(u"many.wrapio"_s));
    ASSERT_TRUE(outcome) << outcome.error().description().toStdString();
    EXPECT_EQ(outcome->imported, 10'000U);
    EXPECT_EQ(store->configurations().size(), 10'001U);
    EXPECT_EQ(app(10'000).displayName(), u"App 9999"_s);
    EXPECT_TRUE(favicons.loadSavedIcon(app(9'901).id));
}

TEST_F(ArchiveExchangeTest, memory_does_not_grow_with_the_archive) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer keeps freed memory";
#endif
    const auto memory = [](const char* key) {
        for (const QByteArray& line : readFile(u"/proc/self/status"_s).split('\n')) {
            if (line.startsWith(key))
                return line.mid(static_cast<qsizetype>(std::strlen(key))).trimmed().split(' ')[0].toLongLong() / 1024;
        }
        return qint64(-1);
    };
    generateNothing();
    QImage noise(1000, 1000, QImage::Format_RGB32);
    std::mt19937 random(3);
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x)
            noise.setPixel(x, y, static_cast<QRgb>(random()));
    }
    const QByteArray png = fileOf(noise, "PNG");
    std::vector<AppConfiguration> records(20, record(u"A"_s));
    for (AppConfiguration& r : records) {
        r.id = QUuid::createUuid();
        writeFile(*directories.applicationSupport + u"/Wrapio/"_s + canonicalText(r.id) + u".png"_s, png);
    }
    writeFile(u"/proc/self/clear_refs"_s, "5");  // forgets the peak so far
    const qint64 before = memory("VmRSS:");
    exportTo(place(u"large.wrapio"_s), records);
    ASSERT_GT(QFileInfo(place(u"large.wrapio"_s)).size(), 50LL * 1024 * 1024);
    ASSERT_TRUE(import(place(u"large.wrapio"_s)));
    const qint64 peak = memory("VmHWM:");
    EXPECT_LT(peak - before, 30) << "megabytes over " << before;
}

}  // namespace wrapio
