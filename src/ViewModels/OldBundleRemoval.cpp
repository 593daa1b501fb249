#include "ViewModels/OldBundleRemoval.h"

#include "Platform/Diagnostics.h"
#include "ViewModels/BundleHints.h"

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

bool isInhabited(const std::string& name, const ConfigurationManager& store) {
    const auto& records = store.configurations();
    return std::any_of(records.begin(), records.end(), [&name](const AppConfiguration& record) {
        const BundlePlaces places(record.displayName());
        return std::find(places.names().begin(), places.names().end(), name) != places.names().end();
    });
}

}  // namespace

void removeOldBundle(const AppConfiguration& before, const AppConfiguration& after, const ViewModelServices& services) {
    if (before.displayName() == after.displayName())
        return;
    const BundlePlaces places(before.displayName());
    for (const std::string& name : places.names()) {
        const QString path = services.directories.generatedApps() + u'/' + QString::fromStdString(name);
        if (!services.files.exists(path) || isInhabited(name, services.configManager))
            continue;
        services.appLifecycleManager.quit(before);
        static_cast<void>(services.launchServices.unregisterApp(path));  // reports its failure itself
        if (const auto removed = services.files.remove(path); !removed)
            printDiagnostics(u"❌ [Dashboard] Failed to delete old bundle: "_s + removed.error().description());
    }
}

}  // namespace wrapio
