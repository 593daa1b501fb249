// The settings: the form of the app that is selected in the catalogue, in a window of its own.
#pragma once

#include "ViewModels/EditorSheetViewModel.h"

#include <QPointer>
#include <QQuickWindow>

#include <memory>

class QQmlEngine;

namespace wrapio {

/// Main thread. Costs nothing before show().
class SettingsWindow {
public:
    /// Everything outlives this.
    explicit SettingsWindow(const ViewModelServices& services);
    ~SettingsWindow();
    SettingsWindow(const SettingsWindow&) = delete;
    SettingsWindow& operator=(const SettingsWindow&) = delete;

    /// Opens the window for the app that is selected now, or brings the open one to the front. Nothing happens when the
    /// catalogue is empty.
    void show();
    [[nodiscard]] QQuickWindow* window() const { return m_window; }

private:
    [[nodiscard]] bool open(const QUuid& app);
    void tearDown();

    ViewModelServices m_services;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<EditorSheetViewModel> m_editor;
    QPointer<QQuickWindow> m_window;
};

}  // namespace wrapio
