// The engine's view, as the page views know it.
#pragma once

#include "Platform/Scheduler.h"
#include "Views/Pages/PlatformWebView.h"

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QtQml/qqml.h>

#include <functional>
#include <map>

namespace wrapio {

/// Stands between a page view and EngineView.qml, which alone knows the engine: this file compiles and links without
/// it. Main thread.
class EnginePage final : public QObject, public PlatformWebView {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(QString customUserAgent READ customUserAgent NOTIFY settingsChanged)
    Q_PROPERTY(bool isFullScreenEnabled READ isFullScreenEnabled NOTIFY settingsChanged)
    Q_PROPERTY(bool allowsGestures READ allowsGestures NOTIFY settingsChanged)

public:
    enum class Value { Url, CanGoBack, CanGoForward, IsLoading, Title, EstimatedProgress };
    Q_ENUM(Value)
    /// As the engine counts them.
    enum class Navigation { LinkClicked, Typed, FormSubmitted, BackForward, Reload, Other, Redirect };
    Q_ENUM(Navigation)
    enum class Load { Started, Stopped, Succeeded, Failed };
    Q_ENUM(Load)
    enum class Dialog { Alert, Confirm, Prompt, BeforeUnload };
    Q_ENUM(Dialog)

    /// `scheduler` must outlive this.
    explicit EnginePage(Scheduler& scheduler)
        : m_scheduler(scheduler) {}

    [[nodiscard]] QString customUserAgent() const { return m_userAgent; }
    [[nodiscard]] bool isFullScreenEnabled() const { return m_isFullScreenEnabled; }
    [[nodiscard]] bool allowsGestures() const { return m_allowsGestures; }

    // What the engine's view tells.
    Q_INVOKABLE void setView(QObject* view) { m_view = view; }
    Q_INVOKABLE void valueChanged(wrapio::EnginePage::Value value);
    /// Whether the engine may go on.
    Q_INVOKABLE [[nodiscard]] bool mayNavigate(const QUrl& url, int navigation);
    Q_INVOKABLE void loadChanged(int load, int errorCode, const QString& errorString);
    Q_INVOKABLE void newWindowRequested(const QUrl& url);
    /// A dialog of a page; `token` comes back with dialogAnswered().
    Q_INVOKABLE void dialogRequested(int token, int dialog, const QString& message, const QString& defaultText);
    Q_INVOKABLE void processTerminated();

    [[nodiscard]] std::optional<WebAddress> url() const override;
    [[nodiscard]] bool canGoBack() const override;
    [[nodiscard]] bool canGoForward() const override;
    [[nodiscard]] bool isLoading() const override;
    [[nodiscard]] QString title() const override;
    [[nodiscard]] double estimatedProgress() const override;
    void load(const PageRequest& request) override;
    void reload() override;
    void stopLoading() override;
    void goBack() override;
    void goForward() override;
    void setNavigationDelegate(NavigationDelegate* delegate) override { m_navigation = delegate; }
    void setUIDelegate(PageUIDelegate* delegate) override { m_ui = delegate; }
    void setCustomUserAgent(const QString& userAgent) override;
    void setElementFullScreenEnabled(bool enabled) override;
    void setAllowsBackForwardNavigationGestures(bool allowed) override;
    [[nodiscard]] Subscription observeUrl(std::function<void()> changed) override;
    [[nodiscard]] Subscription observeCanGoBack(std::function<void()> changed) override;
    [[nodiscard]] Subscription observeCanGoForward(std::function<void()> changed) override;
    [[nodiscard]] Subscription observeIsLoading(std::function<void()> changed) override;
    [[nodiscard]] Subscription observeTitle(std::function<void()> changed) override;
    [[nodiscard]] Subscription observeEstimatedProgress(std::function<void()> changed) override;

Q_SIGNALS:
    void settingsChanged();
    void dialogAnswered(int token, bool accepted, const QString& text);

private:
    [[nodiscard]] QVariant value(const char* name) const;
    void call(const char* operation);
    void waitForArrival();
    void timedOut();

    Scheduler& m_scheduler;
    QPointer<QObject> m_view;
    NavigationDelegate* m_navigation = nullptr;
    PageUIDelegate* m_ui = nullptr;
    QString m_userAgent;
    bool m_isFullScreenEnabled = false;
    bool m_allowsGestures = false;
    double m_timeoutSeconds = 0;
    bool m_hasTimedOut = false;
    ScheduledTask m_timeout;
    std::map<Value, Observers<>> m_observers;
};

}  // namespace wrapio
