// A plain view of a configured site.
#pragma once

#include "Views/Pages/PageServices.h"
#include "Views/Pages/PlatformWebView.h"

#include <memory>
#include <vector>

namespace wrapio {

/// What a plain page view is to show, and where it mirrors the page's state. A value.
struct WebView {
    class Coordinator;

    WebAddress url;
    Binding<bool> canGoBack{};
    Binding<bool> canGoForward{};
    Binding<bool> isLoading{};
    Binding<QString> pageTitle{};
    /// Told of each web address that is handed to the default browser.
    std::function<void(const WebAddress&)> onExternalLink{};
    /// Told of each navigation that has finished.
    std::function<void(const WebAddress&)> onNavigate{};

    [[nodiscard]] std::shared_ptr<Coordinator> makeCoordinator(const PageServices& services) const;
    /// Sets `webView` up and loads the address. Once per view.
    void makeView(PlatformWebView& webView, Coordinator& coordinator) const;
    /// Loads the address anew when its host is not the one that is shown: moving about a site is never undone.
    void updateView(PlatformWebView& webView) const;
};

/// Keeps navigation on the configured site. Main thread.
class WebView::Coordinator final : public NavigationDelegate {
public:
    Coordinator(WebView parent, const PageServices& services);

    /// Mirrors the state of `webView`, which must outlive this, from now on.
    void observeWebView(PlatformWebView& webView);

    [[nodiscard]] NavigationPolicy decidePolicy(const NavigationAction& action) override;
    void didFinish() override;
    void didFail(const PageError& error) override;
    void didFailProvisionalNavigation(const PageError& error) override;

private:
    WebView parent;
    PageServices m_services;
    PlatformWebView* m_webView = nullptr;
    std::vector<Subscription> observations;
};

}  // namespace wrapio
