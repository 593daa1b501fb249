// The state and the logic behind the form of one app.
#pragma once

#include "Models/AppTemplate.h"
#include "Models/ConfigurationManager.h"
#include "Platform/FileDialogs.h"
#include "Platform/FileSystem.h"
#include "Platform/Resources.h"
#include "Services/FaviconService.h"
#include "Utilities/ObservableProperty.h"

#include <QImage>
#include <QObject>
#include <QUrl>
#include <QVariant>

#include <optional>
#include <vector>

namespace wrapio {

/// Reads and writes the store's current record only: whoever opens the form makes the app to be edited the current one.
/// Main thread. Every observable property tells its coming value before it changes, and emits its signal afterwards.
class ConfigurationViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString urlInput READ urlInput WRITE setUrlInput NOTIFY urlInputChanged)
    Q_PROPERTY(QString appNameInput READ appNameInput WRITE setAppNameInput NOTIFY appNameInputChanged)
    Q_PROPERTY(QVariant urlError READ urlErrorVariant NOTIFY urlErrorChanged)
    Q_PROPERTY(bool isValidURL READ isValidURL NOTIFY isValidURLChanged)
    Q_PROPERTY(QString fetchedIconUrl READ fetchedIconUrl NOTIFY fetchedIconChanged)
    Q_PROPERTY(bool isFetchingIcon READ isFetchingIcon NOTIFY isFetchingIconChanged)
    Q_PROPERTY(QString customCSS READ customCSS WRITE setCustomCSS NOTIFY customCSSChanged)
    Q_PROPERTY(QString customJS READ customJS WRITE setCustomJS NOTIFY customJSChanged)
    Q_PROPERTY(int cssByteCount READ cssByteCount NOTIFY customCSSChanged)
    Q_PROPERTY(int jsByteCount READ jsByteCount NOTIFY customJSChanged)
    Q_PROPERTY(int maxInjectionSize READ largestInjection CONSTANT)
    Q_PROPERTY(InjectionTime jsInjectionTime READ injectionTime WRITE setInjectionTime NOTIFY jsInjectionTimeChanged)
    Q_PROPERTY(bool isCSSExpanded READ isCSSExpanded WRITE setCSSExpanded NOTIFY isCSSExpandedChanged)
    Q_PROPERTY(bool isJSExpanded READ isJSExpanded WRITE setJSExpanded NOTIFY isJSExpandedChanged)
    Q_PROPERTY(QVariant injectionError READ injectionErrorVariant NOTIFY injectionErrorChanged)
    Q_PROPERTY(QVariant themeColor READ themeColorVariant WRITE setThemeColorVariant RESET resetThemeColor NOTIFY
                   themeColorChanged)
    Q_PROPERTY(QVariant themeOpacity READ themeOpacityVariant WRITE setThemeOpacityVariant RESET resetThemeOpacity
                   NOTIFY themeOpacityChanged)
    Q_PROPERTY(
        bool themeBorderEnabled READ themeBorderEnabled WRITE setThemeBorderEnabled NOTIFY themeBorderEnabledChanged)
    Q_PROPERTY(bool isDevMode READ isDevMode WRITE setDevMode NOTIFY isDevModeChanged)

public:
    /// JSInjectionTime for bindings, which only see names that begin with a capital.
    enum class InjectionTime { DocumentStart, DocumentEnd };
    Q_ENUM(InjectionTime)

    /// The most bytes of UTF-8 that injected code may have.
    static constexpr int maxInjectionSize = 102400;
    /// What an opacity that is chosen in the form is kept between.
    static constexpr double smallestOpacity = 0.1;
    static constexpr double largestOpacity = 1.0;

    /// Everything outlives this.
    ConfigurationViewModel(ConfigurationManager& configManager, FaviconService& faviconService,
                           const Resources& resources, FileDialogs& fileDialogs, const FileSystem& files);

    [[nodiscard]] const QString& urlInput() const { return m_urlInput.value(); }
    [[nodiscard]] const QString& appNameInput() const { return m_appNameInput.value(); }
    [[nodiscard]] const std::optional<QString>& urlError() const { return m_urlError.value(); }
    [[nodiscard]] bool isValidURL() const { return m_isValidURL.value(); }
    [[nodiscard]] const std::optional<QImage>& fetchedIcon() const { return m_fetchedIcon.value(); }
    [[nodiscard]] bool isFetchingIcon() const { return m_isFetchingIcon.value(); }
    [[nodiscard]] const QString& customCSS() const { return m_customCSS.value(); }
    [[nodiscard]] const QString& customJS() const { return m_customJS.value(); }
    [[nodiscard]] JSInjectionTime jsInjectionTime() const { return m_jsInjectionTime.value(); }
    [[nodiscard]] bool isCSSExpanded() const { return m_isCSSExpanded.value(); }
    [[nodiscard]] bool isJSExpanded() const { return m_isJSExpanded.value(); }
    [[nodiscard]] const std::optional<QString>& injectionError() const { return m_injectionError.value(); }
    [[nodiscard]] const std::optional<QString>& themeColor() const { return m_themeColor.value(); }
    [[nodiscard]] const std::optional<double>& themeOpacity() const { return m_themeOpacity.value(); }
    [[nodiscard]] bool themeBorderEnabled() const { return m_themeBorderEnabled.value(); }
    [[nodiscard]] bool isDevMode() const { return m_isDevMode.value(); }

    void setUrlInput(const QString& text) { m_urlInput.set(text); }
    void setAppNameInput(const QString& text) { m_appNameInput.set(text); }
    void setCustomCSS(const QString& text) { m_customCSS.set(text); }
    void setCustomJS(const QString& text) { m_customJS.set(text); }
    void setJSInjectionTime(JSInjectionTime time) { m_jsInjectionTime.set(time); }
    void setCSSExpanded(bool expanded) { m_isCSSExpanded.set(expanded); }
    void setJSExpanded(bool expanded) { m_isJSExpanded.set(expanded); }
    void setThemeColor(const std::optional<QString>& color) { m_themeColor.set(color); }
    void setThemeOpacity(std::optional<double> opacity) { m_themeOpacity.set(opacity); }
    void setThemeBorderEnabled(bool enabled) { m_themeBorderEnabled.set(enabled); }
    void setDevMode(bool enabled) { m_isDevMode.set(enabled); }

    [[nodiscard]] ObservableProperty<QString>& urlInputProperty() { return m_urlInput; }
    [[nodiscard]] ObservableProperty<QString>& appNameInputProperty() { return m_appNameInput; }
    [[nodiscard]] ObservableProperty<std::optional<QString>>& urlErrorProperty() { return m_urlError; }
    [[nodiscard]] ObservableProperty<bool>& isValidURLProperty() { return m_isValidURL; }
    [[nodiscard]] ObservableProperty<std::optional<QImage>>& fetchedIconProperty() { return m_fetchedIcon; }
    [[nodiscard]] ObservableProperty<bool>& isFetchingIconProperty() { return m_isFetchingIcon; }
    [[nodiscard]] ObservableProperty<QString>& customCSSProperty() { return m_customCSS; }
    [[nodiscard]] ObservableProperty<QString>& customJSProperty() { return m_customJS; }
    [[nodiscard]] ObservableProperty<JSInjectionTime>& jsInjectionTimeProperty() { return m_jsInjectionTime; }
    [[nodiscard]] ObservableProperty<bool>& isCSSExpandedProperty() { return m_isCSSExpanded; }
    [[nodiscard]] ObservableProperty<bool>& isJSExpandedProperty() { return m_isJSExpanded; }
    [[nodiscard]] ObservableProperty<std::optional<QString>>& injectionErrorProperty() { return m_injectionError; }
    [[nodiscard]] ObservableProperty<std::optional<QString>>& themeColorProperty() { return m_themeColor; }
    [[nodiscard]] ObservableProperty<std::optional<double>>& themeOpacityProperty() { return m_themeOpacity; }
    [[nodiscard]] ObservableProperty<bool>& themeBorderEnabledProperty() { return m_themeBorderEnabled; }
    [[nodiscard]] ObservableProperty<bool>& isDevModeProperty() { return m_isDevMode; }

    /// Fills the form with the current record. Without a saved icon the form's icon stays.
    void loadConfiguration();
    /// Sets `urlError` and `isValidURL` by what `input` is worth. An empty text is not valid, but no error either.
    Q_INVOKABLE void validateURL(const QString& input);
    /// Fills name, address and developer mode with those of a quick-start template, and saves its icon if it has one.
    void applyTemplate(const AppTemplate& appTemplate);
    /// Asks for an image file and makes it the icon. Nothing happens when that is cancelled or cannot be read.
    Q_INVOKABLE void uploadCustomIcon();
    /// Makes an image file that was dropped onto the form the icon. Nothing happens when it cannot be read.
    Q_INVOKABLE void useDroppedIcon(const QUrl& file);
    /// Looks for the site's icon in the background. Requests may overlap: the last one to finish wins.
    Q_INVOKABLE void fetchFavicon();
    /// Makes the developer icon the icon, if there is none.
    void applyDefaultDevIcon();
    /// Adds the block of CSS that inverts the page. Used twice, it is there twice.
    Q_INVOKABLE void insertDarkModeTemplate();
    /// Takes toolbar colour and opacity back; the border stays as it is.
    Q_INVOKABLE void resetAppearance();
    /// Writes the form into the current record. False, and nothing written, when the address is not usable or code is
    /// too long; `urlError` or `injectionError` say so.
    [[nodiscard]] bool saveConfiguration();
    /// Removes every app of the catalogue, empties the form, and deletes the saved icon of the current record.
    void resetConfiguration();

    /// How many bytes the style sheet and the script have in UTF-8.
    [[nodiscard]] int cssByteCount() const { return static_cast<int>(customCSS().toUtf8().size()); }
    [[nodiscard]] int jsByteCount() const { return static_cast<int>(customJS().toUtf8().size()); }
    /// The web address that the form holds.
    [[nodiscard]] std::optional<WebAddress> address() const;
    /// The name that is stored when the form is saved.
    [[nodiscard]] std::optional<QString> storedName() const;
    /// Where bindings find the form's icon; empty when there is none.
    [[nodiscard]] QString fetchedIconUrl() const;

    // For bindings, where an absent value is `undefined`.
    [[nodiscard]] int largestInjection() const { return maxInjectionSize; }
    [[nodiscard]] QVariant urlErrorVariant() const;
    [[nodiscard]] QVariant injectionErrorVariant() const;
    [[nodiscard]] QVariant themeColorVariant() const;
    [[nodiscard]] QVariant themeOpacityVariant() const;
    void setThemeColorVariant(const QVariant& color);
    void setThemeOpacityVariant(const QVariant& opacity);
    void resetThemeColor() { setThemeColor(std::nullopt); }
    void resetThemeOpacity() { setThemeOpacity(std::nullopt); }
    [[nodiscard]] InjectionTime injectionTime() const;
    void setInjectionTime(InjectionTime time);

Q_SIGNALS:
    void urlInputChanged();
    void appNameInputChanged();
    void urlErrorChanged();
    void isValidURLChanged();
    void fetchedIconChanged();
    void isFetchingIconChanged();
    void customCSSChanged();
    void customJSChanged();
    void jsInjectionTimeChanged();
    void isCSSExpandedChanged();
    void isJSExpandedChanged();
    void injectionErrorChanged();
    void themeColorChanged();
    void themeOpacityChanged();
    void themeBorderEnabledChanged();
    void isDevModeChanged();

private:
    template <typename Change>
    void update(Change change);
    void forwardAll();
    void useIcon(const QImage& image, const QUuid& id);
    void setIconSource(IconSource source);
    void useChosenFile(const QString& path);
    void finishFetching(const std::optional<QImage>& image, const QUuid& id);
    [[nodiscard]] bool injectionFits();
    void writeForm(const WebAddress& address);
    void clearForm();

    ConfigurationManager& m_configManager;
    FaviconService& m_faviconService;
    const Resources& m_resources;
    FileDialogs& m_fileDialogs;
    const FileSystem& m_files;

    ObservableProperty<QString> m_urlInput;
    ObservableProperty<QString> m_appNameInput;
    ObservableProperty<std::optional<QString>> m_urlError;
    ObservableProperty<bool> m_isValidURL{false};
    ObservableProperty<std::optional<QImage>> m_fetchedIcon;
    ObservableProperty<bool> m_isFetchingIcon{false};
    ObservableProperty<QString> m_customCSS;
    ObservableProperty<QString> m_customJS;
    ObservableProperty<JSInjectionTime> m_jsInjectionTime{JSInjectionTime::documentEnd};
    ObservableProperty<bool> m_isCSSExpanded{false};
    ObservableProperty<bool> m_isJSExpanded{false};
    ObservableProperty<std::optional<QString>> m_injectionError;
    ObservableProperty<std::optional<QString>> m_themeColor;
    ObservableProperty<std::optional<double>> m_themeOpacity;
    ObservableProperty<bool> m_themeBorderEnabled{false};
    ObservableProperty<bool> m_isDevMode{false};

    QUuid m_iconOwner;  ///< the app under whose id the form's icon is saved
    std::vector<Subscription> m_subscriptions;
};

}  // namespace wrapio
