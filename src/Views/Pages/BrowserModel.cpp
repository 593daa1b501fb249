#include "Views/Pages/BrowserModel.h"

#include <QPointer>
#include <QVariantMap>

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

BrowserModel::BrowserModel(const PageServices& services, const WebAddress& start, bool isDevMode)
    : m_services(services)
    , m_isDevMode(isDevMode)
    , m_address(start.absoluteString())
    , m_browser(makeBrowserWebView(start)) {}

BrowserModel::~BrowserModel() {
    if (!m_webView)
        return;
    m_webView->setNavigationDelegate(nullptr);
    m_webView->setUIDelegate(nullptr);
}

/// What is written comes in a later turn of the event loop, when this may be gone.
template <typename Value>
Binding<Value> BrowserModel::bindTo(Value& member) {
    return std::function<void(const Value&)>([self = QPointer(this), &member](const Value& value) {
        if (!self)
            return;
        member = value;
        Q_EMIT self->changed();
    });
}

BrowserWebView BrowserModel::makeBrowserWebView(const WebAddress& start) {
    return {.url = start,
            .webView = bindTo(m_webView),
            .canGoBack = bindTo(m_canGoBack),
            .canGoForward = bindTo(m_canGoForward),
            .isLoading = bindTo(m_isLoading),
            .pageTitle = bindTo(m_title),
            .loadProgress = bindTo(m_progress),
            .showError = bindTo(m_showError),
            .errorMessage = bindTo(m_errorMessage),
            .errorURL = bindTo(m_errorUrl)};
}

void BrowserModel::attach(PlatformWebView& view) {
    m_coordinator = m_browser.makeCoordinator(m_services, *this);
    m_addressObservation = view.observeUrl([this, &view] {
        if (const auto shown = view.url()) {
            m_address = shown->absoluteString();
            Q_EMIT changed();
        }
    });
    m_browser.makeView(view, *m_coordinator, m_services.scheduler);
}

QString BrowserModel::errorAddress() const {
    return m_errorUrl ? m_errorUrl->absoluteString() : QString();
}

void BrowserModel::goBack() {
    if (m_webView)
        m_webView->goBack();
}

void BrowserModel::goForward() {
    if (m_webView)
        m_webView->goForward();
}

void BrowserModel::reload() {
    if (m_webView)
        m_webView->reload();
}

void BrowserModel::stop() {
    if (m_webView)
        m_webView->stopLoading();
}

bool BrowserModel::open(const QString& text) {
    const auto address = ConfigurationManager::normalizeURL(text, m_isDevMode);
    if (address)
        load(*address);
    return address.has_value();
}

void BrowserModel::load(const WebAddress& address) {
    if (m_webView)
        m_webView->load({.address = address});
}

void BrowserModel::retry() {
    m_showError = false;
    Q_EMIT changed();
    if (m_errorUrl)
        load(*m_errorUrl);
    else
        reload();
}

void BrowserModel::openInDefaultBrowser() {
    static_cast<void>(m_services.workspace.open(m_address));
}

void BrowserModel::run(const PageAlert& alert, Answer answer) {
    m_waitingAlerts.emplace_back(alert, std::move(answer));
    if (m_waitingAlerts.size() == 1)
        showNextAlert();
}

void BrowserModel::showNextAlert() {
    m_alert.clear();
    if (!m_waitingAlerts.empty()) {
        const PageAlert& alert = m_waitingAlerts.front().first;
        m_alert = QVariantMap{{u"messageText"_s, alert.messageText},
                              {u"buttons"_s, alert.buttons},
                              {u"hasField"_s, alert.field.has_value()},
                              {u"field"_s, alert.field.value_or(QString())}};
    }
    Q_EMIT alertChanged();
}

void BrowserModel::answerAlert(int button, const QString& text) {
    if (m_waitingAlerts.empty())
        return;
    const Answer answer = std::move(m_waitingAlerts.front().second);
    m_waitingAlerts.erase(m_waitingAlerts.begin());
    showNextAlert();
    answer(button, text);
}

}  // namespace wrapio
