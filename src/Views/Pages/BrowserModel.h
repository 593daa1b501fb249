// The browser screen's state and operations, without the screen.
#pragma once

#include "Views/Pages/BrowserWebView.h"

#include <QObject>
#include <QVariant>
#include <QtQml/qqml.h>

#include <memory>

namespace wrapio {

/// Owns the browser view of one app's site and mirrors its page for the screen. Main thread.
class BrowserModel final : public QObject, public PageDialogs {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window makes it.")
    Q_PROPERTY(QString address READ address NOTIFY changed)
    Q_PROPERTY(QString pageTitle READ pageTitle NOTIFY changed)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY changed)
    Q_PROPERTY(bool canGoForward READ canGoForward NOTIFY changed)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY changed)
    Q_PROPERTY(double loadProgress READ loadProgress NOTIFY changed)
    Q_PROPERTY(bool showError READ showError NOTIFY changed)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY changed)
    Q_PROPERTY(QString errorAddress READ errorAddress NOTIFY changed)
    Q_PROPERTY(QVariant alert READ alert NOTIFY alertChanged)

public:
    /// Shows `start` first. With `isDevMode` local addresses may be typed.
    BrowserModel(const PageServices& services, const WebAddress& start, bool isDevMode);
    ~BrowserModel() override;

    /// Takes the engine's view, which must outlive this, and loads the first address. Once.
    void attach(PlatformWebView& view);

    [[nodiscard]] QString address() const { return m_address; }
    [[nodiscard]] QString pageTitle() const { return m_title; }
    [[nodiscard]] bool canGoBack() const { return m_canGoBack; }
    [[nodiscard]] bool canGoForward() const { return m_canGoForward; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] double loadProgress() const { return m_progress; }
    [[nodiscard]] bool showError() const { return m_showError; }
    [[nodiscard]] QString errorMessage() const { return m_errorMessage.value_or(QString()); }
    [[nodiscard]] QString errorAddress() const;
    /// The page's dialog: messageText, buttons, hasField, field; invalid when there is none.
    [[nodiscard]] QVariant alert() const { return m_alert; }

    Q_INVOKABLE void goBack();
    Q_INVOKABLE void goForward();
    Q_INVOKABLE void reload();
    Q_INVOKABLE void stop();
    /// Goes to what was typed; false when that is no address that may be shown.
    Q_INVOKABLE bool open(const QString& text);
    /// Loads the address that failed once more.
    Q_INVOKABLE void retry();
    Q_INVOKABLE void openInDefaultBrowser();
    Q_INVOKABLE void answerAlert(int button, const QString& text);

    void run(const PageAlert& alert, Answer answer) override;

Q_SIGNALS:
    void changed();
    void alertChanged();

private:
    [[nodiscard]] BrowserWebView makeBrowserWebView(const WebAddress& start);
    template <typename Value>
    [[nodiscard]] Binding<Value> bindTo(Value& member);
    void load(const WebAddress& address);
    void showNextAlert();

    PageServices m_services;
    bool m_isDevMode;
    QString m_address;
    QString m_title;
    bool m_canGoBack = false;
    bool m_canGoForward = false;
    bool m_isLoading = false;
    double m_progress = 0;
    bool m_showError = false;
    std::optional<QString> m_errorMessage;
    std::optional<WebAddress> m_errorUrl;
    PlatformWebView* m_webView = nullptr;
    QVariant m_alert;
    std::vector<std::pair<PageAlert, Answer>> m_waitingAlerts;
    BrowserWebView m_browser;
    std::shared_ptr<BrowserWebView::Coordinator> m_coordinator;
    Subscription m_addressObservation;
};

}  // namespace wrapio
