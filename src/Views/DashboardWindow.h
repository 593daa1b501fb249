// The dashboard's window, from the moment it is shown until it is closed.
#pragma once

#include "Utilities/NotificationCenter.h"
#include "ViewModels/DashboardViewModel.h"

#include <QObject>
#include <QPointer>
#include <QQuickWindow>

#include <functional>
#include <memory>
#include <vector>

class QQmlEngine;

namespace wrapio {

/// Made by the composition root, once; it costs nothing before show(). While the window is open it has a view model and
/// an engine of its own; both go when it is closed, and their memory with them. Main thread.
class DashboardWindow : public QObject {
    Q_OBJECT

public:
    /// Everything outlives this.
    DashboardWindow(const ViewModelServices& services, NotificationCenter& notifications);
    ~DashboardWindow() override;

    /// Opens the window, or brings the open one to the front. `activationToken` is what the desktop gave whoever asked
    /// for it; empty when there is none. False when the screens could not be loaded; diagnostics say why.
    bool show(const QString& activationToken = {});
    /// Closes the window and gives back what it took. What is typed into an open sheet is lost, as with Cancel.
    void close();
    /// Shows sites with `open` from now on: it takes an app and answers whether its site is shown. Those that are not,
    /// and all while nothing is set, go to the default browser.
    void setSiteOpener(std::function<bool(const QUuid&)> open) { m_openSite = std::move(open); }
    /// Shows the settings: the form of the app that is selected in the catalogue.
    void showSettings();

    [[nodiscard]] bool isOpen() const { return m_window; }
    /// The window; null while it is not open.
    [[nodiscard]] QQuickWindow* window() const { return m_window; }
    /// The open window's view model; null while it is not open.
    [[nodiscard]] DashboardViewModel* viewModel() const { return m_viewModel.get(); }

Q_SIGNALS:
    void opened();
    /// The person, or close(), has closed it.
    void closed();

private:
    [[nodiscard]] bool open();
    void tearDown();
    void takeRequests();

private Q_SLOTS:
    void postReload();
    void openSite(const QString& appId);

private:
    ViewModelServices m_services;
    NotificationCenter& m_notifications;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<DashboardViewModel> m_viewModel;
    std::unique_ptr<class SettingsWindow> m_settings;
    QPointer<QQuickWindow> m_window;
    std::function<bool(const QUuid&)> m_openSite;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace wrapio
