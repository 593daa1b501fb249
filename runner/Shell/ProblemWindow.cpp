#include "Shell/ProblemWindow.h"

#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"
#include "Shell/StatusPage.h"

#include <glib-unix.h>

namespace wrapio {

namespace {

gboolean quitLoop(gpointer loop) {
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_CONTINUE;
}

}  // namespace

GtkWindow* makeProblemWindow(const Message& message) {
    auto* window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_title(window, g_get_application_name() != nullptr ? g_get_application_name() : "Wrapio");
    gtk_window_set_default_size(window, 560, 400);
    StatusPage page("dialog-warning-symbolic");
    page.show(message, {{"Close", [window] { gtk_window_destroy(window); }}});
    gtk_window_set_child(window, page.widget());
    page.focus();
    return window;
}

int showProblem(const Message& message) {
    reportLine(oneLine(message));
    if (!gtk_init_check())
        return 1;
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    GtkWindow* window = makeProblemWindow(message);
    connect(
        window, "destroy", [](GtkWidget*, gpointer data) { quitLoop(data); }, loop);
    g_unix_signal_add(SIGTERM, &quitLoop, loop);
    g_unix_signal_add(SIGINT, &quitLoop, loop);
    gtk_window_present(window);
    g_main_loop_run(loop);
    g_main_loop_unref(loop);
    return 1;
}

}  // namespace wrapio
