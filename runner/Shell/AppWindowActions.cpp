// What the commands of the app's window do.
#include "RunnerCore/ZoomSteps.h"
#include "Shell/Actions.h"
#include "Shell/AppWindow.h"
#include "Shell/Diagnostics.h"
#include "Shell/MessageDialog.h"

namespace wrapio {

void AppWindow::addActions() {
    addPageActions();
    addViewActions();
    addShortcutsWindow(GTK_APPLICATION_WINDOW(m_window), m_bundle.config.isDevMode);
    if (!m_bundle.config.isDevMode)
        return;
    addAction(actions(), "inspect", [this] { webkit_web_inspector_show(webkit_web_view_get_inspector(m_view)); });
    addAction(actions(), "hard-reload", [this] { m_troubles.reload(true); });
}

void AppWindow::addPageActions() {
    addAction(actions(), "back", [this] { webkit_web_view_go_back(m_view); });
    addAction(actions(), "forward", [this] { webkit_web_view_go_forward(m_view); });
    addAction(actions(), "reload", [this] { m_troubles.reload(); });
    addAction(actions(), "stop", [this] { webkit_web_view_stop_loading(m_view); });
    addAction(actions(), "home", [this] { m_guard.loadStart(m_bundle.config.url); });
    addAction(actions(), "copy-address", [this] {
        gdk_clipboard_set_text(gtk_widget_get_clipboard(GTK_WIDGET(m_window)), currentAddress().c_str());
    });
    addAction(actions(), "open-in-browser", [this] { m_programs.open(currentAddress()); });
    addAction(actions(), "find", [this] { m_find.open(); });
    addAction(actions(), "find-next", [this] { m_find.findNext(); });
    addAction(actions(), "find-previous", [this] { m_find.findPrevious(); });
    addAction(actions(), "print", [this] { print(); });
    addAction(actions(), "clear-data", [this] { askToClearData(); });
    addAction(actions(), "permissions", [this] { m_permissions.showDialog(m_window); });
    addAction(actions(), "import-session", [this] { m_import.offer(""); });
}

void AppWindow::addViewActions() {
    addAction(actions(), "zoom-in", [this] { setZoom(zoomAbove(webkit_web_view_get_zoom_level(m_view))); });
    addAction(actions(), "zoom-out", [this] { setZoom(zoomBelow(webkit_web_view_get_zoom_level(m_view))); });
    addAction(actions(), "zoom-reset", [this] { setZoom(1.0); });
    addAction(actions(), "full-screen", [this] { toggleFullScreen(); });
}

void AppWindow::setZoom(double zoom) {
    webkit_web_view_set_zoom_level(m_view, zoom);
}

void AppWindow::toggleFullScreen() {
    if (gtk_window_is_fullscreen(m_window))
        gtk_window_unfullscreen(m_window);
    else
        gtk_window_fullscreen(m_window);
}

void AppWindow::print() {
    const ObjectPtr<WebKitPrintOperation> operation(webkit_print_operation_new(m_view));
    connect(
        operation.get(), "failed",
        [](WebKitPrintOperation*, GError* error, AppWindow* self) {
            showMessageDialog(self->m_window, {"The page could not be printed", error->message});
        },
        this);
    webkit_print_operation_run_dialog(operation.get(), m_window);
}

void AppWindow::askToClearData() {
    showMessageDialog(m_window,
                      {"Clear everything that " + m_bundle.config.name + " has stored here?",
                       "You are signed out, and cookies, storage, caches and permissions of this app are deleted. "
                       "Downloaded files stay."},
                      {{"Cancel", {}}, {"Clear Data", [this] { clearData(); }}});
}

void AppWindow::clearData() {
    m_permissions.forgetAll();
    m_cookies.clear();
    WebKitWebsiteDataManager* data = webkit_network_session_get_website_data_manager(m_content.session());
    const auto cleared = [](GObject* manager, GAsyncResult* result, gpointer self) {
        GError* error = nullptr;
        if (!webkit_website_data_manager_clear_finish(WEBKIT_WEBSITE_DATA_MANAGER(manager), result, &error))
            reportLine("the data could not be cleared: " + takeMessage(error));
        auto* window = static_cast<AppWindow*>(self);
        window->m_guard.loadStart(window->m_bundle.config.url);
    };
    webkit_website_data_manager_clear(data, WEBKIT_WEBSITE_DATA_ALL, 0, nullptr, cleared, this);
}

}  // namespace wrapio
