// The window in which an app's site is shown as in a browser.
#pragma once

#include "Views/Pages/BrowserModel.h"
#include "Views/Pages/EnginePage.h"

#include <QPointer>
#include <QQuickWindow>

#include <functional>
#include <memory>

class QQmlEngine;

namespace wrapio {

/// Made by the composition root, once; it costs nothing before show(). One window: another site takes its place.
/// Main thread.
class BrowserWindow final : public QObject {
    Q_OBJECT

public:
    /// `loadEngine` makes the engine available and is called before each window; false when there is none.
    BrowserWindow(const PageServices& services, std::function<bool()> loadEngine);
    ~BrowserWindow() override;

    /// Shows the site of `app`, which becomes the current configuration. False when it has no address or there is no
    /// engine.
    [[nodiscard]] bool show(const QUuid& app);
    void close();

    /// The window; null while it is not open.
    [[nodiscard]] QQuickWindow* window() const { return m_window; }
    [[nodiscard]] BrowserModel* model() const { return m_model.get(); }

private:
    [[nodiscard]] bool open(const AppConfiguration& app);

    PageServices m_services;
    std::function<bool()> m_loadEngine;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<EnginePage> m_page;
    std::unique_ptr<BrowserModel> m_model;
    QPointer<QQuickWindow> m_window;
};

}  // namespace wrapio
