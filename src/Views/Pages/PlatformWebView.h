// What the page views need of the engine that shows pages, and what it asks them.
#pragma once

#include "Models/WebAddress.h"
#include "Utilities/ObservableProperty.h"

#include <QString>

#include <functional>
#include <optional>

namespace wrapio {

enum class CachePolicy { useProtocolCachePolicy };

struct PageRequest {
    WebAddress address;
    CachePolicy cachePolicy = CachePolicy::useProtocolCachePolicy;
    double timeoutSeconds = 60;  ///< for how long nothing may arrive
};

enum class NavigationType { linkActivated, formSubmitted, backForward, reload, formResubmitted, other };

struct NavigationAction {
    std::optional<WebAddress> address;
    NavigationType type = NavigationType::other;
};

enum class NavigationPolicy { allow, cancel };

/// The domain of errors of loading an address, and the code of a load that was cancelled.
inline const QString urlErrorDomain = QStringLiteral("NSURLErrorDomain");
inline constexpr int cancelledLoad = -999;
inline constexpr int timedOutLoad = -1001;

struct PageError {
    QString domain;
    int code = 0;
    QString localizedDescription;

    /// For diagnostics: everything in one line.
    [[nodiscard]] QString text() const {
        return QStringLiteral("%1 (%2 %3)").arg(localizedDescription, domain).arg(code);
    }
};

/// Is told of navigation, and decides about it. Main thread.
class NavigationDelegate {
public:
    NavigationDelegate() = default;
    virtual ~NavigationDelegate() = default;
    NavigationDelegate(const NavigationDelegate&) = delete;
    NavigationDelegate& operator=(const NavigationDelegate&) = delete;

    [[nodiscard]] virtual NavigationPolicy decidePolicy(const NavigationAction& action) = 0;
    virtual void didFinish() = 0;
    virtual void didFail(const PageError& error) = 0;
    virtual void didFailProvisionalNavigation(const PageError& error) = 0;
    virtual void webContentProcessDidTerminate() {}
};

/// What a page asks of its surroundings. Main thread.
class PageUIDelegate {
public:
    PageUIDelegate() = default;
    virtual ~PageUIDelegate() = default;
    PageUIDelegate(const PageUIDelegate&) = delete;
    PageUIDelegate& operator=(const PageUIDelegate&) = delete;

    /// A page wants a window of its own. None is ever made.
    virtual void createWebView(const std::optional<WebAddress>& address) = 0;
    /// Each calls `completion` once, when the person has answered.
    virtual void runJavaScriptAlertPanel(const QString& message, std::function<void()> completion) = 0;
    virtual void runJavaScriptConfirmPanel(const QString& message, std::function<void(bool)> completion) = 0;
    virtual void runJavaScriptTextInputPanel(const QString& prompt, const std::optional<QString>& defaultText,
                                             std::function<void(std::optional<QString>)> completion) = 0;
};

/// The engine's view of one page. Pages share one store of cookies and storage that outlives the program. Main thread.
class PlatformWebView {
public:
    PlatformWebView() = default;
    virtual ~PlatformWebView() = default;
    PlatformWebView(const PlatformWebView&) = delete;
    PlatformWebView& operator=(const PlatformWebView&) = delete;

    /// The address that is shown or being loaded; nothing before the first.
    [[nodiscard]] virtual std::optional<WebAddress> url() const = 0;
    [[nodiscard]] virtual bool canGoBack() const = 0;
    [[nodiscard]] virtual bool canGoForward() const = 0;
    [[nodiscard]] virtual bool isLoading() const = 0;
    [[nodiscard]] virtual QString title() const = 0;
    /// From 0 to 1.
    [[nodiscard]] virtual double estimatedProgress() const = 0;

    virtual void load(const PageRequest& request) = 0;
    virtual void reload() = 0;
    virtual void stopLoading() = 0;
    virtual void goBack() = 0;
    virtual void goForward() = 0;

    /// Both are borrowed; null takes them away.
    virtual void setNavigationDelegate(NavigationDelegate* delegate) = 0;
    virtual void setUIDelegate(PageUIDelegate* delegate) = 0;
    /// To be set before the first load.
    virtual void setCustomUserAgent(const QString& userAgent) = 0;
    virtual void setElementFullScreenEnabled(bool enabled) = 0;
    virtual void setAllowsBackForwardNavigationGestures(bool allowed) = 0;

    // Each calls `changed` at every change for as long as the answer lives.
    [[nodiscard]] virtual Subscription observeUrl(std::function<void()> changed) = 0;
    [[nodiscard]] virtual Subscription observeCanGoBack(std::function<void()> changed) = 0;
    [[nodiscard]] virtual Subscription observeCanGoForward(std::function<void()> changed) = 0;
    [[nodiscard]] virtual Subscription observeIsLoading(std::function<void()> changed) = 0;
    [[nodiscard]] virtual Subscription observeTitle(std::function<void()> changed) = 0;
    [[nodiscard]] virtual Subscription observeEstimatedProgress(std::function<void()> changed) = 0;
};

}  // namespace wrapio
