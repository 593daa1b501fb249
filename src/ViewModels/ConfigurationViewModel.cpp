#include "ViewModels/ConfigurationViewModel.h"

#include "ViewModels/Forwarding.h"

#include <algorithm>
#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Inverts a page, and inverts once more what is to keep its colours.
const QString darkModeBlock = uR"(/* Wrapio Dark Mode */
html {
  filter: invert(1) hue-rotate(180deg);
}

/* Preserve images and videos */
img, video, canvas, picture, svg,
[style*="background-image"] {
  filter: invert(1) hue-rotate(180deg);
}

/* Preserve iframes */
iframe {
  filter: invert(1) hue-rotate(180deg);
})"_s;

std::optional<QString> unlessEmpty(const QString& text) {
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

}  // namespace

ConfigurationViewModel::ConfigurationViewModel(ConfigurationManager& configManager, FaviconService& faviconService,
                                               const Resources& resources, FileDialogs& fileDialogs,
                                               const FileSystem& files)
    : m_configManager(configManager)
    , m_faviconService(faviconService)
    , m_resources(resources)
    , m_fileDialogs(fileDialogs)
    , m_files(files) {
    forwardAll();
}

void ConfigurationViewModel::forwardAll() {
    using Self = ConfigurationViewModel;
    m_subscriptions.push_back(forward(m_urlInput, *this, &Self::urlInputChanged));
    m_subscriptions.push_back(forward(m_appNameInput, *this, &Self::appNameInputChanged));
    m_subscriptions.push_back(forward(m_urlError, *this, &Self::urlErrorChanged));
    m_subscriptions.push_back(forward(m_isValidURL, *this, &Self::isValidURLChanged));
    m_subscriptions.push_back(forward(m_fetchedIcon, *this, &Self::fetchedIconChanged));
    m_subscriptions.push_back(forward(m_isFetchingIcon, *this, &Self::isFetchingIconChanged));
    m_subscriptions.push_back(forward(m_customCSS, *this, &Self::customCSSChanged));
    m_subscriptions.push_back(forward(m_customJS, *this, &Self::customJSChanged));
    m_subscriptions.push_back(forward(m_jsInjectionTime, *this, &Self::jsInjectionTimeChanged));
    m_subscriptions.push_back(forward(m_isCSSExpanded, *this, &Self::isCSSExpandedChanged));
    m_subscriptions.push_back(forward(m_isJSExpanded, *this, &Self::isJSExpandedChanged));
    m_subscriptions.push_back(forward(m_injectionError, *this, &Self::injectionErrorChanged));
    m_subscriptions.push_back(forward(m_themeColor, *this, &Self::themeColorChanged));
    m_subscriptions.push_back(forward(m_themeOpacity, *this, &Self::themeOpacityChanged));
    m_subscriptions.push_back(forward(m_themeBorderEnabled, *this, &Self::themeBorderEnabledChanged));
    m_subscriptions.push_back(forward(m_isDevMode, *this, &Self::isDevModeChanged));
}

template <typename Change>
void ConfigurationViewModel::update(Change change) {
    AppConfiguration record = m_configManager.configuration();
    change(record);
    m_configManager.updateConfiguration(std::move(record));
}

void ConfigurationViewModel::loadConfiguration() {
    const AppConfiguration record = m_configManager.configuration();
    setUrlInput(record.configuredURL ? record.configuredURL->absoluteString() : QString());
    setAppNameInput(record.appName.value_or(QString()));
    setCustomCSS(record.customCSS.value_or(QString()));
    setCustomJS(record.customJS.value_or(QString()));
    setJSInjectionTime(record.jsInjectionTime);
    setCSSExpanded(!customCSS().isEmpty());
    setJSExpanded(!customJS().isEmpty());
    setThemeColor(record.themeColor);
    setThemeOpacity(record.themeOpacity);
    setThemeBorderEnabled(record.themeBorderEnabled);
    setDevMode(record.isDevMode);
    if (auto icon = m_faviconService.loadSavedIcon(record.id)) {
        m_iconOwner = record.id;
        m_fetchedIcon.set(std::move(icon));
    }
    validateURL(urlInput());
}

void ConfigurationViewModel::validateURL(const QString& input) {
    if (input.isEmpty()) {
        m_urlError.set(std::nullopt);
        m_isValidURL.set(false);
        return;
    }
    if (ConfigurationManager::normalizeURL(input, isDevMode())) {
        m_urlError.set(std::nullopt);
        m_isValidURL.set(true);
        return;
    }
    m_urlError.set(isDevMode() ? u"Please enter a valid URL (e.g. localhost:3000)"_s : u"Please enter a valid URL"_s);
    m_isValidURL.set(false);
}

void ConfigurationViewModel::setIconSource(IconSource source) {
    update([source](AppConfiguration& record) { record.iconSource = source; });
}

void ConfigurationViewModel::insertDarkModeTemplate() {
    setCustomCSS(customCSS().isEmpty() ? darkModeBlock : customCSS() + u"\n\n"_s + darkModeBlock);
}

void ConfigurationViewModel::resetAppearance() {
    resetThemeColor();
    resetThemeOpacity();
}

bool ConfigurationViewModel::saveConfiguration() {
    const auto normalized = address();
    if (!normalized || !injectionFits())
        return false;
    m_injectionError.set(std::nullopt);
    writeForm(*normalized);
    return true;
}

bool ConfigurationViewModel::injectionFits() {
    if (customCSS().toUtf8().size() > maxInjectionSize) {
        m_injectionError.set(u"Custom CSS exceeds 100KB limit"_s);
        return false;
    }
    if (customJS().toUtf8().size() > maxInjectionSize) {
        m_injectionError.set(u"Custom JavaScript exceeds 100KB limit"_s);
        return false;
    }
    return true;
}

void ConfigurationViewModel::writeForm(const WebAddress& address) {
    update([&](AppConfiguration& record) { record.configuredURL = address; });
    update([&](AppConfiguration& record) { record.appName = storedName(); });
    update([&](AppConfiguration& record) { record.customCSS = unlessEmpty(customCSS()); });
    update([&](AppConfiguration& record) {
        record.customJS = unlessEmpty(customJS());
        record.jsInjectionTime = jsInjectionTime();
    });
    update([&](AppConfiguration& record) { record.themeColor = themeColor(); });
    update([&](AppConfiguration& record) { record.themeOpacity = themeOpacity(); });
    update([&](AppConfiguration& record) { record.themeBorderEnabled = themeBorderEnabled(); });
    update([&](AppConfiguration& record) { record.isDevMode = isDevMode(); });
    if (fetchedIcon())
        setIconSource(IconSource::favicon);
}

void ConfigurationViewModel::resetConfiguration() {
    const QUuid id = m_configManager.configuration().id;
    m_configManager.reset();
    clearForm();
    m_faviconService.deleteSavedIcon(id);
}

void ConfigurationViewModel::clearForm() {
    setUrlInput({});
    setAppNameInput({});
    setCustomCSS({});
    setCustomJS({});
    m_urlError.set(std::nullopt);
    m_fetchedIcon.set(std::nullopt);
    m_injectionError.set(std::nullopt);
    setThemeColor(std::nullopt);
    setThemeOpacity(std::nullopt);
    m_isValidURL.set(false);
    setCSSExpanded(false);
    setJSExpanded(false);
    setThemeBorderEnabled(false);
    setDevMode(false);
    setJSInjectionTime(JSInjectionTime::documentEnd);
}

std::optional<WebAddress> ConfigurationViewModel::address() const {
    return ConfigurationManager::normalizeURL(urlInput(), isDevMode());
}

std::optional<QString> ConfigurationViewModel::storedName() const {
    return appNameInput().isEmpty() ? std::nullopt : std::optional(appNameInput().trimmed());
}

QVariant ConfigurationViewModel::urlErrorVariant() const {
    return toVariant(urlError());
}

QVariant ConfigurationViewModel::injectionErrorVariant() const {
    return toVariant(injectionError());
}

QVariant ConfigurationViewModel::themeColorVariant() const {
    return toVariant(themeColor());
}

QVariant ConfigurationViewModel::themeOpacityVariant() const {
    return toVariant(themeOpacity());
}

void ConfigurationViewModel::setThemeColorVariant(const QVariant& color) {
    setThemeColor(color.isNull() ? std::nullopt : std::optional(color.toString()));
}

void ConfigurationViewModel::setThemeOpacityVariant(const QVariant& opacity) {
    bool isNumber = false;
    const double value = opacity.toDouble(&isNumber);
    if (isNumber && std::isfinite(value))
        setThemeOpacity(std::clamp(value, smallestOpacity, largestOpacity));
    else
        resetThemeOpacity();
}

ConfigurationViewModel::InjectionTime ConfigurationViewModel::injectionTime() const {
    switch (jsInjectionTime()) {
    case JSInjectionTime::documentStart:
        return InjectionTime::DocumentStart;
    case JSInjectionTime::documentEnd:
        return InjectionTime::DocumentEnd;
    }
    return InjectionTime::DocumentEnd;
}

void ConfigurationViewModel::setInjectionTime(InjectionTime time) {
    setJSInjectionTime(time == InjectionTime::DocumentStart ? JSInjectionTime::documentStart
                                                            : JSInjectionTime::documentEnd);
}

}  // namespace wrapio
