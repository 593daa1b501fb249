#include "Views/Pages/BrowserWebView.h"

#include "Platform/Diagnostics.h"
#include "Views/Pages/NavigationRules.h"
#include "Views/Pages/PageMirror.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString okButton = u"OK"_s;
const QString cancelButton = u"Cancel"_s;

}  // namespace

std::shared_ptr<BrowserWebView::Coordinator> BrowserWebView::makeCoordinator(const PageServices& services,
                                                                             PageDialogs& dialogs) const {
    return std::make_shared<Coordinator>(*this, services, dialogs);
}

void BrowserWebView::makeView(PlatformWebView& view, Coordinator& coordinator, Scheduler& scheduler) const {
    view.setElementFullScreenEnabled(true);
    view.setNavigationDelegate(&coordinator);
    view.setUIDelegate(&coordinator);
    view.setAllowsBackForwardNavigationGestures(true);
    view.setCustomUserAgent(browserUserAgent());
    scheduler.async([binding = webView, made = &view] { binding.set(made); });
    coordinator.observe(view);
    printDiagnostics(u"[BrowserWebView] Loading URL: "_s + url.absoluteString());
    view.load({.address = url});
}

BrowserWebView::Coordinator::Coordinator(BrowserWebView view, const PageServices& services, PageDialogs& dialogs)
    : parent(std::move(view))
    , m_services(services)
    , m_dialogs(dialogs) {}

void BrowserWebView::Coordinator::observe(PlatformWebView& view) {
    m_view = &view;
    Scheduler& queue = m_services.scheduler;
    const auto add = [this](Subscription observation) { observations.push_back(std::move(observation)); };
    add(view.observeCanGoBack(mirroring(queue, parent.canGoBack, [&view] { return view.canGoBack(); })));
    add(view.observeCanGoForward(mirroring(queue, parent.canGoForward, [&view] { return view.canGoForward(); })));
    add(view.observeIsLoading(mirroring(queue, parent.isLoading, [&view] { return view.isLoading(); })));
    add(view.observeTitle(mirroring(queue, parent.pageTitle, [&view] { return view.title(); })));
    add(view.observeEstimatedProgress(
        mirroring(queue, parent.loadProgress, [&view] { return view.estimatedProgress(); })));
}

std::optional<WebAddress> BrowserWebView::Coordinator::shownAddress() const {
    return m_view ? m_view->url() : std::nullopt;
}

void BrowserWebView::Coordinator::handToSystem(const WebAddress& address) {
    static_cast<void>(m_services.workspace.open(address.absoluteString()));
}

NavigationPolicy BrowserWebView::Coordinator::decidePolicy(const NavigationAction& action) {
    if (!action.address)
        return NavigationPolicy::cancel;
    const WebAddress& address = *action.address;
    if (address.scheme() && !internalSchemes().contains(address.scheme()->toLower())) {
        printDiagnostics(u"[Navigation] Opening external scheme: "_s + address.scheme()->toLower());
        handToSystem(address);
        return NavigationPolicy::cancel;
    }
    if (action.type != NavigationType::linkActivated)
        return NavigationPolicy::allow;
    const auto shown = shownAddress();
    if (!isExternalLink(address, shown ? shown->host() : std::nullopt, configuredHost(m_services.configManager)))
        return NavigationPolicy::allow;
    printDiagnostics(u"[Navigation] Opening external link: "_s + address.host().value_or(QString()));
    handToSystem(address);
    return NavigationPolicy::cancel;
}

void BrowserWebView::Coordinator::didFinish() {
    const auto shown = shownAddress();
    printDiagnostics(u"[Navigation] Page loaded: "_s + (shown ? shown->absoluteString() : u"unknown"_s));
    if (shown) {
        AppConfiguration configuration = m_services.configManager.configuration();
        configuration.lastVisitedURL = *shown;
        m_services.configManager.updateConfiguration(configuration);
    }
    m_services.scheduler.async([view = parent] {
        view.showError.set(false);
        view.errorMessage.set(std::nullopt);
    });
}

void BrowserWebView::Coordinator::didFail(const PageError& error) {
    printDiagnostics(u"[Navigation] Failed: "_s + error.text());
    handleError(error);
}

void BrowserWebView::Coordinator::didFailProvisionalNavigation(const PageError& error) {
    printDiagnostics(u"[Navigation] Provisional failed: "_s + error.text());
    handleError(error);
}

void BrowserWebView::Coordinator::handleError(const PageError& error) {
    if (error.domain == urlErrorDomain && error.code == cancelledLoad)
        return;
    m_services.scheduler.async([view = parent, address = shownAddress(), message = error.localizedDescription] {
        view.errorURL.set(address);
        view.errorMessage.set(message);
        view.showError.set(true);
    });
}

void BrowserWebView::Coordinator::webContentProcessDidTerminate() {
    printDiagnostics(u"[WebView] Content process terminated - reloading..."_s);
    if (m_view)
        m_view->reload();
}

void BrowserWebView::Coordinator::createWebView(const std::optional<WebAddress>& address) {
    if (!address)
        return;
    printDiagnostics(u"[Popup] Opening in browser: "_s + address->absoluteString());
    handToSystem(*address);
}

void BrowserWebView::Coordinator::runJavaScriptAlertPanel(const QString& message, std::function<void()> completion) {
    m_dialogs.run({.messageText = message, .buttons = {okButton}},
                  [completion = std::move(completion)](int, const QString&) { completion(); });
}

void BrowserWebView::Coordinator::runJavaScriptConfirmPanel(const QString& message,
                                                            std::function<void(bool)> completion) {
    m_dialogs.run({.messageText = message, .buttons = {okButton, cancelButton}},
                  [completion = std::move(completion)](int button, const QString&) { completion(button == 0); });
}

void BrowserWebView::Coordinator::runJavaScriptTextInputPanel(const QString& prompt,
                                                              const std::optional<QString>& defaultText,
                                                              std::function<void(std::optional<QString>)> completion) {
    m_dialogs.run(
        {.messageText = prompt, .buttons = {okButton, cancelButton}, .field = defaultText.value_or(QString())},
        [completion = std::move(completion)](int button, const QString& text) {
            completion(button == 0 ? std::optional(text) : std::nullopt);
        });
}

}  // namespace wrapio
