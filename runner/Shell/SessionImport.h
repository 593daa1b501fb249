// Brings the sign-in for the app's site over from a browser on this machine, if the person wants it.
#pragma once

#include "BrowserSessions/CookieImport.h"
#include "BrowserSessions/CookieSource.h"
#include "RunnerCore/RunnerConfig.h"
#include "Shell/GObjects.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>

namespace wrapio {

/// Lives on the main thread, as long as the window.
class SessionImport {
public:
    /// Copies are made in the private folder `scratch` and gone at once; `onImported` is told when cookies have come.
    SessionImport(GtkWindow* window, WebKitNetworkSession* session, const RunnerConfig& config, std::string scratch,
                  std::function<void()> onImported);

    /// Asks the person, naming the browsers that `wanted` (part of a name, or empty) may mean.
    void offer(const std::string& wanted);

private:
    void start(const CookieSource& source);
    void run(const CookieSource& source, std::optional<std::string> password);
    void take(const CookieSource& source, const ImportedCookies& imported);
    void say(const Message& message);

    GtkWindow* m_window;
    WebKitNetworkSession* m_session;
    std::string m_appName;
    std::string m_site;
    std::string m_scratch;
    std::function<void()> m_onImported;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
};

}  // namespace wrapio
