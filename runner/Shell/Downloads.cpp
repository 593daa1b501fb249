#include "Shell/Downloads.h"

#include "RunnerCore/DisplayText.h"
#include "RunnerCore/DownloadName.h"
#include "Shell/GObjects.h"

#include <algorithm>
#include <filesystem>

namespace wrapio {

namespace {

constexpr int mostNumbers = 10'000;
constexpr std::size_t longestReason = 120;
constexpr std::size_t mostRows = 4;  // of which those that are on their way always stay
constexpr int largestHeight = 200;   // pixels

std::string downloadFolder() {
    const char* folder = g_get_user_special_dir(G_USER_DIRECTORY_DOWNLOAD);
    return folder != nullptr ? folder : std::string(g_get_home_dir()) + "/Downloads";
}

GtkLabel* makeLabel() {
    auto* label = GTK_LABEL(gtk_label_new("Download"));
    gtk_label_set_ellipsize(label, PANGO_ELLIPSIZE_MIDDLE);
    gtk_label_set_xalign(label, 0.0F);
    gtk_widget_set_hexpand(GTK_WIDGET(label), TRUE);
    return label;
}

/// However much a page downloads, most of the window stays its own.
GtkWidget* makeArea(GtkWidget* rows) {
    GtkWidget* area = gtk_scrolled_window_new();
    auto* scrolled = GTK_SCROLLED_WINDOW(area);
    gtk_scrolled_window_set_policy(scrolled, GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    gtk_scrolled_window_set_propagate_natural_height(scrolled, TRUE);
    gtk_scrolled_window_set_max_content_height(scrolled, largestHeight);
    gtk_scrolled_window_set_child(scrolled, rows);
    gtk_widget_set_visible(area, FALSE);
    return area;
}

}  // namespace

/// One download in the bar.
struct Downloads::Row {
    Downloads* owner;
    ObjectPtr<WebKitDownload> download;
    GtkWidget* widget = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
    GtkLabel* label = makeLabel();
    GtkWidget* progress = gtk_progress_bar_new();
    GtkWidget* folder = gtk_button_new_with_label("Open Folder");
    GtkWidget* close = gtk_button_new_with_label("Cancel");
    std::string path;
    bool isOver = false;

    void build() {
        gtk_widget_add_css_class(widget, "app-bar");
        gtk_widget_set_valign(progress, GTK_ALIGN_CENTER);
        gtk_widget_set_visible(folder, FALSE);
        for (GtkWidget* part : {GTK_WIDGET(label), progress, folder, close})
            gtk_box_append(GTK_BOX(widget), part);
        connectAction(close, "clicked", [this] {
            if (isOver)
                owner->remove(this);
            else
                webkit_download_cancel(download.get());
        });
        connectAction(folder, "clicked", [this] {
            const TextPtr address(
                g_filename_to_uri(std::filesystem::path(path).parent_path().c_str(), nullptr, nullptr));
            owner->m_openFolder(orEmpty(address.get()));
        });
        g_object_bind_property(download.get(), "estimated-progress", progress, "fraction", G_BINDING_DEFAULT);
    }

    void end(const std::string& text) {
        isOver = true;
        owner->m_reserved.erase(path);
        gtk_label_set_text(label, text.c_str());
        gtk_widget_set_visible(progress, FALSE);
        gtk_button_set_label(GTK_BUTTON(close), "Close");
    }

    [[nodiscard]] std::string name() const { return std::filesystem::path(path).filename().string(); }
};

Downloads::Downloads(WebKitNetworkSession* session, FolderOpener openFolder)
    : m_session(session)
    , m_openFolder(std::move(openFolder))
    , m_box(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0))
    , m_area(makeArea(m_box)) {
    connect(
        session, "download-started",
        [](WebKitNetworkSession*, WebKitDownload* download, Downloads* self) { self->start(download); }, this);
}

Downloads::~Downloads() {
    g_signal_handlers_disconnect_by_data(m_session, this);
    for (Row* row : m_rows) {
        g_signal_handlers_disconnect_by_data(row->download.get(), row);
        delete row;
    }
}

void Downloads::start(WebKitDownload* download) {
    g_object_ref(download);
    auto* row = new Row{.owner = this, .download = ObjectPtr<WebKitDownload>(download), .path = {}};
    forgetOldest();
    m_rows.push_back(row);
    row->build();
    gtk_box_append(GTK_BOX(m_box), row->widget);
    gtk_widget_set_visible(m_area, TRUE);
    g_signal_connect(download, "decide-destination", G_CALLBACK(&Downloads::decideDestination), row);
    g_signal_connect(download, "finished", G_CALLBACK(&Downloads::finished), row);
    g_signal_connect(download, "failed", G_CALLBACK(&Downloads::failed), row);
}

void Downloads::forgetOldest() {
    if (m_rows.size() < mostRows)
        return;
    const auto oldest = std::find_if(m_rows.begin(), m_rows.end(), [](const Row* row) { return row->isOver; });
    if (oldest != m_rows.end())
        remove(*oldest);
}

void Downloads::remove(Row* row) {
    g_signal_handlers_disconnect_by_data(row->download.get(), row);
    std::erase(m_rows, row);
    gtk_box_remove(GTK_BOX(m_box), row->widget);
    gtk_widget_set_visible(m_area, m_rows.empty() ? FALSE : TRUE);
    delete row;
}

std::string Downloads::freePath(const char* suggested) {
    const std::filesystem::path folder = downloadFolder();
    std::error_code failed;
    std::filesystem::create_directories(folder, failed);
    const std::string name = safeFileName(orEmpty(suggested));
    for (int number = 1; number < mostNumbers; ++number) {
        const std::string path = (folder / numberedName(name, number)).string();
        // A dangling link is a file too.
        const bool isTaken =
            std::filesystem::symlink_status(path, failed).type() != std::filesystem::file_type::not_found;
        if (!isTaken && m_reserved.insert(path).second)
            return path;
    }
    return {};
}

gboolean Downloads::decideDestination(WebKitDownload* download, const char* suggested, Row* row) {
    row->path = row->owner->freePath(suggested);
    if (row->path.empty()) {
        webkit_download_cancel(download);
        return TRUE;
    }
    webkit_download_set_allow_overwrite(download, FALSE);
    webkit_download_set_destination(download, row->path.c_str());
    gtk_label_set_text(row->label, row->name().c_str());
    return TRUE;
}

void Downloads::finished(WebKitDownload*, Row* row) {
    // Also told after a failure.
    if (row->isOver)
        return;
    row->end(row->name() + " was saved");
    gtk_widget_set_visible(row->folder, TRUE);
}

void Downloads::failed(WebKitDownload*, GError* error, Row* row) {
    if (g_error_matches(error, WEBKIT_DOWNLOAD_ERROR, WEBKIT_DOWNLOAD_ERROR_CANCELLED_BY_USER))
        row->end(row->name() + " was cancelled");
    else
        row->end(row->name() + " could not be saved: " + displayText(error->message, longestReason));
}

}  // namespace wrapio
