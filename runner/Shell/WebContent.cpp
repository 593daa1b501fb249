#include "Shell/WebContent.h"

#include "RunnerCore/InjectedScripts.h"
#include "RunnerCore/PageShims.h"
#include "Shell/GObjects.h"
#include "Shell/Preparation.h"

#include <array>

namespace wrapio {

namespace {

// Only pages of sites: never what the engine or the app shows by itself.
constexpr std::array<const char*, 3> sitePages{"http://*/*", "https://*/*", nullptr};
// Keeps the style's own code away from what a page does to the built-in classes.
constexpr const char* styleWorld = "wrapio";

ObjectPtr<WebKitNetworkSession> makeSession(const ProfilePaths& paths) {
    ObjectPtr<WebKitNetworkSession> session(webkit_network_session_new(paths.data.c_str(), paths.cache.c_str()));
    webkit_cookie_manager_set_persistent_storage(webkit_network_session_get_cookie_manager(session.get()),
                                                 (paths.data + "/cookies.sqlite").c_str(),
                                                 WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
    return session;
}

ObjectPtr<WebKitSettings> makeSettings(const RunnerConfig& config) {
    ObjectPtr<WebKitSettings> settings(webkit_settings_new());
    webkit_settings_set_enable_developer_extras(settings.get(), config.isDevMode);
    webkit_settings_set_enable_write_console_messages_to_stdout(settings.get(), config.isDevMode);
    webkit_settings_set_enable_back_forward_navigation_gestures(settings.get(), TRUE);
    if (config.userAgent)
        webkit_settings_set_user_agent(settings.get(), config.userAgent->c_str());
    return settings;
}

void addScript(WebKitUserContentManager* manager, const std::string& source, WebKitUserScriptInjectionTime time) {
    WebKitUserScript* script =
        webkit_user_script_new(source.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, time, sitePages.data(), nullptr);
    webkit_user_content_manager_add_script(manager, script);
    webkit_user_script_unref(script);
}

void addCustomScript(WebKitUserContentManager* manager, const RunnerConfig& config) {
    if (config.scriptTime == ScriptTime::DocumentStart)
        return addScript(manager, config.customJs, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START);
    for (const std::string& source : {lateScriptPrologue(), config.customJs, lateScriptEpilogue()})
        addScript(manager, source, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END);
}

void addCustomStyle(WebKitUserContentManager* manager, const std::string& css) {
    WebKitUserScript* script = webkit_user_script_new_for_world(
        styleScript(css).c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START,
        styleWorld, sitePages.data(), nullptr);
    webkit_user_content_manager_add_script(manager, script);
    webkit_user_script_unref(script);
}

ObjectPtr<WebKitUserContentManager> makeUserContent(const RunnerConfig& config) {
    ObjectPtr<WebKitUserContentManager> manager(webkit_user_content_manager_new());
    if (config.badgeEnabled)
        addScript(manager.get(), badgeShim(), WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START);
    addScript(manager.get(), needShim(), WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START);
    if (!config.customCss.empty())
        addCustomStyle(manager.get(), config.customCss);
    if (!config.customJs.empty())
        addCustomScript(manager.get(), config);
    return manager;
}

ObjectPtr<WebKitWebView> owned(gpointer view) {
    g_object_ref_sink(view);
    return ObjectPtr<WebKitWebView>(WEBKIT_WEB_VIEW(view));
}

}  // namespace

WebContent::WebContent(const RunnerConfig& config, const ProfilePaths& paths)
    : m_session(makeSession(paths))
    , m_settings(makeSettings(config))
    , m_userContent(makeUserContent(config)) {
    WebKitWebContext* context = webkit_web_context_get_default();
    if (lacksLanguage()) {
        const std::array<const char*, 3> languages{"en-US", "en", nullptr};
        webkit_web_context_set_preferred_languages(context, languages.data());
    }
    // What a developer has just changed must be seen at once.
    if (config.isDevMode)
        webkit_web_context_set_cache_model(context, WEBKIT_CACHE_MODEL_DOCUMENT_VIEWER);
}

ObjectPtr<WebKitWebView> WebContent::makeView() const {
    return owned(g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", m_session.get(), "settings", m_settings.get(),
                              "user-content-manager", m_userContent.get(), nullptr));
}

ObjectPtr<WebKitWebView> WebContent::makePopupView(WebKitWebView* opener) const {
    return owned(g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", opener, "settings", m_settings.get(), nullptr));
}

}  // namespace wrapio
