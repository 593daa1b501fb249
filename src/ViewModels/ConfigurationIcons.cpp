// How the form comes by an icon: from a template, a file, the site, or the built-in one of developers.
#include "Platform/Imaging.h"
#include "ViewModels/ConfigurationViewModel.h"
#include "ViewModels/IconUrl.h"

#include <QPointer>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestIconFile = 16LL * 1024 * 1024;
const QString devIcon = u"template-dev-server"_s;

}  // namespace

void ConfigurationViewModel::applyTemplate(const AppTemplate& appTemplate) {
    setAppNameInput(appTemplate.name);
    setUrlInput(appTemplate.url);
    setDevMode(appTemplate.isDevMode);
    validateURL(urlInput());
    if (const auto icon = m_resources.image(appTemplate.iconAssetName)) {
        useIcon(*icon, m_configManager.configuration().id);
        setIconSource(IconSource::favicon);
    }
}

void ConfigurationViewModel::useIcon(const QImage& image, const QUuid& id) {
    m_iconOwner = id;
    // Saved first, so that whoever redraws on the change finds the new one.
    m_faviconService.saveIcon(image, id);
    m_fetchedIcon.set(image);
}

void ConfigurationViewModel::uploadCustomIcon() {
    const auto app = m_configManager.selectedAppId();
    const OpenFileRequest request{.title = u"Choose an Icon"_s,
                                  .contentTypes = {u"image/png"_s, u"image/jpeg"_s, u"image/tiff"_s}};
    m_fileDialogs.openFile(request, [self = QPointer(this), app](const std::optional<QString>& path) {
        // Not into another app that became the current one while the dialog was open.
        if (self && path && self->m_configManager.selectedAppId() == app)
            self->useChosenFile(*path);
    });
}

void ConfigurationViewModel::useDroppedIcon(const QUrl& file) {
    if (file.isLocalFile())
        useChosenFile(file.toLocalFile());
}

void ConfigurationViewModel::useChosenFile(const QString& path) {
    const auto bytes = m_files.read(path, largestIconFile);
    const auto image = bytes ? decodeImage(*bytes) : std::nullopt;
    if (!image)
        return;
    useIcon(*image, m_configManager.configuration().id);
    setIconSource(IconSource::custom);
}

void ConfigurationViewModel::fetchFavicon() {
    const auto site = address();
    if (!site)
        return;
    m_isFetchingIcon.set(true);
    const QUuid id = m_configManager.configuration().id;
    m_faviconService.fetchFavicon(*site, [self = QPointer(this), id](const std::optional<QImage>& image) {
        if (self)
            self->finishFetching(image, id);
    });
}

void ConfigurationViewModel::finishFetching(const std::optional<QImage>& image, const QUuid& id) {
    const auto icon = image || !isDevMode() ? image : m_resources.image(devIcon);
    if (icon)
        useIcon(*icon, id);
    m_isFetchingIcon.set(false);
}

void ConfigurationViewModel::applyDefaultDevIcon() {
    if (fetchedIcon())
        return;
    if (const auto icon = m_resources.image(devIcon))
        useIcon(*icon, m_configManager.configuration().id);
}

QString ConfigurationViewModel::fetchedIconUrl() const {
    return fetchedIcon() ? appIconUrl(m_iconOwner, m_faviconService.iconRevision(m_iconOwner)) : QString();
}

}  // namespace wrapio
