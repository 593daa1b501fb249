// Commands that look at the catalogue or rearrange it.
#include "CommandLine/CommandTask.h"

#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

void listApps(const Task& task) {
    const Catalogue catalogue = task->services.catalogue.openForReading();
    const auto& apps = catalogue.store.configurations();
    const Circumstances now(catalogue, task->services.versions);
    if (task->json) {
        Json array = Json::array();
        for (const AppConfiguration& app : apps)
            array.push_back(recordJson(app, now));
        task->console.print(QString::fromStdString(array.dump(2, ' ', false, Json::error_handler_t::replace)));
    } else if (apps.empty()) {
        task->console.print(u"There are no apps yet; make one with: wrapio create ADDRESS"_s);
    } else {
        task->console.print(tableText(apps, now));
    }
    task->succeed();
}

void showApp(const Task& task, const ShowCommand& command) {
    const auto opened = openApp(task, command.app, false);
    if (!opened)
        return;
    if (!task->json) {
        task->console.print(recordText(opened->config, {opened->catalogue, task->services.versions}));
        task->succeed();
        return;
    }
    task->answer(u""_s, opened->config, opened->catalogue);
}

void moveApp(const Task& task, const MoveCommand& command) {
    const auto opened = openApp(task, command.app, true);
    if (!opened)
        return;
    ConfigurationManager& store = opened->catalogue.store;
    const auto& apps = store.configurations();
    const auto count = static_cast<std::ptrdiff_t>(apps.size());
    if (command.position > count) {
        task->fail(u"there are only %1 apps"_s.arg(count), ExitStatus::usage);
        return;
    }
    std::ptrdiff_t from = 0;
    while (apps[static_cast<std::size_t>(from)].id != opened->config.id)
        ++from;
    store.moveApp(from, command.position - 1);
    if (store.saveFailure()) {
        task->fail(store.saveFailure()->description());
        return;
    }
    const AppConfiguration moved = store.find(opened->config.id).value_or(opened->config);
    task->answer(u"Moved %1 to position %2"_s.arg(moved.displayName()).arg(command.position), moved, opened->catalogue);
}

}  // namespace wrapio
