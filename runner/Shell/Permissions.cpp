#include "Shell/Permissions.h"

#include "RunnerCore/DisplayText.h"
#include "Shell/GObjects.h"
#include "Shell/MessageDialog.h"
#include "Shell/ProfileFile.h"

namespace wrapio {

namespace {

constexpr std::size_t longestOrigin = 100;

using RequestPtr = std::shared_ptr<WebKitPermissionRequest>;

/// What `request` is about; empty for what is not asked: it is denied.
std::vector<Permission> permissionsOf(WebKitPermissionRequest* request) {
    if (WEBKIT_IS_GEOLOCATION_PERMISSION_REQUEST(request))
        return {Permission::Location};
    if (WEBKIT_IS_NOTIFICATION_PERMISSION_REQUEST(request))
        return {Permission::Notifications};
    if (WEBKIT_IS_CLIPBOARD_PERMISSION_REQUEST(request))
        return {Permission::Clipboard};
    if (WEBKIT_IS_POINTER_LOCK_PERMISSION_REQUEST(request))
        return {Permission::PointerLock};
    if (WEBKIT_IS_WEBSITE_DATA_ACCESS_PERMISSION_REQUEST(request))
        return {Permission::SiteStorage};
    if (!WEBKIT_IS_USER_MEDIA_PERMISSION_REQUEST(request))
        return {};
    auto* media = WEBKIT_USER_MEDIA_PERMISSION_REQUEST(request);
    if (webkit_user_media_permission_is_for_display_device(media))
        return {Permission::Screen};
    std::vector<Permission> permissions;
    if (webkit_user_media_permission_is_for_video_device(media))
        permissions.push_back(Permission::Camera);
    if (webkit_user_media_permission_is_for_audio_device(media))
        permissions.push_back(Permission::Microphone);
    return permissions;
}

std::optional<Permission> permissionOfName(std::string_view name) {
    if (name == "geolocation")
        return Permission::Location;
    if (name == "notifications")
        return Permission::Notifications;
    if (name == "camera")
        return Permission::Camera;
    if (name == "microphone")
        return Permission::Microphone;
    return std::nullopt;
}

std::string sentenceOf(const std::vector<Permission>& permissions) {
    std::string text;
    for (const Permission permission : permissions)
        text += (text.empty() ? "" : " and ") + permissionText(permission);
    return text;
}

void answer(WebKitPermissionRequest* request, bool isAllowed) {
    if (isAllowed)
        webkit_permission_request_allow(request);
    else
        webkit_permission_request_deny(request);
}

}  // namespace

Permissions::Permissions(BannerArea& banners, std::string path)
    : m_banners(banners)
    , m_path(std::move(path))
    , m_store(PermissionStore::parse(readProfileFile(m_path))) {
    g_signal_connect(webkit_web_context_get_default(), "initialize-notification-permissions",
                     G_CALLBACK(&Permissions::initializeNotifications), this);
}

Permissions::~Permissions() {
    g_signal_handlers_disconnect_by_data(webkit_web_context_get_default(), this);
}

void Permissions::attach(WebKitWebView* view) {
    g_signal_connect(view, "permission-request", G_CALLBACK(&Permissions::requested), this);
    g_signal_connect(view, "query-permission-state", G_CALLBACK(&Permissions::queried), this);
}

gboolean Permissions::requested(WebKitWebView* view, WebKitPermissionRequest* request, Permissions* self) {
    const auto origin = originOf(orEmpty(webkit_web_view_get_uri(view)));
    if (origin && WEBKIT_IS_DEVICE_INFO_PERMISSION_REQUEST(request)) {
        // The names of devices tell people apart, so they are for pages that may use one.
        answer(request, self->m_store.decision(*origin, {Permission::Camera}).value_or(false) ||
                            self->m_store.decision(*origin, {Permission::Microphone}).value_or(false));
        return TRUE;
    }
    const auto permissions = permissionsOf(request);
    if (!origin || permissions.empty())
        answer(request, false);
    else if (const auto known = self->m_store.decision(*origin, permissions))
        answer(request, *known);
    else
        self->ask(*origin, permissions, request);
    return TRUE;
}

void Permissions::ask(const std::string& origin, const std::vector<Permission>& permissions,
                      WebKitPermissionRequest* request) {
    g_object_ref(request);
    const RequestPtr kept(request, UnrefObject());
    const auto choose = [this, origin, permissions, kept](bool isAllowed) {
        return [this, origin, permissions, kept, isAllowed] {
            decide(origin, permissions, isAllowed);
            answer(kept.get(), isAllowed);
        };
    };
    const std::string what = sentenceOf(permissions);
    m_banners.show("permission " + origin + " " + what, displayText(origin, longestOrigin) + " wants to " + what + ".",
                   {{"Block", choose(false)}, {"Allow", choose(true)}}, [kept] { answer(kept.get(), false); });
}

void Permissions::decide(const std::string& origin, const std::vector<Permission>& permissions, bool isAllowed) {
    m_store.remember(origin, permissions, isAllowed);
    writeProfileFile(m_path, m_store.text());
}

void Permissions::forget(const PermissionStore::Entry& entry) {
    m_store.forget(entry.origin, entry.permission);
    writeProfileFile(m_path, m_store.text());
}

void Permissions::forgetAll() {
    m_store.clear();
    writeProfileFile(m_path, m_store.text());
}

gboolean Permissions::queried(WebKitWebView*, WebKitPermissionStateQuery* query, Permissions* self) {
    const auto permission = permissionOfName(orEmpty(webkit_permission_state_query_get_name(query)));
    const TextPtr text(webkit_security_origin_to_string(webkit_permission_state_query_get_security_origin(query)));
    const auto origin = originOf(orEmpty(text.get()));
    if (!permission || !origin)
        return FALSE;
    const auto known = self->m_store.decision(*origin, {*permission});
    webkit_permission_state_query_finish(query, !known   ? WEBKIT_PERMISSION_STATE_PROMPT
                                                : *known ? WEBKIT_PERMISSION_STATE_GRANTED
                                                         : WEBKIT_PERMISSION_STATE_DENIED);
    return TRUE;
}

void Permissions::initializeNotifications(WebKitWebContext* context, Permissions* self) {
    GList* allowed = nullptr;
    GList* denied = nullptr;
    for (const auto& entry : self->m_store.entries()) {
        if (entry.permission != Permission::Notifications)
            continue;
        GList*& list = entry.isAllowed ? allowed : denied;
        list = g_list_prepend(list, webkit_security_origin_new_for_uri(entry.origin.c_str()));
    }
    webkit_web_context_initialize_notification_permissions(context, allowed, denied);
    const auto release = [](gpointer origin) {
        webkit_security_origin_unref(static_cast<WebKitSecurityOrigin*>(origin));
    };
    g_list_free_full(allowed, release);
    g_list_free_full(denied, release);
}

void Permissions::showDialog(GtkWindow* parent) {
    const auto entries = m_store.entries();
    GtkWindow* window = makeDialogWindow(parent);
    GtkBox* box =
        fillDialog(window, {"Permissions", entries.empty() ? "No page has been allowed or forbidden anything yet."
                                                           : "What is forgotten is asked again when it is needed."});
    for (const auto& entry : entries) {
        GtkWidget* row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
        const std::string text = displayText(entry.origin, longestOrigin) + (entry.isAllowed ? " may " : " may not ") +
                                 permissionText(entry.permission);
        GtkWidget* label = gtk_label_new(text.c_str());
        gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_MIDDLE);
        gtk_label_set_xalign(GTK_LABEL(label), 0.0F);
        gtk_widget_set_hexpand(label, TRUE);
        gtk_box_append(GTK_BOX(row), label);
        gtk_box_append(GTK_BOX(row), makeChoiceButton({"Forget", [this, entry, row] {
                                                           forget(entry);
                                                           gtk_widget_set_visible(row, FALSE);
                                                       }}));
        gtk_box_append(box, row);
    }
    gtk_window_set_default_size(window, 480, -1);
    gtk_window_present(window);
}

}  // namespace wrapio
