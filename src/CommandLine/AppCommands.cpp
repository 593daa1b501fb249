// Commands that make an app or change one.
#include "CommandLine/AppOptionsReading.h"
#include "CommandLine/CommandTask.h"

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// An app on its way into the catalogue.
struct Draft {
    AppConfiguration config;
    std::optional<QImage> icon;
};

void hintAtSharedBundle(const Task& task, const Catalogue& catalogue, const AppConfiguration& config) {
    const auto& apps = catalogue.store.configurations();
    const bool shared = std::any_of(apps.begin(), apps.end(), [&config](const AppConfiguration& other) {
        return other.id != config.id && other.displayName() == config.displayName();
    });
    if (shared)
        task->console.note(u"wrapio: note: another app is called %1 too; both share one bundle"_s.arg(
            printable(config.displayName())));
}

/// Takes back what of a new app has been stored, so that a failed command leaves nothing behind.
void takeBack(const Task& task, const Catalogue& catalogue, const AppConfiguration& config) {
    catalogue.store.removeApp(config.id);
    task->services.favicons.deleteSavedIcon(config.id);
}

/// Keeps the icon of the draft, if it has one; ends the task when that fails.
bool saveIcon(const Task& task, Draft& draft) {
    if (!draft.icon)
        return true;
    if (!task->services.favicons.saveIcon(*draft.icon, draft.config.id)) {
        task->fail(
            u"the icon could not be saved; is the disk full, or its folder closed to you? --no-icon does without"_s);
        return false;
    }
    draft.config.iconSource = IconSource::favicon;
    return true;
}

void storeNewApp(const Task& task, Draft draft) {
    const auto catalogue = openCatalogue(task);
    if (!catalogue)
        return;
    ConfigurationManager& store = catalogue->store;
    hintAtSharedBundle(task, *catalogue, draft.config);
    if (!saveIcon(task, draft))
        return;
    draft.config.sortOrder = static_cast<std::int64_t>(store.configurations().size());
    draft.config.lastUpdated = task->services.scheduler.now();
    store.appendApps({draft.config});
    if (const auto failure = store.saveFailure()) {
        task->services.favicons.deleteSavedIcon(draft.config.id);
        task->fail(failure->description());
        return;
    }
    store.selectApp(draft.config.id);
    if (const auto generated = catalogue->lifecycle.generate(draft.config); !generated) {
        takeBack(task, *catalogue, draft.config);
        task->fail(u"could not make %1: %2"_s.arg(draft.config.displayName(), generationAdvice(generated.error())));
        return;
    }
    if (const auto failure = store.saveFailure()) {
        task->fail(failure->description());
        return;
    }
    const AppConfiguration config = store.find(draft.config.id).value_or(draft.config);
    task->answer(u"Created %1 (%2)"_s.arg(config.displayName(), catalogue->lifecycle.getBundleURL(config)), config,
                 *catalogue);
}

/// Whether an edit leaves an old bundle behind that no other app uses.
bool leavesOldBundle(const Catalogue& catalogue, const AppConfiguration& before, const AppConfiguration& after) {
    const QString oldBundle = catalogue.lifecycle.getBundleURL(before);
    if (oldBundle == catalogue.lifecycle.getBundleURL(after))
        return false;
    const auto& apps = catalogue.store.configurations();
    return std::none_of(apps.begin(), apps.end(), [&](const AppConfiguration& other) {
        return catalogue.lifecycle.getBundleURL(other) == oldBundle;
    });
}

/// Makes the bundle of an app that was changed: `opened` as it was before, `config` as it is now.
void makeChangedBundle(const Task& task, const OpenedApp& opened, const AppConfiguration& config) {
    ConfigurationManager& store = opened.catalogue.store;
    if (const auto generated = opened.catalogue.lifecycle.generate(config); !generated) {
        task->fail(u"the changes are saved, but the bundle of %1 could not be made: %2"_s.arg(
            config.displayName(), generationAdvice(generated.error())));
        return;
    }
    if (leavesOldBundle(opened.catalogue, opened.config, config))
        store.removeBundle(opened.config);
    if (const auto failure = store.saveFailure()) {
        task->fail(failure->description());
        return;
    }
    const AppConfiguration saved = store.find(config.id).value_or(config);
    task->answer(u"Changed %1"_s.arg(saved.displayName()), saved, opened.catalogue);
}

void storeChangedApp(const Task& task, const OpenedApp& opened, Draft draft, bool takeIconAway) {
    ConfigurationManager& store = opened.catalogue.store;
    hintAtSharedBundle(task, opened.catalogue, draft.config);
    if (!saveIcon(task, draft))
        return;
    AppConfiguration config = draft.config;
    if (takeIconAway) {
        task->services.favicons.deleteSavedIcon(config.id);
        config.iconSource = IconSource::default_;
    }
    store.updateConfiguration(config);
    if (const auto failure = store.saveFailure()) {
        task->fail(failure->description());
        return;
    }
    endRunningApp(task, opened, [task, opened](const AppConfiguration& present) {
        makeChangedBundle(task, opened, present);
    });
}

}  // namespace

void createApp(const Task& task, const CreateCommand& command) {
    const auto config = applied(command.options, AppConfiguration(), task->services.files, task->console);
    if (!config) {
        task->fail(config.error().message);
        return;
    }
    const auto icon = iconOf(command.options, task->services.files, task->console);
    if (!icon) {
        task->fail(icon.error().message);
        return;
    }
    const Draft draft{*config, *icon};
    if (draft.icon || command.options.noIcon) {
        storeNewApp(task, draft);
        return;
    }
    task->console.progress(u"Looking for the icon of "_s + printable(config->displayName()));
    task->services.favicons.fetchFavicon(*config->configuredURL, [task, draft](const std::optional<QImage>& fetched) {
        Draft complete = draft;
        complete.icon = fetched;
        if (!fetched && draft.config.isDevMode)
            complete.icon = task->services.resources.image(u"template-dev-server"_s);
        storeNewApp(task, complete);
    });
}

void editApp(const Task& task, const EditCommand& command) {
    const auto opened = openApp(task, command.app, true);
    if (!opened)
        return;
    const auto config = applied(command.options, opened->config, task->services.files, task->console);
    if (!config) {
        task->fail(config.error().message);
        return;
    }
    const auto icon = iconOf(command.options, task->services.files, task->console);
    if (!icon) {
        task->fail(icon.error().message);
        return;
    }
    storeChangedApp(task, *opened, Draft{*config, *icon}, command.options.noIcon);
}

void openEditor(const Task& task, const OpenEditorCommand& command) {
    const auto opened = openApp(task, command.app, true);
    if (!opened)
        return;
    if (task->services.showEditor && task->services.showEditor(opened->config.id))
        task->succeed();
    else
        task->fail(u"there is no display for the editor; say with options what to change"_s);
}

}  // namespace wrapio
