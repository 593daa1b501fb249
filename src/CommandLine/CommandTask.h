// What the commands have in common: the services, the console, and how they end.
#pragma once

#include "CommandLine/AppLookup.h"
#include "CommandLine/Command.h"
#include "CommandLine/CommandServices.h"
#include "CommandLine/Console.h"
#include "CommandLine/RecordText.h"

#include <functional>
#include <memory>

namespace wrapio {

/// One command that is being carried out. Shared by the callbacks that it waits for.
struct CommandTask {
    CommandServices services;
    Console& console;
    bool json = false;
    std::function<void(ExitStatus)> done;

    void succeed() const { done(ExitStatus::done); }
    /// Ends with one line that says what to do.
    void fail(const QString& message, ExitStatus status = ExitStatus::failed) const {
        console.note(QStringLiteral("wrapio: ") + printable(message));
        done(status);
    }
    /// Ends with `line`, or with `config` in JSON.
    void answer(const QString& line, const AppConfiguration& config, const Catalogue& catalogue) const;
};

using Task = std::shared_ptr<const CommandTask>;

/// Opens the catalogue and looks `app` up in it; ends the task when either fails.
struct OpenedApp {
    Catalogue catalogue;
    AppConfiguration config;
};
[[nodiscard]] std::optional<OpenedApp> openApp(const Task& task, const QString& app, bool forChanges);
/// Opens the catalogue to be changed; ends the task when another process keeps it.
[[nodiscard]] std::optional<Catalogue> openCatalogue(const Task& task);

/// Ends the app, if it is running, and calls `then` when it has ended or has had a moment to do so: before its bundle is
/// replaced or removed. The catalogue may have changed by then.
void endRunningApp(const Task& task, const Catalogue& catalogue, const AppConfiguration& config,
                   const std::function<void()>& then);
/// The same; hands on the app as the catalogue has it by then, and ends the task when it is gone.
void endRunningApp(const Task& task, const OpenedApp& opened,
                   const std::function<void(const AppConfiguration&)>& then);

/// Tells in words what went wrong in making a bundle, and what to do about it.
[[nodiscard]] QString generationAdvice(const AnyError& error);

// The commands, each in the file of its concern.
void createApp(const Task& task, const CreateCommand& command);
void editApp(const Task& task, const EditCommand& command);
void openEditor(const Task& task, const OpenEditorCommand& command);
void launchApp(const Task& task, const LaunchCommand& command);
void focusApp(const Task& task, const FocusCommand& command);
void quitApp(const Task& task, const QuitCommand& command);
void listApps(const Task& task);
void showApp(const Task& task, const ShowCommand& command);
void moveApp(const Task& task, const MoveCommand& command);
void regenerateApp(const Task& task, const RegenerateCommand& command);
void deleteApp(const Task& task, const DeleteCommand& command);
void updateAllApps(const Task& task);
void exportApps(const Task& task, const ExportCommand& command);
void importApps(const Task& task, const ImportCommand& command);
void captureApp(const Task& task, const CaptureCommand& command);
void runDoctor(const Task& task, const DoctorCommand& command);

}  // namespace wrapio
