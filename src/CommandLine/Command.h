// What a command line asks for, once it has been read.
#pragma once

#include "Models/AppConfiguration.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

#include <tl/expected.hpp>

namespace wrapio {

/// The options of create and edit. Absent ones leave a record's value alone.
struct AppOptions {
    std::optional<QString> address;
    std::optional<QString> name;
    std::optional<QString> iconFile;
    bool noIcon = false;
    std::optional<bool> isDevMode;
    std::optional<QString> cssFile;
    std::optional<QString> jsFile;
    std::optional<JSInjectionTime> jsInjectionTime;
    std::optional<QString> themeColor;
    std::optional<double> themeOpacity;
    std::optional<bool> themeBorderEnabled;
    std::optional<QString> customUserAgent;
    std::optional<QStringList> allowedHosts;
    std::optional<bool> badgeEnabled;
};

struct StartCommand {
    bool background = false;
};
struct CreateCommand {
    AppOptions options;
};
struct EditCommand {
    QString app;
    AppOptions options;
};
struct MoveCommand {
    QString app;
    int position = 0;  ///< counted from 1
};
struct ListCommand {};
struct ShowCommand {
    QString app;
};
struct LaunchCommand {
    QString app;
};
struct FocusCommand {
    QString app;
};
struct QuitCommand {
    QString app;
};
struct RegenerateCommand {
    QString app;
};
struct DeleteCommand {
    QString app;
};
struct UpdateAllCommand {};
struct DoctorCommand {
    bool clean = false;
    bool yes = false;
};
struct ExportCommand {
    QString file;
};
struct ImportCommand {
    QString file;
};
struct CaptureCommand {
    QString app;
    QString file;
};
struct OpenCommand {
    std::optional<QString> url;  ///< none when a desktop starts the program without one
};
struct OpenEditorCommand {
    QString app;
};
struct VersionCommand {};
struct HelpCommand {};

struct Command {
    std::variant<StartCommand, CreateCommand, EditCommand, MoveCommand, ListCommand, ShowCommand, LaunchCommand,
                 FocusCommand, QuitCommand, RegenerateCommand, DeleteCommand, UpdateAllCommand, DoctorCommand,
                 ExportCommand, ImportCommand, CaptureCommand, OpenCommand, OpenEditorCommand, VersionCommand,
                 HelpCommand>
        action;
    bool json = false;     ///< answer in JSON
    bool verbose = false;  ///< tell on standard error what is being done
};

struct UsageError {
    QString message;
};

/// Reads the arguments that follow the program's name.
[[nodiscard]] tl::expected<Command, UsageError> parseCommand(const QStringList& arguments);

/// True when the command works on the catalogue, so that it is the manager's business when one runs.
[[nodiscard]] bool needsCatalogue(const Command& command);

/// What --help prints.
[[nodiscard]] QString helpText();

}  // namespace wrapio
