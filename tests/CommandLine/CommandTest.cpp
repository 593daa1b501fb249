#include "CommandLine/Command.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

template <typename Action>
Action parsed(const QStringList& arguments) {
    const auto command = parseCommand(arguments);
    EXPECT_TRUE(command) << (command ? "" : command.error().message.toStdString());
    return command ? std::get<Action>(command->action) : Action{};
}

QString refusal(const QStringList& arguments) {
    const auto command = parseCommand(arguments);
    return command ? u"accepted"_s : command.error().message;
}

}  // namespace

TEST(Command, starts_the_program_without_arguments) {
    EXPECT_FALSE(parsed<StartCommand>({}).background);
    EXPECT_TRUE(parsed<StartCommand>({u"--background"_s}).background);
}

TEST(Command, reads_every_option_of_create) {
    const auto options =
        parsed<CreateCommand>({u"create"_s, u"127.0.0.1:80"_s, u"--dev"_s, u"--name"_s, u"My Mail!"_s, u"--icon"_s,
                               u"a.png"_s, u"--css"_s, u"a.css"_s, u"--js"_s, u"a.js"_s, u"--js-at"_s,
                               u"documentStart"_s, u"--theme-color"_s, u"1e90ff"_s, u"--theme-opacity"_s, u"0.5"_s,
                               u"--border"_s, u"--user-agent"_s, u"A/1"_s, u"--allow-host"_s, u"a.b"_s,
                               u"--allow-host"_s, u"c.d"_s, u"--no-badge"_s})
            .options;
    EXPECT_EQ(options.address, u"127.0.0.1:80"_s);
    EXPECT_EQ(options.name, u"My Mail!"_s);
    EXPECT_EQ(options.iconFile, u"a.png"_s);
    EXPECT_EQ(options.isDevMode, true);
    EXPECT_EQ(options.cssFile, u"a.css"_s);
    EXPECT_EQ(options.jsFile, u"a.js"_s);
    EXPECT_EQ(options.jsInjectionTime, JSInjectionTime::documentStart);
    EXPECT_EQ(options.themeColor, u"#1E90FF"_s);
    EXPECT_EQ(options.themeOpacity, 0.5);
    EXPECT_EQ(options.themeBorderEnabled, true);
    EXPECT_EQ(options.customUserAgent, u"A/1"_s);
    EXPECT_EQ(options.allowedHosts, QStringList({u"a.b"_s, u"c.d"_s}));
    EXPECT_EQ(options.badgeEnabled, false);
}

TEST(Command, leaves_alone_what_edit_does_not_name) {
    const auto command = parsed<EditCommand>({u"edit"_s, u"Mail"_s, u"--no-dev"_s, u"--badge"_s, u"--css"_s, u""_s});
    EXPECT_EQ(command.app, u"Mail"_s);
    EXPECT_EQ(command.options.isDevMode, false);
    EXPECT_EQ(command.options.badgeEnabled, true);
    EXPECT_EQ(command.options.cssFile, u""_s);
    EXPECT_FALSE(command.options.themeBorderEnabled || command.options.name || command.options.address);
}

TEST(Command, reads_rename_as_an_edit_of_the_name) {
    EXPECT_EQ(parsed<EditCommand>({u"rename"_s, u"Mail"_s, u"Post"_s}).options.name, u"Post"_s);
}

TEST(Command, takes_addresses_that_look_like_options_after_two_dashes) {
    EXPECT_EQ(parsed<CreateCommand>({u"create"_s, u"--"_s, u"--x"_s}).options.address, u"--x"_s);
}

TEST(Command, knows_json_and_verbose_everywhere) {
    const auto command = parseCommand({u"list"_s, u"--json"_s, u"--verbose"_s});
    ASSERT_TRUE(command);
    EXPECT_TRUE(command->json && command->verbose);
}

TEST(Command, refuses_wrong_usage_in_words) {
    EXPECT_EQ(refusal({u"crate"_s}), u"there is no command \"crate\""_s);
    EXPECT_EQ(refusal({u"create"_s}), u"create takes exactly: ADDRESS"_s);
    EXPECT_EQ(refusal({u"list"_s, u"x"_s}), u"list takes no arguments"_s);
    EXPECT_EQ(refusal({u"rename"_s, u"a"_s}), u"rename takes exactly: APP NAME"_s);
    for (const QStringList& arguments :
         {QStringList{u"create"_s, u"a.b"_s, u"--nonsense"_s}, {u"create"_s, u"a.b"_s, u"--name"_s},
          {u"create"_s, u"a.b"_s, u"--js-at"_s, u"never"_s}, {u"create"_s, u"a.b"_s, u"--theme-color"_s, u"red"_s},
          {u"create"_s, u"a.b"_s, u"--theme-color"_s, u"#FFF"_s},
          {u"create"_s, u"a.b"_s, u"--theme-opacity"_s, u"0.05"_s},
          {u"create"_s, u"a.b"_s, u"--theme-opacity"_s, u"nan"_s},
          {u"create"_s, u"a.b"_s, u"--icon"_s, u"x"_s, u"--no-icon"_s}, {u"edit"_s},
          {u"move"_s, u"Mail"_s, u"0"_s}, {u"move"_s, u"Mail"_s, u"x"_s}, {u"--background"_s, u"x"_s}})
        EXPECT_NE(refusal(arguments), u"accepted"_s) << arguments.join(u' ').toStdString();
}

TEST(Command, shows_the_editor_when_an_edit_names_nothing_to_change) {
    EXPECT_EQ(parsed<OpenEditorCommand>({u"edit"_s, u"Mail"_s}).app, u"Mail"_s);
    EXPECT_EQ(parsed<OpenEditorCommand>({u"edit"_s, u"Mail"_s, u"--verbose"_s}).app, u"Mail"_s);
}

TEST(Command, reads_the_commands_that_move_the_collection) {
    EXPECT_EQ(parsed<ExportCommand>({u"export"_s, u"a b.wrapio"_s}).file, u"a b.wrapio"_s);
    EXPECT_EQ(parsed<ImportCommand>({u"import"_s, u"--"_s, u"-x"_s}).file, u"-x"_s);
    EXPECT_EQ(refusal({u"export"_s}), u"export takes exactly: FILE"_s);
    EXPECT_EQ(refusal({u"import"_s, u""_s}), u"the file has no name"_s);
    EXPECT_NE(refusal({u"import"_s, u"a"_s, u"b"_s}), u"accepted"_s);
}

TEST(Command, reads_a_request_by_address_and_the_lack_of_one) {
    EXPECT_EQ(parsed<OpenCommand>({u"open"_s, u"wrapio://create?url=x"_s}).url, u"wrapio://create?url=x"_s);
    EXPECT_FALSE(parsed<OpenCommand>({u"open"_s}).url);
    EXPECT_NE(refusal({u"open"_s, u"a"_s, u"b"_s}), u"accepted"_s);
}

TEST(Command, knows_which_commands_work_on_the_catalogue) {
    EXPECT_TRUE(needsCatalogue(*parseCommand({u"list"_s})));
    EXPECT_TRUE(needsCatalogue(*parseCommand({u"import"_s, u"a"_s})));
    EXPECT_FALSE(needsCatalogue(*parseCommand({u"open"_s})));
    EXPECT_FALSE(needsCatalogue(*parseCommand({})));
    EXPECT_FALSE(needsCatalogue(*parseCommand({u"--version"_s})));
}

TEST(Command, names_every_command_and_option_in_the_help) {
    const QString help = helpText();
    for (const char* word : {"create", "edit", "rename", "move", "list", "show", "launch", "focus", "quit", "regenerate",
                             "delete", "update-all", "doctor", "export", "import", "open", "--background", "--name", "--icon", "--no-icon", "--dev", "--css", "--js",
                             "--js-at", "--theme-color", "--theme-opacity", "--border", "--user-agent", "--allow-host",
                             "--no-badge", "--address", "--no-dev", "--no-border", "--badge", "--json", "--verbose"})
        EXPECT_TRUE(help.contains(QLatin1StringView(word))) << word;
}

}  // namespace wrapio
