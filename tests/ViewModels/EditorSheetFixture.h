// An editor sheet over a catalogue of two apps.
#pragma once

#include "ViewModelFixture.h"
#include "ViewModels/EditorSheetViewModel.h"

#include <memory>

namespace wrapio {

class EditorSheetFixture : public ViewModelFixture {
protected:
    EditorSheetViewModel& open(AppEditingContext context) {
        sheet = std::make_unique<EditorSheetViewModel>(
            makeServicesOnce(), std::move(context),
            [this](const AppConfiguration& config) { removed << config.displayName(); });
        QObject::connect(sheet.get(), &EditorSheetViewModel::dismissed, [this] { ++dismissals; });
        sheet->open();
        return *sheet;
    }
    EditorSheetViewModel& openNew() { return open({.mode = ConfigurationMode::create}); }
    EditorSheetViewModel& openEdit(const AppConfiguration& config) {
        return open({.mode = ConfigurationMode::edit, .appId = config.id, .isNew = false});
    }
    EditorSheetViewModel& openTemplate(const AppTemplate& appTemplate) {
        makeServicesOnce();
        const QUuid id = store->createApp().id;
        return open({.mode = ConfigurationMode::template_, .appId = id, .appTemplate = appTemplate});
    }
    ConfigurationViewModel& form() { return sheet->configuration(); }

    const ViewModelServices& makeServicesOnce() {
        if (!services)
            services.emplace(makeServices(records));
        return *services;
    }

    std::vector<AppConfiguration> records = {
        ViewModelFixture::app(QStringLiteral("Mail"), QStringLiteral("https://mail.example.com/")),
        ViewModelFixture::app(QStringLiteral("News"), QStringLiteral("https://news.example.com/"))};
    std::optional<ViewModelServices> services;
    std::unique_ptr<EditorSheetViewModel> sheet;
    QStringList removed;
    int dismissals = 0;
};

}  // namespace wrapio
