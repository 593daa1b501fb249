// How apps come into the dashboard that it was asked for: by a template, or by another program.
#include "Platform/Diagnostics.h"
#include "ViewModels/DashboardViewModel.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// A host as sites are compared by; empty when there is none.
QString comparableHost(const std::optional<WebAddress>& address) {
    const QString host = address ? address->host().value_or(QString()).toLower().trimmed() : QString();
    return host.startsWith(u"www."_s) ? host.sliced(4) : host;
}

bool isSameSite(const QString& first, const QString& second) {
    return first == second || first.endsWith(u'.' + second) || second.endsWith(u'.' + first);
}

}  // namespace

template <typename Change>
void DashboardViewModel::change(const QUuid& id, Change change) {
    auto record = m_services.configManager.find(id);
    if (!record)
        return;
    change(*record);
    m_services.configManager.updateConfiguration(std::move(*record));
}

void DashboardViewModel::createFromTemplate(const AppTemplate& appTemplate) {
    ConfigurationManager& store = m_services.configManager;
    const auto previousSelection = store.selectedAppId();
    const QUuid id = store.createApp().id;
    if (const auto address = ConfigurationManager::normalizeURL(appTemplate.url, appTemplate.isDevMode))
        change(id, [&address](AppConfiguration& record) { record.configuredURL = address; });
    change(id, [&appTemplate](AppConfiguration& record) { record.appName = appTemplate.name; });
    if (appTemplate.isDevMode)
        change(id, [](AppConfiguration& record) { record.isDevMode = true; });
    if (const auto icon = m_services.resources.image(appTemplate.iconAssetName)) {
        m_services.faviconService.saveIcon(*icon, id);
        change(id, [](AppConfiguration& record) { record.iconSource = IconSource::favicon; });
    }
    edit(AppEditingContext{.mode = ConfigurationMode::template_,
                           .appId = id,
                           .appTemplate = appTemplate,
                           .previousSelection = previousSelection});
}

void DashboardViewModel::createFromURLRequest(const WrapioCreateRequest& request) {
    if (editingContext()) {
        m_waitingRequest = request;
        return;
    }
    ConfigurationManager& store = m_services.configManager;
    const auto previousSelection = store.selectedAppId();
    const QUuid id = store.createApp().id;
    store.selectApp(id);
    change(id, [&request](AppConfiguration& record) { record.configuredURL = request.url; });
    // A title of nothing but blanks says less than the host, which names the app when there is no title.
    if (const QString title = request.title.value_or(QString()).trimmed(); !title.isEmpty())
        change(id, [&title](AppConfiguration& record) { record.appName = title; });
    edit(AppEditingContext{
        .mode = ConfigurationMode::edit, .appId = id, .isNew = true, .previousSelection = previousSelection});
}

void DashboardViewModel::serveWaitingRequest() {
    if (const auto request = std::exchange(m_waitingRequest, std::nullopt))
        createFromURLRequest(*request);
}

std::optional<AppConfiguration>
DashboardViewModel::findConfiguration(const WrapioImportSessionRequest& matching) const {
    const QString wanted = comparableHost(matching.url);
    if (wanted.isEmpty())
        return std::nullopt;
    for (const AppConfiguration& record : m_services.configManager.configurations()) {
        const QString host = comparableHost(record.configuredURL);
        if (!host.isEmpty() && isSameSite(host, wanted))
            return record;
    }
    return std::nullopt;
}

void DashboardViewModel::importSessionFromURLRequest(const WrapioImportSessionRequest& request) {
    const auto record = findConfiguration(request);
    if (!record) {
        m_errorData.set(AppErrorData{.title = u"No App Found"_s,
                                     .message = u"Create an Wrapio app for "_s +
                                                request.url.host().value_or(u"this site"_s) +
                                                u" before importing a browser session."_s});
        return;
    }
    m_services.configManager.selectApp(record->id);
    AppLifecycleManager& lifecycle = m_services.appLifecycleManager;
    auto opened = lifecycle.openImportSession(*record, request.source);
    if (!opened && opened.error().as<AppLifecycleError>()) {
        opened = lifecycle.generate(*record);
        if (opened)
            opened = lifecycle.openImportSession(*record, request.source);
    }
    if (!opened)
        showErrorAlert(*record, opened.error());
}

}  // namespace wrapio
