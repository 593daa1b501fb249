// Asks the person what pages may do, once for each site, and lets them change their mind.
#pragma once

#include "RunnerCore/PermissionStore.h"
#include "Shell/BannerArea.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <string>
#include <vector>

namespace wrapio {

/// Lives on the main thread, at least as long as the views it is attached to.
class Permissions {
public:
    /// Decisions are kept in the file at `path`; questions are shown in `banners`.
    Permissions(BannerArea& banners, std::string path);
    ~Permissions();
    Permissions(const Permissions&) = delete;
    Permissions& operator=(const Permissions&) = delete;

    void attach(WebKitWebView* view);

    /// Shows all decisions over `parent`, each with a way to take it back.
    void showDialog(GtkWindow* parent);

    /// Takes all decisions back.
    void forgetAll();

private:
    void ask(const std::string& origin, const std::vector<Permission>& permissions, WebKitPermissionRequest* request);
    void decide(const std::string& origin, const std::vector<Permission>& permissions, bool isAllowed);
    void forget(const PermissionStore::Entry& entry);

    static gboolean requested(WebKitWebView* view, WebKitPermissionRequest* request, Permissions* self);
    static gboolean queried(WebKitWebView*, WebKitPermissionStateQuery* query, Permissions* self);
    static void initializeNotifications(WebKitWebContext* context, Permissions* self);

    BannerArea& m_banners;
    std::string m_path;
    PermissionStore m_store;
};

}  // namespace wrapio
