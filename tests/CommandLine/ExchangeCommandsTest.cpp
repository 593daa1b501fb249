// The commands that move the whole collection, on real archives.
#include "Fakes/CommandFixture.h"
#include "Fakes/TestImages.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/LinuxToolRunner.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

class ExchangeCommandsTest : public CommandFixture {
protected:
    ExchangeCommandsTest() {
        QDir().mkpath(directories.temporary);
        const QString ditto = u"/usr/bin/ditto"_s;
        tools.answer(ditto, [this, ditto](const QStringList& arguments) { return linuxTools.run(ditto, arguments); });
        setDiagnosticsDestination(DiagnosticsDestination::nowhere);
    }
    ~ExchangeCommandsTest() override { setDiagnosticsDestination(DiagnosticsDestination::standardOutput); }

    [[nodiscard]] Json json() const { return Json::parse(console.printed.join(u'\n').toStdString()); }
    void refuseCodesign() { tools.answer(u"/usr/bin/codesign"_s, ToolResult{9, "", "no luck"}); }
    void exportTwo() {
        storeList({record(u"A"_s), record(u"B"_s)});
        ASSERT_EQ(run({u"export"_s, u"a.wrapio"_s}), ExitStatus::done);
        console.printed.clear();
        console.progressed.clear();
    }

    RecordingToolRunner noProcesses;
    DesktopRegistration registration{home.path(), std::nullopt, noProcesses};
    LinuxToolRunner linuxTools{registration};
};

TEST_F(ExchangeCommandsTest, export_writes_the_file_that_is_named_from_the_working_folder) {
    storeList({record(u"A"_s), record(u"B"_s)});
    EXPECT_EQ(run({u"export"_s, u"All my apps.zip"_s}), ExitStatus::done);
    const QString path = home.filePath(u"All my apps.zip"_s);
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(console.printed, QStringList(u"Exported 2 apps to "_s + path));
    EXPECT_EQ(console.progressed.last(), u"[2/2] Exporting"_s);
}

TEST_F(ExchangeCommandsTest, export_answers_in_json) {
    EXPECT_EQ(run({u"export"_s, u"a.wrapio"_s, u"--json"_s}), ExitStatus::done);
    EXPECT_EQ(json(), (Json{{"exported", 0}, {"path", home.filePath(u"a.wrapio"_s).toStdString()}}));
}

TEST_F(ExchangeCommandsTest, export_says_why_it_failed_and_keeps_the_old_file) {
    storeList({record(u"A"_s)});
    writeFile(u"old.wrapio"_s, "old");
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"move"_s ? std::optional(ENOSPC) : std::nullopt;
    };
    EXPECT_EQ(run({u"export"_s, u"old.wrapio"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.value(0).contains(u"No space left on device"_s))
        << console.notes.join(u'\n').toStdString();
    EXPECT_EQ(*files.read(home.filePath(u"old.wrapio"_s), 10), "old");
    EXPECT_EQ(run({u"export"_s, u"missing/a.wrapio"_s}), ExitStatus::failed);
}

TEST_F(ExchangeCommandsTest, import_adds_the_apps_to_those_that_are_there) {
    exportTwo();
    EXPECT_EQ(run({u"import"_s, u"a.wrapio"_s}), ExitStatus::done);
    EXPECT_EQ(console.printed, QStringList(u"Imported 2 apps"_s));
    EXPECT_EQ(namesOf(stored()), QStringList({u"A"_s, u"B"_s, u"A"_s, u"B"_s}));
    EXPECT_EQ(console.progressed.last(), u"[2/2] Making apps"_s);
    EXPECT_TRUE(files.exists(bundle(u"B.app"_s)));
}

TEST_F(ExchangeCommandsTest, import_names_every_app_that_it_could_not_make) {
    exportTwo();
    refuseCodesign();
    EXPECT_EQ(run({u"import"_s, u"a.wrapio"_s}), ExitStatus::failed);
    EXPECT_EQ(console.printed, QStringList(u"Imported 2 apps"_s));
    ASSERT_EQ(console.notes.size(), 1);
    EXPECT_TRUE(console.notes[0].contains(u"2 of them"_s) && console.notes[0].contains(u"A: "_s) &&
                console.notes[0].contains(u"B: "_s))
        << console.notes[0].toStdString();
    EXPECT_EQ(stored().size(), 4U);
}

TEST_F(ExchangeCommandsTest, import_says_what_to_do_about_an_app_that_it_could_not_make) {
    AppConfiguration nameless = record(u""_s);
    AppConfiguration empty;
    AppConfiguration unusable = record(u"///"_s);
    storeList({nameless, empty, unusable});
    ASSERT_EQ(run({u"export"_s, u"a.wrapio"_s}), ExitStatus::done);
    refuseCodesign();
    EXPECT_EQ(run({u"import"_s, u"a.wrapio"_s}), ExitStatus::failed);
    const QString said = console.notes.join(u'\n');
    EXPECT_TRUE(said.contains(u"https://www.example.com/: "_s)) << said.toStdString();
    EXPECT_TRUE(said.contains(canonicalText(stored()[4].id) + u": the app has no address; give it one"_s));
    EXPECT_TRUE(said.contains(u"///: nothing of the app's name can be used as a file name"_s));
}

TEST_F(ExchangeCommandsTest, import_answers_in_json) {
    exportTwo();
    refuseCodesign();
    EXPECT_EQ(run({u"import"_s, u"a.wrapio"_s, u"--json"_s}), ExitStatus::failed);
    const Json answer = json();
    EXPECT_EQ(answer["imported"], 2);
    ASSERT_EQ(answer["failed"].size(), 2U);
    EXPECT_EQ(answer["failed"][1]["name"], "B");
    EXPECT_EQ(answer["failed"][1]["id"], canonicalText(stored()[3].id).toStdString());
    EXPECT_FALSE(answer["failed"][1]["reason"].get<std::string>().empty());
}

TEST_F(ExchangeCommandsTest, import_refuses_what_is_no_archive_and_stores_nothing) {
    writeFile(u"text.wrapio"_s, "no archive");
    EXPECT_EQ(run({u"import"_s, u"text.wrapio"_s}), ExitStatus::failed);
    EXPECT_EQ(run({u"import"_s, u"missing.wrapio"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.last().contains(u"there is no file"_s));
    EXPECT_EQ(run({u"import"_s, u"."_s}), ExitStatus::failed);
    EXPECT_FALSE(defaults.values.contains(u"app_configurations"_s));
    EXPECT_TRUE(QDir(directories.temporary).isEmpty());
}

TEST_F(ExchangeCommandsTest, import_does_not_call_an_import_done_that_did_not_reach_the_disk) {
    exportTwo();
    defaults.failure = FileError{u"write"_s, u"/full"_s, ENOSPC};
    EXPECT_EQ(run({u"import"_s, u"a.wrapio"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.last().contains(u"No space left on device"_s));
    EXPECT_TRUE(console.printed.isEmpty());
}

TEST_F(ExchangeCommandsTest, import_waits_for_the_catalogue_like_every_change) {
    exportTwo();
    busy = CatalogueBusy{u"Another Wrapio is changing the catalogue"_s};
    EXPECT_EQ(run({u"import"_s, u"a.wrapio"_s}), ExitStatus::failed);
    EXPECT_EQ(console.notes.last(), u"wrapio: Another Wrapio is changing the catalogue"_s);
}

}  // namespace wrapio
