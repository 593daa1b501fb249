#include "Views/Pages/EnginePage.h"

#include "Views/Pages/EngineErrors.h"

#include <QVariant>

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double wholeProgress = 100;

std::optional<WebAddress> addressOf(const QUrl& url) {
    return url.isEmpty() ? std::nullopt : WebAddress::parse(QString::fromLatin1(url.toEncoded()));
}

NavigationType typeOf(int navigation) {
    switch (static_cast<EnginePage::Navigation>(navigation)) {
    case EnginePage::Navigation::LinkClicked:
        return NavigationType::linkActivated;
    case EnginePage::Navigation::FormSubmitted:
        return NavigationType::formSubmitted;
    case EnginePage::Navigation::BackForward:
        return NavigationType::backForward;
    case EnginePage::Navigation::Reload:
        return NavigationType::reload;
    case EnginePage::Navigation::Typed:
    case EnginePage::Navigation::Other:
    case EnginePage::Navigation::Redirect:
        return NavigationType::other;
    }
    return NavigationType::other;
}

PageError cancelled() {
    return {urlErrorDomain, cancelledLoad, u"cancelled"_s};
}

}  // namespace

void EnginePage::valueChanged(Value changed) {
    if (changed == Value::EstimatedProgress)
        waitForArrival();
    m_observers[changed].notify();
}

bool EnginePage::mayNavigate(const QUrl& url, int navigation) {
    return !m_navigation || m_navigation->decidePolicy({addressOf(url), typeOf(navigation)}) == NavigationPolicy::allow;
}

void EnginePage::loadChanged(int load, int errorCode, const QString& errorString) {
    m_observers[Value::IsLoading].notify();
    if (static_cast<Load>(load) == Load::Started) {
        waitForArrival();
        return;
    }
    m_timeout.cancel();
    // What ended because nothing arrived has been told as that.
    if (std::exchange(m_hasTimedOut, false) || !m_navigation)
        return;
    // The engine takes a page with which a server tells of an error for a failure. Its number is the server's then, and
    // above zero, as none of the engine's own is.
    if (static_cast<Load>(load) == Load::Succeeded || errorCode > 0)
        m_navigation->didFinish();
    else if (static_cast<Load>(load) == Load::Stopped)
        m_navigation->didFail(cancelled());
    else
        m_navigation->didFailProvisionalNavigation(engineError(errorCode, errorString));
}

void EnginePage::waitForArrival() {
    m_timeout.cancel();
    if (m_timeoutSeconds > 0 && isLoading())
        m_timeout = m_scheduler.after(m_timeoutSeconds, [this] { timedOut(); });
}

void EnginePage::timedOut() {
    m_hasTimedOut = true;
    stopLoading();
    if (m_navigation)
        m_navigation->didFailProvisionalNavigation({urlErrorDomain, timedOutLoad, u"The request timed out."_s});
}

void EnginePage::newWindowRequested(const QUrl& url) {
    if (m_ui)
        m_ui->createWebView(addressOf(url));
}

void EnginePage::dialogRequested(int token, int dialog, const QString& message, const QString& defaultText) {
    const auto answer = [self = QPointer(this), token](bool accepted, const QString& text) {
        if (self)
            Q_EMIT self->dialogAnswered(token, accepted, text);
    };
    const auto kind = static_cast<Dialog>(dialog);
    // Nobody to ask: leaving a page is allowed, everything else is as if it were cancelled.
    if (!m_ui || kind == Dialog::BeforeUnload)
        answer(kind == Dialog::BeforeUnload, {});
    else if (kind == Dialog::Alert)
        m_ui->runJavaScriptAlertPanel(message, [answer] { answer(true, {}); });
    else if (kind == Dialog::Confirm)
        m_ui->runJavaScriptConfirmPanel(message, [answer](bool isAccepted) { answer(isAccepted, {}); });
    else
        m_ui->runJavaScriptTextInputPanel(message, defaultText, [answer](const std::optional<QString>& text) {
            answer(text.has_value(), text.value_or(QString()));
        });
}

void EnginePage::processTerminated() {
    // In a later turn: the engine is still clearing up.
    m_scheduler.async([self = QPointer(this)] {
        if (self && self->m_navigation)
            self->m_navigation->webContentProcessDidTerminate();
    });
}

QVariant EnginePage::value(const char* name) const {
    return m_view ? m_view->property(name) : QVariant();
}

void EnginePage::call(const char* operation) {
    if (m_view)
        QMetaObject::invokeMethod(m_view, operation);
}

std::optional<WebAddress> EnginePage::url() const {
    return addressOf(value("url").toUrl());
}

bool EnginePage::canGoBack() const {
    return value("canGoBack").toBool();
}

bool EnginePage::canGoForward() const {
    return value("canGoForward").toBool();
}

bool EnginePage::isLoading() const {
    return value("loading").toBool();
}

QString EnginePage::title() const {
    return value("title").toString();
}

double EnginePage::estimatedProgress() const {
    return value("loadProgress").toInt() / wholeProgress;
}

void EnginePage::load(const PageRequest& request) {
    m_timeoutSeconds = request.timeoutSeconds;
    if (m_view)
        m_view->setProperty("url", QUrl(request.address.absoluteString()));
}

void EnginePage::reload() {
    call("reload");
}

void EnginePage::stopLoading() {
    call("stop");
}

void EnginePage::goBack() {
    call("goBack");
}

void EnginePage::goForward() {
    call("goForward");
}

void EnginePage::setCustomUserAgent(const QString& userAgent) {
    m_userAgent = userAgent;
    Q_EMIT settingsChanged();
}

void EnginePage::setElementFullScreenEnabled(bool enabled) {
    m_isFullScreenEnabled = enabled;
    Q_EMIT settingsChanged();
}

void EnginePage::setAllowsBackForwardNavigationGestures(bool allowed) {
    m_allowsGestures = allowed;
    Q_EMIT settingsChanged();
}

Subscription EnginePage::observeUrl(std::function<void()> changed) {
    return m_observers[Value::Url].add(std::move(changed));
}

Subscription EnginePage::observeCanGoBack(std::function<void()> changed) {
    return m_observers[Value::CanGoBack].add(std::move(changed));
}

Subscription EnginePage::observeCanGoForward(std::function<void()> changed) {
    return m_observers[Value::CanGoForward].add(std::move(changed));
}

Subscription EnginePage::observeIsLoading(std::function<void()> changed) {
    return m_observers[Value::IsLoading].add(std::move(changed));
}

Subscription EnginePage::observeTitle(std::function<void()> changed) {
    return m_observers[Value::Title].add(std::move(changed));
}

Subscription EnginePage::observeEstimatedProgress(std::function<void()> changed) {
    return m_observers[Value::EstimatedProgress].add(std::move(changed));
}

}  // namespace wrapio
