// Commands that move the whole collection out and in.
#include "CommandLine/CommandTask.h"

#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

void printJson(const Task& task, const Json& answer) {
    task->console.print(QString::fromStdString(answer.dump(2, ' ', false, Json::error_handler_t::replace)));
}

void reportExport(const Task& task, std::size_t count, const QString& file) {
    if (task->json)
        printJson(task, {{"exported", count}, {"path", file.toStdString()}});
    else
        task->console.print(u"Exported %1 apps to %2"_s.arg(count).arg(printable(file)));
    task->succeed();
}

QString stageText(const ImportProgress& progress) {
    const QString what =
        progress.stage == ImportProgress::Stage::readingIcons ? u"Reading the archive"_s : u"Making apps"_s;
    return u"[%1/%2] %3"_s.arg(progress.done).arg(progress.total).arg(what);
}

/// What people can tell an app by: its name, or its address, or its id when it has neither.
QString label(const Catalogue& catalogue, const UngeneratedApp& app) {
    const auto record = catalogue.store.find(app.id);
    if (!record || (record->appName && !record->appName->isEmpty()))
        return app.displayName;
    return record->configuredURL ? record->configuredURL->absoluteString() : canonicalText(app.id);
}

Json outcomeJson(const ImportOutcome& outcome) {
    Json failed = Json::array();
    for (const UngeneratedApp& app : outcome.ungenerated)
        failed.push_back({{"id", canonicalText(app.id).toStdString()},
                          {"name", app.displayName.toStdString()},
                          {"reason", generationAdvice(app.error).toStdString()}});
    return {{"imported", outcome.imported}, {"failed", failed}};
}

void reportImport(const Task& task, const Catalogue& catalogue, const ImportOutcome& outcome) {
    if (const auto failure = catalogue.store.saveFailure()) {
        task->fail(failure->description());
        return;
    }
    if (task->json)
        printJson(task, outcomeJson(outcome));
    else
        task->console.print(u"Imported %1 apps"_s.arg(outcome.imported));
    QStringList failures;
    for (const UngeneratedApp& app : outcome.ungenerated)
        failures << label(catalogue, app) + u": "_s + generationAdvice(app.error);
    if (failures.isEmpty())
        task->succeed();
    else
        task->fail(u"%1 of them are in the catalogue, but their bundles could not be made: %2"_s.arg(failures.size())
                       .arg(failures.join(u"; "_s)));
}

}  // namespace

void exportApps(const Task& task, const ExportCommand& command) {
    const QString file = task->console.resolved(command.file);
    const auto& apps = task->services.catalogue.openForReading().store.configurations();
    const std::size_t count = apps.size();
    task->services.exchange().exportToURL(
        file, apps, task->services.favicons,
        [task](std::size_t done, std::size_t total) {
            task->console.progress(u"[%1/%2] Exporting"_s.arg(done).arg(total));
        },
        [task, count](const tl::expected<std::optional<QString>, AnyError>& result) {
            if (result && *result)
                reportExport(task, count, **result);
            else
                task->fail(result ? u"nothing was exported"_s : result.error().description());
        });
}

void importApps(const Task& task, const ImportCommand& command) {
    const QString file = task->console.resolved(command.file);
    if (!task->services.files.exists(file)) {
        task->fail(u"there is no file %1"_s.arg(file));
        return;
    }
    const auto catalogue = openCatalogue(task);
    if (!catalogue)
        return;
    task->services.exchange().importFromURL(
        file, {catalogue->store, task->services.favicons, catalogue->lifecycle},
        [task](const ImportProgress& progress) { task->console.progress(stageText(progress)); },
        [task, catalogue](const tl::expected<ImportOutcome, AnyError>& result) {
            if (result)
                reportImport(task, *catalogue, *result);
            else
                task->fail(result.error().description());
        });
}

}  // namespace wrapio
