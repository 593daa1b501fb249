#include "CommandLine/CommandRunner.h"

#include "Fakes/CommandFixture.h"
#include "Platform/Imaging.h"

#include <cerrno>
#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

QImage picture(int edge) {
    QImage image(edge, edge, QImage::Format_ARGB32);
    image.fill(Qt::red);
    return image;
}

}  // namespace

class CommandRunnerTest : public CommandFixture {
protected:
    /// Every line that was written, for looking a word up.
    [[nodiscard]] QString output() const { return (console.printed + console.notes).join(u'\n'); }
    [[nodiscard]] Json json() const { return Json::parse(console.printed.join(u'\n').toStdString()); }
    void createMail() {
        ASSERT_EQ(run({u"create"_s, u"mail.example.com"_s, u"--name"_s, u"Mail"_s, u"--no-icon"_s}), ExitStatus::done);
        console.printed.clear();
    }
};

TEST_F(CommandRunnerTest, creates_an_app_with_its_bundle) {
    EXPECT_EQ(run({u"create"_s, u"mail.example.com"_s, u"--name"_s, u"My Mail!"_s, u"--no-icon"_s}), ExitStatus::done);
    EXPECT_EQ(console.printed, QStringList(u"Created My Mail! ("_s + bundle(u"My Mail!.app"_s) + u')'));
    EXPECT_TRUE(files.exists(bundle(u"My Mail!.app"_s)));
    ASSERT_EQ(stored().size(), 1U);
    EXPECT_EQ(stored()[0].configuredURL->absoluteString(), u"https://mail.example.com"_s);
    EXPECT_EQ(stored()[0].runnerVersion, u"1.4.0"_s);
    EXPECT_EQ(stored()[0].sortOrder, 0);
    EXPECT_EQ(store->selectedAppId(), stored()[0].id);
}

TEST_F(CommandRunnerTest, answers_in_json_with_the_derived_values) {
    EXPECT_EQ(run({u"create"_s, u"127.0.0.1:8080"_s, u"--dev"_s, u"--no-icon"_s, u"--name"_s, u"Dev"_s, u"--json"_s}),
              ExitStatus::done);
    const Json answer = json();
    EXPECT_EQ(answer["configuredURL"], "http://127.0.0.1:8080");
    EXPECT_EQ(answer["displayName"], "Dev");
    EXPECT_EQ(answer["bundlePath"], bundle(u"Dev.app"_s).toStdString());
    EXPECT_TRUE(answer["bundleIdentifier"].get<std::string>().starts_with("com.wrapio.generated.dev-"));
    EXPECT_EQ(answer["isRunning"], false);
    EXPECT_EQ(answer["isOutdated"], false);
}

TEST_F(CommandRunnerTest, takes_the_icon_from_a_file) {
    writeFile(u"icon.png"_s, *encodePng(picture(64)));
    EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--icon"_s, u"icon.png"_s}), ExitStatus::done);
    EXPECT_EQ(stored()[0].iconSource, IconSource::favicon);
    EXPECT_EQ(favicons.loadSavedIcon(stored()[0].id)->size(), QSize(64, 64));
    EXPECT_TRUE(http.requests.empty());
}

TEST_F(CommandRunnerTest, fetches_the_sites_icon_when_none_is_given) {
    http.responses[u"https://a.example/favicon.ico"_s] = {200, u"image/png"_s, *encodePng(picture(32))};
    EXPECT_EQ(run({u"create"_s, u"a.example"_s}), ExitStatus::done);
    EXPECT_EQ(stored()[0].iconSource, IconSource::favicon);
    EXPECT_EQ(favicons.loadSavedIcon(stored()[0].id)->size(), QSize(32, 32));
}

TEST_F(CommandRunnerTest, takes_the_developer_icon_when_a_local_site_has_none) {
    resources.images[u"template-dev-server"_s] = picture(128);
    EXPECT_EQ(run({u"create"_s, u"localhost:3000"_s, u"--dev"_s}), ExitStatus::done);
    EXPECT_EQ(favicons.loadSavedIcon(stored()[0].id)->size(), QSize(128, 128));
}

TEST_F(CommandRunnerTest, says_why_an_address_is_refused_and_stores_nothing) {
    for (const auto& [address, word] : {std::pair(u"localhost:3000"_s, u"--dev"_s), {u"192.168.1.20"_s, u"--dev"_s},
                                        {u"printer.local"_s, u"--dev"_s}, {u"  "_s, u"empty"_s},
                                        {u"ht tp://x"_s, u"Please enter a valid URL"_s}}) {
        console.notes.clear();
        EXPECT_EQ(run({u"create"_s, address}), ExitStatus::failed);
        ASSERT_EQ(console.notes.size(), 1);
        EXPECT_TRUE(console.notes[0].startsWith(u"wrapio: "_s));
        EXPECT_TRUE(console.notes[0].contains(word)) << console.notes[0].toStdString();
    }
    EXPECT_FALSE(defaults.values.contains(u"app_configurations"_s));
}

TEST_F(CommandRunnerTest, refuses_names_that_give_no_single_bundle_and_offers_a_safe_one) {
    EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--no-icon"_s, u"--name"_s, u"Mail: Work/Home"_s}),
              ExitStatus::failed);
    EXPECT_TRUE(console.notes[0].contains(u"--name \"Mail WorkHome\""_s)) << console.notes[0].toStdString();
    for (const QString& name : {u"///"_s, u"\u202E"_s, u" Mail"_s, u"a\nb"_s, u"v1.2"_s})
        EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--no-icon"_s, u"--name"_s, name}), ExitStatus::failed);
}

TEST_F(CommandRunnerTest, refuses_files_that_cannot_be_used) {
    writeFile(u"big.css"_s, QByteArray(102401, 'x'));
    writeFile(u"fits.css"_s, QByteArray(102400, 'x'));
    writeFile(u"binary.js"_s, "\xFF\xFE\x00");
    writeFile(u"text.png"_s, "no image");
    const QStringList create = {u"create"_s, u"a.example"_s, u"--name"_s, u"A"_s};
    EXPECT_EQ(run(create + QStringList{u"--css"_s, u"big.css"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.last().contains(u"Custom CSS exceeds 100KB limit"_s));
    EXPECT_EQ(run(create + QStringList{u"--js"_s, u"big.css"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.last().contains(u"Custom JavaScript exceeds 100KB limit"_s));
    EXPECT_EQ(run(create + QStringList{u"--js"_s, u"binary.js"_s}), ExitStatus::failed);
    EXPECT_EQ(run(create + QStringList{u"--css"_s, u"missing.css"_s}), ExitStatus::failed);
    EXPECT_EQ(run(create + QStringList{u"--icon"_s, u"text.png"_s}), ExitStatus::failed);
    EXPECT_EQ(run(create + QStringList{u"--icon"_s, u"missing.png"_s}), ExitStatus::failed);
    EXPECT_EQ(run(create + QStringList{u"--no-icon"_s, u"--css"_s, u"fits.css"_s}), ExitStatus::done);
}

TEST_F(CommandRunnerTest, leaves_nothing_behind_when_the_bundle_cannot_be_made) {
    writeFile(u"icon.png"_s, *encodePng(picture(64)));
    tools.answer(u"/usr/bin/codesign"_s, ToolResult{9, "", "no luck"});
    EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--name"_s, u"A"_s, u"--icon"_s, u"icon.png"_s}), ExitStatus::failed);
    EXPECT_TRUE(output().contains(u"no luck"_s));
    EXPECT_TRUE(stored().empty());
    EXPECT_FALSE(files.exists(bundle(u"A.app"_s)));
    EXPECT_TRUE(files.list(*directories.applicationSupport + u"/Wrapio"_s)->empty());
}

TEST_F(CommandRunnerTest, reports_a_full_disk_and_does_not_call_it_done) {
    defaults.failure = FileError{u"write"_s, u"/full"_s, ENOSPC};
    EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--no-icon"_s}), ExitStatus::failed);
    EXPECT_TRUE(output().contains(u"No space left on device"_s));
    EXPECT_TRUE(console.printed.isEmpty());
}

TEST_F(CommandRunnerTest, says_that_the_template_is_missing) {
    resources.paths.clear();
    EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--no-icon"_s}), ExitStatus::failed);
    EXPECT_TRUE(output().contains(u"WrapioRunner.app is missing"_s));
}

TEST_F(CommandRunnerTest, says_who_keeps_the_catalogue) {
    busy = CatalogueBusy{u"Another Wrapio is changing the catalogue"_s};
    EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--no-icon"_s}), ExitStatus::failed);
    EXPECT_EQ(console.notes, QStringList(u"wrapio: Another Wrapio is changing the catalogue"_s));
}

TEST_F(CommandRunnerTest, hints_at_a_name_that_two_apps_share) {
    createMail();
    EXPECT_EQ(run({u"create"_s, u"b.example"_s, u"--no-icon"_s, u"--name"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_TRUE(console.notes.join(u' ').contains(u"share one bundle"_s));
}

TEST_F(CommandRunnerTest, edits_what_is_named_and_makes_the_bundle_again) {
    createMail();
    EXPECT_EQ(run({u"edit"_s, u"Mail"_s, u"--theme-color"_s, u"#112233"_s, u"--allow-host"_s, u"x.example"_s}),
              ExitStatus::done);
    EXPECT_EQ(stored()[0].themeColor, u"#112233"_s);
    EXPECT_EQ(stored()[0].allowedHosts, std::vector<QString>{u"x.example"_s});
    EXPECT_EQ(stored()[0].configuredURL->absoluteString(), u"https://mail.example.com"_s);
    QFile config(bundle(u"Mail.app/Contents/Resources/config.json"_s));
    ASSERT_TRUE(config.open(QIODevice::ReadOnly));
    EXPECT_TRUE(config.readAll().contains("#112233"));
}

TEST_F(CommandRunnerTest, takes_the_old_bundle_away_when_an_app_is_renamed) {
    createMail();
    tools.forget();
    EXPECT_EQ(run({u"rename"_s, u"Mail"_s, u"Post"_s}), ExitStatus::done);
    EXPECT_FALSE(files.exists(bundle(u"Mail.app"_s)));
    EXPECT_TRUE(files.exists(bundle(u"Post.app"_s)));
    EXPECT_EQ(tools.calls().back(), (RecordingToolRunner::Call{lsregister, {u"-u"_s, bundle(u"Mail.app"_s)}}));
}

TEST_F(CommandRunnerTest, keeps_the_old_bundle_when_another_app_lives_in_it) {
    createMail();
    createMail();
    const QString first = canonicalText(stored()[0].id);
    EXPECT_EQ(run({u"rename"_s, first, u"Post"_s}), ExitStatus::done);
    EXPECT_TRUE(files.exists(bundle(u"Mail.app"_s)));
}

TEST_F(CommandRunnerTest, refuses_to_leave_developer_mode_with_a_local_address) {
    EXPECT_EQ(run({u"create"_s, u"localhost:3000"_s, u"--dev"_s, u"--no-icon"_s, u"--name"_s, u"Dev"_s}),
              ExitStatus::done);
    EXPECT_EQ(run({u"edit"_s, u"Dev"_s, u"--no-dev"_s}), ExitStatus::failed);
    EXPECT_TRUE(stored()[0].isDevMode);
}

TEST_F(CommandRunnerTest, lists_apps_for_people_and_in_json) {
    EXPECT_EQ(run({u"list"_s}), ExitStatus::done);
    EXPECT_TRUE(console.printed[0].contains(u"no apps yet"_s));
    createMail();
    workspace.start(bundle(u"Mail.app"_s));
    EXPECT_EQ(run({u"list"_s}), ExitStatus::done);
    EXPECT_TRUE(console.printed.last().contains(u"Mail"_s));
    EXPECT_TRUE(console.printed.last().endsWith(u"(running)"_s));
    console.printed.clear();
    EXPECT_EQ(run({u"list"_s, u"--json"_s}), ExitStatus::done);
    EXPECT_EQ(json()[0]["isRunning"], true);
}

TEST_F(CommandRunnerTest, shows_one_app_without_control_characters) {
    AppConfiguration odd = record(u"Odd \x1b[31m name"_s);
    storeList({odd});
    EXPECT_EQ(run({u"show"_s, canonicalText(odd.id)}), ExitStatus::done);
    EXPECT_FALSE(output().contains(u'\x1b'));
    EXPECT_TRUE(output().contains(u"https://www.example.com/"_s));
}

TEST_F(CommandRunnerTest, tells_unknown_and_ambiguous_apps_apart) {
    EXPECT_EQ(run({u"show"_s, u"Nobody"_s}), ExitStatus::noSuchApp);
    createMail();
    createMail();
    EXPECT_EQ(run({u"delete"_s, u"Mail"_s}), ExitStatus::severalAppsMatch);
    EXPECT_EQ(stored().size(), 2U);
}

TEST_F(CommandRunnerTest, launches_focuses_and_quits) {
    createMail();
    EXPECT_EQ(run({u"focus"_s, u"Mail"_s}), ExitStatus::failed);
    EXPECT_EQ(run({u"launch"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_EQ(run({u"focus"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_EQ(run({u"quit"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_EQ(console.printed, QStringList({u"Launched Mail"_s, u"Focused Mail"_s, u"Quit Mail"_s}));
    EXPECT_EQ(run({u"quit"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_EQ(console.printed.last(), u"Mail is not running"_s);
}

TEST_F(CommandRunnerTest, makes_a_missing_bundle_before_it_launches) {
    createMail();
    QDir(bundle(u"Mail.app"_s)).removeRecursively();
    EXPECT_EQ(run({u"launch"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_TRUE(files.exists(bundle(u"Mail.app"_s)));
}

TEST_F(CommandRunnerTest, does_not_call_an_app_launched_that_did_not_start) {
    createMail();
    workspace.launchFailure = LaunchError{u"/x"_s, u"Permission denied"_s};
    EXPECT_EQ(run({u"launch"_s, u"Mail"_s}), ExitStatus::failed);
    EXPECT_TRUE(output().contains(u"did not start"_s));
}

TEST_F(CommandRunnerTest, regenerates_an_app) {
    createMail();
    makeTemplate(u"1.5.0"_s);
    EXPECT_EQ(run({u"regenerate"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_EQ(stored()[0].runnerVersion, u"1.5.0"_s);
}

TEST_F(CommandRunnerTest, deletes_an_app_but_not_its_icon) {
    writeFile(u"icon.png"_s, *encodePng(picture(64)));
    EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--name"_s, u"A"_s, u"--icon"_s, u"icon.png"_s}), ExitStatus::done);
    const QUuid id = stored()[0].id;
    const auto running = workspace.start(bundle(u"A.app"_s));
    EXPECT_EQ(run({u"delete"_s, u"A"_s, u"--json"_s}), ExitStatus::done);
    EXPECT_TRUE(stored().empty());
    EXPECT_FALSE(files.exists(bundle(u"A.app"_s)));
    EXPECT_TRUE(favicons.loadSavedIcon(id));
    EXPECT_TRUE(workspace.running.empty()) << running.processIdentifier;
}

TEST_F(CommandRunnerTest, moves_an_app) {
    storeList({record(u"A"_s), record(u"B"_s), record(u"C"_s)});
    EXPECT_EQ(run({u"move"_s, u"C"_s, u"1"_s}), ExitStatus::done);
    EXPECT_EQ(namesOf(stored()), QStringList({u"C"_s, u"A"_s, u"B"_s}));
    EXPECT_EQ(run({u"move"_s, u"C"_s, u"4"_s}), ExitStatus::usage);
}

TEST_F(CommandRunnerTest, updates_outdated_apps_with_progress_and_goes_on_after_a_failure) {
    storeList({record(u"A"_s), record(u"B"_s), record(u"C"_s)});
    int run_ = 0;
    tools.answer(u"/usr/bin/codesign"_s, [&run_](const QStringList&) -> tl::expected<ToolResult, LaunchError> {
        return ToolResult{++run_ == 2 ? 1 : 0, "", "bad"};
    });
    EXPECT_EQ(run({u"update-all"_s}), ExitStatus::failed);
    EXPECT_EQ(console.printed, QStringList(u"Updated 2 of 3 apps"_s));
    EXPECT_EQ(console.progressed, QStringList({u"[1/3] A"_s, u"[2/3] B"_s, u"[3/3] C"_s}));
    EXPECT_TRUE(output().contains(u"B: "_s));
    console.printed.clear();
    EXPECT_EQ(run({u"update-all"_s}), ExitStatus::done);
    EXPECT_EQ(console.printed, QStringList(u"Updated 1 of 1 apps"_s));
}

TEST_F(CommandRunnerTest, prints_help_and_version) {
    EXPECT_EQ(run({u"--help"_s}), ExitStatus::done);
    EXPECT_EQ(run({u"--version"_s}), ExitStatus::done);
    EXPECT_TRUE(console.printed.last().startsWith(u"wrapio "_s));
}

TEST_F(CommandRunnerTest, edit_without_options_shows_the_editor_of_the_app) {
    std::vector<QUuid> shown;
    bool hasDisplay = true;
    showEditor = [&](const QUuid& id) {
        shown.push_back(id);
        return hasDisplay;
    };
    const AppConfiguration mail = record(u"Mail"_s);
    storeList({record(u"News"_s), mail});
    EXPECT_EQ(run({u"edit"_s, u"Mail"_s}), ExitStatus::done);
    EXPECT_EQ(shown, std::vector<QUuid>({mail.id}));
    EXPECT_EQ(run({u"edit"_s, u"Unknown"_s}), ExitStatus::noSuchApp);
    hasDisplay = false;
    EXPECT_EQ(run({u"edit"_s, u"Mail"_s}), ExitStatus::failed);
    EXPECT_TRUE(console.notes.last().contains(u"no display"_s));
}

}  // namespace wrapio
