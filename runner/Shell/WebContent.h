// Makes the web views of an app: their profile, their settings, and the scripts and styles that it adds to pages.
#pragma once

#include "RunnerCore/RunnerConfig.h"
#include "Shell/GObjects.h"
#include "Shell/ProfileFolder.h"

#include <webkit/webkit.h>

namespace wrapio {

/// What the views of an app have in common. Lives on the main thread, at least as long as they.
class WebContent {
public:
    /// Keeps data below `paths` and follows `config`. The sandbox must have been found to work.
    WebContent(const RunnerConfig& config, const ProfilePaths& paths);
    WebContent(const WebContent&) = delete;
    WebContent& operator=(const WebContent&) = delete;

    /// The view of the app's window, with the scripts and styles of the app.
    [[nodiscard]] ObjectPtr<WebKitWebView> makeView() const;

    /// A view for a window that a page of `opener` opens. It adds nothing to the pages: they may be of any site.
    [[nodiscard]] ObjectPtr<WebKitWebView> makePopupView(WebKitWebView* opener) const;

    [[nodiscard]] WebKitNetworkSession* session() const { return m_session.get(); }
    [[nodiscard]] WebKitUserContentManager* userContent() const { return m_userContent.get(); }

private:
    ObjectPtr<WebKitNetworkSession> m_session;
    ObjectPtr<WebKitSettings> m_settings;
    ObjectPtr<WebKitUserContentManager> m_userContent;
};

}  // namespace wrapio
