#include "Views/Pages/WebView.h"

#include "Platform/Diagnostics.h"
#include "Views/Pages/NavigationRules.h"
#include "Views/Pages/PageMirror.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

std::shared_ptr<WebView::Coordinator> WebView::makeCoordinator(const PageServices& services) const {
    return std::make_shared<Coordinator>(*this, services);
}

void WebView::makeView(PlatformWebView& webView, Coordinator& coordinator) const {
    webView.setElementFullScreenEnabled(true);
    webView.setNavigationDelegate(&coordinator);
    webView.setAllowsBackForwardNavigationGestures(true);
    coordinator.observeWebView(webView);
    webView.load({.address = url});
}

void WebView::updateView(PlatformWebView& webView) const {
    const auto shown = webView.url();
    if ((shown ? shown->host() : std::nullopt) != url.host())
        webView.load({.address = url});
}

WebView::Coordinator::Coordinator(WebView view, const PageServices& services)
    : parent(std::move(view))
    , m_services(services) {}

void WebView::Coordinator::observeWebView(PlatformWebView& webView) {
    m_webView = &webView;
    Scheduler& queue = m_services.scheduler;
    const auto add = [this](Subscription observation) { observations.push_back(std::move(observation)); };
    add(webView.observeCanGoBack(mirroring(queue, parent.canGoBack, [&webView] { return webView.canGoBack(); })));
    add(webView.observeCanGoForward(
        mirroring(queue, parent.canGoForward, [&webView] { return webView.canGoForward(); })));
    add(webView.observeIsLoading(mirroring(queue, parent.isLoading, [&webView] { return webView.isLoading(); })));
    add(webView.observeTitle(mirroring(queue, parent.pageTitle, [&webView] { return webView.title(); })));
}

NavigationPolicy WebView::Coordinator::decidePolicy(const NavigationAction& action) {
    if (!action.address)
        return NavigationPolicy::cancel;
    const PlainNavigation navigation = plainNavigation(*action.address, configuredHost(m_services.configManager));
    if (navigation == PlainNavigation::allow)
        return NavigationPolicy::allow;
    if (navigation == PlainNavigation::leaveSite && parent.onExternalLink)
        parent.onExternalLink(*action.address);
    static_cast<void>(m_services.workspace.open(action.address->absoluteString()));
    return NavigationPolicy::cancel;
}

void WebView::Coordinator::didFinish() {
    const auto shown = m_webView ? m_webView->url() : std::nullopt;
    if (shown && parent.onNavigate)
        parent.onNavigate(*shown);
}

void WebView::Coordinator::didFail(const PageError& error) {
    printDiagnostics(u"Navigation failed: "_s + error.text());
}

void WebView::Coordinator::didFailProvisionalNavigation(const PageError& error) {
    printDiagnostics(u"Provisional navigation failed: "_s + error.text());
}

}  // namespace wrapio
