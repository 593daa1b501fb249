// Saves what pages and servers hand out, and shows how far it is.
#pragma once

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace wrapio {

/// A handle on widgets that the window owns, below the page. Lives on the main thread, no longer than the session.
class Downloads {
public:
    using FolderOpener = std::function<void(const std::string& address)>;

    /// Saves every download of `session` to the person's folder for them, never over a file that is there.
    Downloads(WebKitNetworkSession* session, FolderOpener openFolder);
    ~Downloads();
    Downloads(const Downloads&) = delete;
    Downloads& operator=(const Downloads&) = delete;

    [[nodiscard]] GtkWidget* widget() const { return m_area; }

private:
    struct Row;

    void start(WebKitDownload* download);
    [[nodiscard]] std::string freePath(const char* suggested);
    void forgetOldest();
    void remove(Row* row);

    static gboolean decideDestination(WebKitDownload* download, const char* suggested, Row* row);
    static void finished(WebKitDownload*, Row* row);
    static void failed(WebKitDownload*, GError* error, Row* row);

    WebKitNetworkSession* m_session;
    FolderOpener m_openFolder;
    GtkWidget* m_box;
    GtkWidget* m_area;
    std::set<std::string> m_reserved;  ///< paths of downloads that are on their way
    std::vector<Row*> m_rows;          ///< the oldest one first
};

}  // namespace wrapio
