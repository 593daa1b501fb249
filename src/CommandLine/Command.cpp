#include "CommandLine/Command.h"

#include <QCommandLineParser>

#include <functional>
#include <map>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using Action = decltype(Command::action);
using Parsed = tl::expected<Action, UsageError>;

/// One command: the names of its arguments, its options, and how to make an action of them.
struct Grammar {
    QStringList positional;
    std::vector<QCommandLineOption> options;
    std::function<Parsed(const QCommandLineParser&, const QStringList&)> make;
};

constexpr double smallestOpacity = 0.1;
constexpr double largestOpacity = 1.0;
constexpr qsizetype colorDigits = 6;

QCommandLineOption flag(const QString& name) {
    return QCommandLineOption(name);
}

QCommandLineOption valued(const QString& name, const QString& value) {
    return QCommandLineOption(name, QString(), value);
}

std::vector<QCommandLineOption> appOptions() {
    return {valued(u"name"_s, u"N"_s),      valued(u"icon"_s, u"FILE"_s),  flag(u"no-icon"_s),
            flag(u"dev"_s),                 valued(u"css"_s, u"FILE"_s),   valued(u"js"_s, u"FILE"_s),
            valued(u"js-at"_s, u"TIME"_s),  valued(u"theme-color"_s, u"COLOR"_s),
            valued(u"theme-opacity"_s, u"NUMBER"_s), flag(u"border"_s),    valued(u"user-agent"_s, u"S"_s),
            valued(u"allow-host"_s, u"H"_s), flag(u"no-badge"_s)};
}

std::vector<QCommandLineOption> editOptions() {
    std::vector<QCommandLineOption> options = appOptions();
    for (const QString& name : {u"no-dev"_s, u"no-border"_s, u"badge"_s})
        options.push_back(flag(name));
    options.push_back(valued(u"address"_s, u"ADDRESS"_s));
    return options;
}

std::optional<QString> value(const QCommandLineParser& parser, const QString& name) {
    return parser.isSet(name) ? std::optional(parser.value(name)) : std::nullopt;
}

/// True or false by which of two opposite flags is set; nothing when neither is.
std::optional<bool> choice(const QCommandLineParser& parser, const QString& on, const QString& off) {
    const QStringList known = parser.optionNames();
    if (known.contains(on))
        return true;
    return known.contains(off) ? std::optional(false) : std::nullopt;
}

tl::expected<void, UsageError> readTheme(const QCommandLineParser& parser, AppOptions& options) {
    options.themeColor = value(parser, u"theme-color"_s);
    if (options.themeColor && !options.themeColor->isEmpty()) {
        QString digits = options.themeColor->toUpper();
        digits.remove(u'#');
        bool isNumber = false;
        digits.toUInt(&isNumber, 16);
        if (!isNumber || digits.size() != colorDigits)
            return tl::unexpected(UsageError{u"--theme-color takes a colour like #1E90FF"_s});
        options.themeColor = u'#' + digits;
    }
    if (const auto opacity = value(parser, u"theme-opacity"_s)) {
        bool isNumber = false;
        options.themeOpacity = opacity->toDouble(&isNumber);
        if (!isNumber || !(*options.themeOpacity >= smallestOpacity && *options.themeOpacity <= largestOpacity))
            return tl::unexpected(UsageError{u"--theme-opacity takes a number from 0.1 to 1"_s});
    }
    return {};
}

tl::expected<AppOptions, UsageError> readAppOptions(const QCommandLineParser& parser) {
    AppOptions options;
    options.name = value(parser, u"name"_s);
    options.iconFile = value(parser, u"icon"_s);
    options.noIcon = parser.isSet(u"no-icon"_s);
    if (options.noIcon && options.iconFile)
        return tl::unexpected(UsageError{u"--icon and --no-icon exclude each other"_s});
    options.cssFile = value(parser, u"css"_s);
    options.jsFile = value(parser, u"js"_s);
    options.customUserAgent = value(parser, u"user-agent"_s);
    if (parser.isSet(u"allow-host"_s))
        options.allowedHosts = parser.values(u"allow-host"_s);
    options.isDevMode = choice(parser, u"dev"_s, u"no-dev"_s);
    options.themeBorderEnabled = choice(parser, u"border"_s, u"no-border"_s);
    options.badgeEnabled = choice(parser, u"badge"_s, u"no-badge"_s);
    if (const auto time = value(parser, u"js-at"_s)) {
        options.jsInjectionTime = jsInjectionTimeFromRawValue(time->toStdString());
        if (!options.jsInjectionTime)
            return tl::unexpected(UsageError{u"--js-at takes documentStart or documentEnd"_s});
    }
    if (auto theme = readTheme(parser, options); !theme)
        return tl::unexpected(theme.error());
    return options;
}

Parsed makeCreate(const QCommandLineParser& parser, const QStringList& arguments) {
    auto options = readAppOptions(parser);
    if (!options)
        return tl::unexpected(options.error());
    options->address = arguments.at(0);
    return CreateCommand{*options};
}

bool namesNothingToChange(const QCommandLineParser& parser) {
    const QStringList names = parser.optionNames();
    return std::all_of(names.begin(), names.end(),
                       [](const QString& name) { return name == u"json"_s || name == u"verbose"_s; });
}

Parsed makeEdit(const QCommandLineParser& parser, const QStringList& arguments) {
    auto options = readAppOptions(parser);
    if (!options)
        return tl::unexpected(options.error());
    options->address = value(parser, u"address"_s);
    if (namesNothingToChange(parser))
        return OpenEditorCommand{arguments.at(0)};
    return EditCommand{arguments.at(0), *options};
}

Parsed makeRename(const QCommandLineParser&, const QStringList& arguments) {
    AppOptions options;
    options.name = arguments.at(1);
    return EditCommand{arguments.at(0), options};
}

Parsed makeMove(const QCommandLineParser&, const QStringList& arguments) {
    bool isNumber = false;
    const int position = arguments.at(1).toInt(&isNumber);
    if (!isNumber || position < 1)
        return tl::unexpected(UsageError{u"move takes a position counted from 1"_s});
    return MoveCommand{arguments.at(0), position};
}

template <typename OfOneApp>
Grammar ofOneApp() {
    return {{u"APP"_s}, {}, [](const QCommandLineParser&, const QStringList& arguments) -> Parsed {
                return OfOneApp{arguments.at(0)};
            }};
}

template <typename Plain>
Grammar plain() {
    return {{}, {}, [](const QCommandLineParser&, const QStringList&) -> Parsed { return Plain{}; }};
}

template <typename OfOneFile>
Grammar ofOneFile() {
    return {{u"FILE"_s}, {}, [](const QCommandLineParser&, const QStringList& arguments) -> Parsed {
                if (arguments.at(0).isEmpty())
                    return tl::unexpected(UsageError{u"the file has no name"_s});
                return OfOneFile{arguments.at(0)};
            }};
}

Parsed makeCapture(const QCommandLineParser&, const QStringList& arguments) {
    if (!arguments.at(1).endsWith(u".png", Qt::CaseInsensitive))
        return tl::unexpected(UsageError{u"capture writes a picture whose name ends in .png"_s});
    return CaptureCommand{arguments.at(0), arguments.at(1)};
}

Parsed makeOpen(const QCommandLineParser&, const QStringList& arguments) {
    return OpenCommand{arguments.isEmpty() ? std::nullopt : std::optional(arguments.at(0))};
}

Grammar doctorGrammar() {
    return {{}, {flag(u"clean"_s), flag(u"yes"_s)}, [](const QCommandLineParser& parser, const QStringList&) -> Parsed {
                return DoctorCommand{parser.isSet(u"clean"_s), parser.isSet(u"yes"_s)};
            }};
}

const std::map<QString, Grammar>& grammars() {
    static const std::map<QString, Grammar> all = {
        {u"create"_s, {{u"ADDRESS"_s}, appOptions(), makeCreate}},
        {u"edit"_s, {{u"APP"_s}, editOptions(), makeEdit}},
        {u"rename"_s, {{u"APP"_s, u"NAME"_s}, {}, makeRename}},
        {u"move"_s, {{u"APP"_s, u"POSITION"_s}, {}, makeMove}},
        {u"list"_s, plain<ListCommand>()},
        {u"show"_s, ofOneApp<ShowCommand>()},
        {u"launch"_s, ofOneApp<LaunchCommand>()},
        {u"focus"_s, ofOneApp<FocusCommand>()},
        {u"quit"_s, ofOneApp<QuitCommand>()},
        {u"regenerate"_s, ofOneApp<RegenerateCommand>()},
        {u"delete"_s, ofOneApp<DeleteCommand>()},
        {u"update-all"_s, plain<UpdateAllCommand>()},
        {u"doctor"_s, doctorGrammar()},
        {u"export"_s, ofOneFile<ExportCommand>()},
        {u"import"_s, ofOneFile<ImportCommand>()},
        {u"capture"_s, {{u"APP"_s, u"FILE"_s}, {}, makeCapture}},
        {u"open"_s, {{u"[URL]"_s}, {}, makeOpen}},
    };
    return all;
}

tl::expected<Command, UsageError> parseNamed(const QString& name, const QStringList& rest) {
    const auto grammar = grammars().find(name);
    if (grammar == grammars().end())
        return tl::unexpected(UsageError{u"there is no command \"%1\""_s.arg(name)});
    QCommandLineParser parser;
    parser.addOptions(QList(grammar->second.options.begin(), grammar->second.options.end()));
    parser.addOptions({flag(u"json"_s), flag(u"verbose"_s), flag(u"help"_s)});
    if (!parser.parse(QStringList(name) + rest))
        return tl::unexpected(UsageError{parser.errorText()});
    if (parser.isSet(u"help"_s))
        return Command{HelpCommand{}};
    const QStringList arguments = parser.positionalArguments();
    const QStringList& wanted = grammar->second.positional;
    const bool lastMayMiss = !wanted.isEmpty() && wanted.last().startsWith(u'[');
    if (arguments.size() != wanted.size() && !(lastMayMiss && arguments.size() == wanted.size() - 1)) {
        return tl::unexpected(UsageError{
            wanted.isEmpty() ? u"%1 takes no arguments"_s.arg(name)
                             : u"%1 takes exactly: %2"_s.arg(name, wanted.join(u' '))});
    }
    return grammar->second.make(parser, arguments).map([&parser](Action action) {
        return Command{std::move(action), parser.isSet(u"json"_s), parser.isSet(u"verbose"_s)};
    });
}

}  // namespace

tl::expected<Command, UsageError> parseCommand(const QStringList& arguments) {
    if (arguments.isEmpty())
        return Command{StartCommand{}};
    const QString& first = arguments.first();
    if (first == u"--background"_s && arguments.size() == 1)
        return Command{StartCommand{.background = true}};
    if (first == u"--version"_s)
        return Command{VersionCommand{}};
    if (first == u"--help"_s || first == u"-h"_s || first == u"help"_s)
        return Command{HelpCommand{}};
    return parseNamed(first, arguments.sliced(1));
}

bool needsCatalogue(const Command& command) {
    const Action& action = command.action;
    return !std::holds_alternative<StartCommand>(action) && !std::holds_alternative<OpenCommand>(action) &&
           !std::holds_alternative<OpenEditorCommand>(action) && !std::holds_alternative<VersionCommand>(action) && !std::holds_alternative<HelpCommand>(action);
}

QString helpText() {
    return uR"(Wrapio turns websites into standalone apps.

  wrapio create ADDRESS [options]     make an app for a web address
  wrapio edit APP [options]           change an app and make its bundle again; without options, show its editor
  wrapio rename APP NAME              the same as edit APP --name NAME
  wrapio move APP POSITION            give an app another place in the list, counted from 1
  wrapio list                         all apps
  wrapio show APP                     everything about one app
  wrapio launch APP                   start an app, or bring it to the front
  wrapio focus APP                    bring a running app to the front
  wrapio quit APP                     end a running app
  wrapio regenerate APP               make an app's bundle again
  wrapio delete APP                   remove an app; its saved icon and its site data stay
  wrapio update-all                   make every app again that an older template made
  wrapio doctor [--clean [--yes]]     examine everything; remove what belongs to no app
  wrapio export FILE                  write all apps, with their icons, into one archive
  wrapio import FILE                  add the apps of an archive to those that are there
  wrapio capture APP FILE.png         write what the preview of an app shows
  wrapio open [URL]                   hand a wrapio:// request over; without one, bring Wrapio to the front
  wrapio [--background]               start Wrapio
  wrapio --version | --help

APP is an id, the beginning of one (4 characters or more), or a name.

Options of create and edit:
  --name N               the app's name
  --icon FILE            its icon, from an image file        --no-icon   keep none; do not look for one
  --dev                  developer mode: local and private addresses are allowed
  --css FILE, --js FILE  style and script for every page (at most 100 KB each)
  --js-at TIME           when the script runs: documentStart or documentEnd
  --theme-color COLOR    colour of the bar, as #RRGGBB       --theme-opacity N   from 0.1 to 1
  --border               a thin outline in that colour       --no-badge  no unread badge
  --user-agent S         what the app tells sites that it is
  --allow-host H         a host that stays inside the app; may be given more than once
Only for edit:
  --address ADDRESS, --no-dev, --no-border, --badge
  An empty value ('') takes a style, a script, a colour, a name, a host list or a user agent away.

Every command takes --json (answer in JSON) and --verbose (tell on standard error what is done).
Exit status: 0 done, 1 failed, 2 wrong usage, 3 no such app, 4 several apps match.
)"_s;
}

}  // namespace wrapio
