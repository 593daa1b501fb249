// A view of pages as in a browser.
#pragma once

#include "Views/Pages/PageDialogs.h"
#include "Views/Pages/PageServices.h"
#include "Views/Pages/PlatformWebView.h"

#include <memory>
#include <vector>

namespace wrapio {

/// What a browser view is to show first, and where it mirrors the page's state. A value.
struct BrowserWebView {
    class Coordinator;

    WebAddress url;
    /// Is given the engine's view once it is made.
    Binding<PlatformWebView*> webView{};
    Binding<bool> canGoBack{};
    Binding<bool> canGoForward{};
    Binding<bool> isLoading{};
    Binding<QString> pageTitle{};
    Binding<double> loadProgress{};  ///< from 0 to 1
    Binding<bool> showError{};
    Binding<std::optional<QString>> errorMessage{};
    Binding<std::optional<WebAddress>> errorURL{};

    [[nodiscard]] std::shared_ptr<Coordinator> makeCoordinator(const PageServices& services,
                                                               PageDialogs& dialogs) const;
    /// Sets `view` up and loads the address. Once per view.
    void makeView(PlatformWebView& view, Coordinator& coordinator, Scheduler& scheduler) const;
};

/// Sends clicked links to other sites to the default browser, and remembers the last page in the current
/// configuration. Main thread.
class BrowserWebView::Coordinator final : public NavigationDelegate, public PageUIDelegate {
public:
    /// `dialogs` must outlive this.
    Coordinator(BrowserWebView parent, const PageServices& services, PageDialogs& dialogs);

    /// Mirrors the state of `view`, which must outlive this, from now on.
    void observe(PlatformWebView& view);

    [[nodiscard]] NavigationPolicy decidePolicy(const NavigationAction& action) override;
    void didFinish() override;
    void didFail(const PageError& error) override;
    void didFailProvisionalNavigation(const PageError& error) override;
    void webContentProcessDidTerminate() override;

    void createWebView(const std::optional<WebAddress>& address) override;
    void runJavaScriptAlertPanel(const QString& message, std::function<void()> completion) override;
    void runJavaScriptConfirmPanel(const QString& message, std::function<void(bool)> completion) override;
    void runJavaScriptTextInputPanel(const QString& prompt, const std::optional<QString>& defaultText,
                                     std::function<void(std::optional<QString>)> completion) override;

private:
    [[nodiscard]] std::optional<WebAddress> shownAddress() const;
    void handToSystem(const WebAddress& address);
    void handleError(const PageError& error);

    BrowserWebView parent;
    PageServices m_services;
    PageDialogs& m_dialogs;
    PlatformWebView* m_view = nullptr;
    std::vector<Subscription> observations;
};

}  // namespace wrapio
