// Commands that make bundles again or take them away.
#include "CommandLine/CommandTask.h"

#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// The apps that an update-all still has to make, and those it could not.
struct UpdateRun {
    Catalogue catalogue;
    std::vector<AppConfiguration> apps;
    std::size_t next = 0;
    QStringList failures;
};

void reportUpdate(const Task& task, const UpdateRun& run) {
    const auto updated = static_cast<qsizetype>(run.apps.size()) - run.failures.size();
    if (task->json) {
        Json answer = {{"updated", updated}, {"failed", Json::array()}};
        for (const QString& failure : run.failures)
            answer["failed"].push_back(failure.toStdString());
        task->console.print(QString::fromStdString(answer.dump(2, ' ', false, Json::error_handler_t::replace)));
    } else {
        task->console.print(u"Updated %1 of %2 apps"_s.arg(updated).arg(run.apps.size()));
    }
    if (run.failures.isEmpty())
        task->succeed();
    else
        task->fail(u"could not update "_s + run.failures.join(u"; "_s));
}

void updateOne(UpdateRun& run, const QUuid& id) {
    const auto app = run.catalogue.store.find(id);
    if (!app)
        return;
    if (const auto generated = run.catalogue.lifecycle.generate(*app); !generated)
        run.failures << app->displayName() + u": "_s + generationAdvice(generated.error());
}

/// One app per turn of the event loop, so that whoever shares it stays responsive.
void updateNext(const Task& task, const std::shared_ptr<UpdateRun>& run) {
    if (run->next == run->apps.size()) {
        reportUpdate(task, *run);
        return;
    }
    const QUuid id = run->apps[run->next++].id;
    // As the catalogue has it now: another command may have edited or removed it since the last turn.
    if (const auto app = run->catalogue.store.find(id)) {
        task->console.progress(u"[%1/%2] %3"_s.arg(run->next).arg(run->apps.size()).arg(printable(app->displayName())));
        endRunningApp(task, run->catalogue, *app, [task, run, id] {
            if (run->next < run->apps.size())
                run->catalogue.lifecycle.prepareGeneration(run->apps[run->next]);
            updateOne(*run, id);
            task->services.scheduler.async([task, run] { updateNext(task, run); });
        });
        return;
    }
    task->services.scheduler.async([task, run] { updateNext(task, run); });
}

void makeAgain(const Task& task, const Catalogue& catalogue, const AppConfiguration& config) {
    if (const auto generated = catalogue.lifecycle.generate(config); !generated) {
        task->fail(u"could not make the bundle of %1: %2"_s.arg(config.displayName(),
                                                                generationAdvice(generated.error())));
        return;
    }
    if (const auto failure = catalogue.store.saveFailure()) {
        task->fail(failure->description());
        return;
    }
    const AppConfiguration made = catalogue.store.find(config.id).value_or(config);
    task->answer(u"Made %1 again"_s.arg(made.displayName()), made, catalogue);
}

void remove(const Task& task, const Catalogue& catalogue, const AppConfiguration& config) {
    ConfigurationManager& store = catalogue.store;
    const QString bundleURL = store.getBundleURL(config);
    store.removeApp(config.id);
    if (store.saveFailure()) {
        task->fail(store.saveFailure()->description());
        return;
    }
    if (task->services.files.exists(bundleURL)) {
        task->fail(u"%1 is no longer in the catalogue, but its bundle could not be deleted: %2"_s.arg(
            config.displayName(), bundleURL));
        return;
    }
    if (task->json) {
        const Json answer = {{"deleted", canonicalText(config.id).toStdString()}};
        task->console.print(QString::fromStdString(answer.dump(2)));
    } else {
        task->console.print(u"Deleted %1"_s.arg(printable(config.displayName())));
    }
    task->succeed();
}

}  // namespace

void regenerateApp(const Task& task, const RegenerateCommand& command) {
    const auto opened = openApp(task, command.app, true);
    if (!opened)
        return;
    endRunningApp(task, *opened, [task, catalogue = opened->catalogue](const AppConfiguration& config) {
        makeAgain(task, catalogue, config);
    });
}

void deleteApp(const Task& task, const DeleteCommand& command) {
    const auto opened = openApp(task, command.app, true);
    if (!opened)
        return;
    endRunningApp(task, *opened, [task, catalogue = opened->catalogue](const AppConfiguration& config) {
        remove(task, catalogue, config);
    });
}

void updateAllApps(const Task& task) {
    const auto catalogue = openCatalogue(task);
    if (!catalogue)
        return;
    const auto run = std::make_shared<UpdateRun>(UpdateRun{*catalogue, {}, 0, {}});
    for (const AppConfiguration& app : catalogue->store.configurations()) {
        if (task->services.versions.isOutdated(app.runnerVersion))
            run->apps.push_back(app);
    }
    updateNext(task, run);
}

}  // namespace wrapio
