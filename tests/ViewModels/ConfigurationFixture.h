// A form over a catalogue that a test names.
#pragma once

#include "ViewModelFixture.h"
#include "ViewModels/ConfigurationViewModel.h"

#include <QColor>

#include <memory>

namespace wrapio {

class ConfigurationFixture : public ViewModelFixture {
protected:
    ConfigurationViewModel&
    makeForm(const std::vector<AppConfiguration>& records = {
                 ViewModelFixture::app(QStringLiteral("Mail"), QStringLiteral("https://mail.example.com/"))}) {
        makeServices(records);
        form = std::make_unique<ConfigurationViewModel>(*store, favicons, resources, dialogs, files);
        return *form;
    }

    [[nodiscard]] AppConfiguration current() const { return store->configuration(); }

    /// The colour of the icon that is saved for an app.
    [[nodiscard]] QColor savedColour(const QUuid& id) {
        const auto icon = favicons.loadSavedIcon(id);
        return icon ? icon->pixelColor(0, 0) : QColor();
    }
    [[nodiscard]] QColor shownColour() const {
        return form->fetchedIcon() ? form->fetchedIcon()->pixelColor(0, 0) : QColor();
    }

    void serveIcon(const QString& url, const QColor& colour) {
        http.responses[url] = {200, QStringLiteral("image/png"), fileOf(plainImage(32, 32, colour), "png")};
    }

    std::unique_ptr<ConfigurationViewModel> form;
};

}  // namespace wrapio
