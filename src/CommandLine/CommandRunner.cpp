#include "CommandLine/CommandRunner.h"

#include "CommandLine/CommandTask.h"
#include "CommandLine/Wait.h"

#include <QCoreApplication>

#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Hands each action to its function.
struct Dispatch {
    Task task;

    void operator()(const StartCommand&) const { Q_UNREACHABLE(); }
    void operator()(const OpenCommand&) const { Q_UNREACHABLE(); }
    void operator()(const OpenEditorCommand& command) const { openEditor(task, command); }
    void operator()(const CreateCommand& command) const { createApp(task, command); }
    void operator()(const EditCommand& command) const { editApp(task, command); }
    void operator()(const MoveCommand& command) const { moveApp(task, command); }
    void operator()(const ListCommand&) const { listApps(task); }
    void operator()(const ShowCommand& command) const { showApp(task, command); }
    void operator()(const LaunchCommand& command) const { launchApp(task, command); }
    void operator()(const FocusCommand& command) const { focusApp(task, command); }
    void operator()(const QuitCommand& command) const { quitApp(task, command); }
    void operator()(const RegenerateCommand& command) const { regenerateApp(task, command); }
    void operator()(const DeleteCommand& command) const { deleteApp(task, command); }
    void operator()(const UpdateAllCommand&) const { updateAllApps(task); }
    void operator()(const DoctorCommand& command) const { runDoctor(task, command); }
    void operator()(const ExportCommand& command) const { exportApps(task, command); }
    void operator()(const ImportCommand& command) const { importApps(task, command); }
    void operator()(const CaptureCommand& command) const { captureApp(task, command); }
    void operator()(const VersionCommand&) const {
        task->console.print(u"wrapio "_s + QCoreApplication::applicationVersion());
        task->succeed();
    }
    void operator()(const HelpCommand&) const {
        task->console.print(helpText().trimmed());
        task->succeed();
    }
};

}  // namespace

void CommandRunner::run(const Command& command, Console& console, Done done) {
    const auto task =
        std::make_shared<const CommandTask>(CommandTask{m_services, console, command.json, std::move(done)});
    std::visit(Dispatch{task}, command.action);
}

void CommandTask::answer(const QString& line, const AppConfiguration& config, const Catalogue& catalogue) const {
    if (json)
        console.print(QString::fromStdString(
            recordJson(config, {catalogue, services.versions}).dump(2, ' ', false, Json::error_handler_t::replace)));
    else
        console.print(printable(line));
    succeed();
}

std::optional<Catalogue> openCatalogue(const Task& task) {
    const auto catalogue = task->services.catalogue.openForChanges();
    if (!catalogue) {
        if (catalogue.error().byManager)
            task->done(ExitStatus::needsManager);
        else
            task->fail(catalogue.error().description());
        return std::nullopt;
    }
    return *catalogue;
}

std::optional<OpenedApp> openApp(const Task& task, const QString& app, bool forChanges) {
    const auto catalogue = forChanges ? openCatalogue(task) : std::optional(task->services.catalogue.openForReading());
    if (!catalogue)
        return std::nullopt;
    const auto config = findApp(catalogue->store.configurations(), app);
    if (!config) {
        task->fail(config.error().message, config.error().status);
        return std::nullopt;
    }
    return OpenedApp{*catalogue, *config};
}

void endRunningApp(const Task& task, const Catalogue& catalogue, const AppConfiguration& config,
                   const std::function<void()>& then) {
    constexpr double endLimit = 1.0;
    AppLifecycleManager& lifecycle = catalogue.lifecycle;
    if (!lifecycle.runningApplication(config)) {
        then();
        return;
    }
    lifecycle.quit(config);
    const auto hasEnded = [&lifecycle, config] { return !lifecycle.runningApplication(config); };
    waitUntil(task->services.scheduler, endLimit, hasEnded, [task, &lifecycle, then](bool) {
        // What is published as running must be true by then: making a bundle again pauses for those.
        lifecycle.checkRunningApps();
        task->services.scheduler.async(then);
    });
}

void endRunningApp(const Task& task, const OpenedApp& opened,
                   const std::function<void(const AppConfiguration&)>& then) {
    endRunningApp(task, opened.catalogue, opened.config, [task, opened, then] {
        if (const auto present = opened.catalogue.store.find(opened.config.id))
            then(*present);
        else
            task->fail(u"%1 was deleted in the meantime"_s.arg(opened.config.displayName()), ExitStatus::noSuchApp);
    });
}

QString generationAdvice(const AnyError& error) {
    if (const auto* const generator = error.as<GeneratorError>()) {
        if (*generator == GeneratorError::templateNotFound())
            return u"the template WrapioRunner.app is missing; install Wrapio again"_s;
        if (*generator == GeneratorError::configurationError())
            return u"the app has no address; give it one with wrapio edit APP --address ADDRESS"_s;
        if (*generator == GeneratorError::invalidAppName())
            return u"nothing of the app's name can be used as a file name; choose another with --name"_s;
    }
    if (const auto* const signing = error.as<CodeSigningError>())
        return signing->localizedDescription + u": "_s + signing->failureReason;
    return error.description();
}

}  // namespace wrapio
