// What happens when a page does not load, or stops working.
#pragma once

#include "RunnerCore/LoadTrouble.h"
#include "RunnerCore/RateLimiter.h"
#include "Shell/PageArea.h"
#include "Shell/PageLoader.h"
#include "Shell/RecoveryProbe.h"

#include <webkit/webkit.h>

#include <string>

namespace wrapio {

/// Lives on the main thread, no longer than the view. Shows a message in place of the page, tries again by itself when
/// that can help, and never runs in circles.
class LoadTroubles {
public:
    LoadTroubles(PageArea& page, PageLoader& loader, bool isDevMode);
    ~LoadTroubles();
    LoadTroubles(const LoadTroubles&) = delete;
    LoadTroubles& operator=(const LoadTroubles&) = delete;

    /// Loads what is shown, or what failed, again.
    void reload(bool withoutCache = false);

    /// Shows a message in place of a page that never came; trying again loads `address`.
    void showInstead(const Message& message, const std::string& address);

    /// True once any page was shown.
    [[nodiscard]] bool hasShownPage() const { return m_hasShownPage; }

private:
    void pageCame();
    void showUnreachable(const std::string& address, const std::string& reason);
    void showTls(const std::string& address, GTlsCertificate* certificate, GTlsCertificateFlags flags);
    void askForTrust(const std::string& host, GTlsCertificate* certificate);
    void processEnded();

    static void loadChanged(WebKitWebView*, WebKitLoadEvent event, LoadTroubles* self);
    static gboolean loadFailed(WebKitWebView*, WebKitLoadEvent, const char* address, GError* error, LoadTroubles* self);
    static gboolean tlsFailed(WebKitWebView*, const char* address, GTlsCertificate* certificate,
                              GTlsCertificateFlags flags, LoadTroubles* self);

    PageArea& m_page;
    PageLoader& m_loader;
    WebKitWebView* m_view;
    bool m_isDevMode;
    bool m_hasShownPage = false;
    std::string m_failedAddress;  ///< what a retry loads; empty while a page is shown
    RecoveryProbe m_probe;
    RateLimiter m_crashes{2, std::chrono::minutes(10)};
    RateLimiter m_lostRequests{10, std::chrono::minutes(10)};
};

}  // namespace wrapio
