// The least that shows a web page with this toolkit and this engine: what the runner is measured against.
//
//     PlainPage TITLE ADDRESS DATA-FOLDER CACHE-FOLDER
#include <gtk/gtk.h>
#include <webkit/webkit.h>

namespace {

struct Wish {
    const char* title;
    const char* address;
    const char* data;
    const char* cache;
};

void show(GtkApplication* application, gpointer data) {
    const auto* wish = static_cast<Wish*>(data);
    WebKitNetworkSession* session = webkit_network_session_new(wish->data, wish->cache);
    auto* view = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", session, nullptr));
    GtkWidget* window = gtk_application_window_new(application);
    gtk_window_set_title(GTK_WINDOW(window), wish->title);
    gtk_window_set_default_size(GTK_WINDOW(window), 1200, 800);
    gtk_window_set_titlebar(GTK_WINDOW(window), gtk_header_bar_new());
    gtk_window_set_child(GTK_WINDOW(window), GTK_WIDGET(view));
    webkit_web_view_load_uri(view, wish->address);
    gtk_window_present(GTK_WINDOW(window));
    g_object_unref(session);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        g_printerr("PlainPage TITLE ADDRESS DATA-FOLDER CACHE-FOLDER\n");
        return 1;
    }
    Wish wish{argv[1], argv[2], argv[3], argv[4]};
    GtkApplication* application = gtk_application_new("com.wrapio.PlainPage", G_APPLICATION_NON_UNIQUE);
    g_signal_connect(application, "activate", G_CALLBACK(&show), &wish);
    const int status = g_application_run(G_APPLICATION(application), 1, argv);
    g_object_unref(application);
    return status;
}
