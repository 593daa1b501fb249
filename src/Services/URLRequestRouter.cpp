#include "Services/URLRequestRouter.h"

#include "Platform/Diagnostics.h"
#include "Services/Notifications.h"
#include "Services/WrapioURLBridge.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

URLRequestRouter::URLRequestRouter(NotificationCenter& notificationCenter, Actions actions)
    : m_notificationCenter(notificationCenter)
    , m_actions(std::move(actions)) {}

template <typename Request>
void URLRequestRouter::handOn(Request request, std::string_view notification) {
    m_actions.activate();
    m_actions.showMainWindow();
    WrapioURLBridge::setPending(std::move(request));
    m_notificationCenter.post(notification);
}

void URLRequestRouter::handleIncomingURL(const QString& url) {
    if (auto create = WrapioURLBridge::parseCreateRequest(url))
        handOn(std::move(*create), notifications::createAppFromURL);
    else if (auto import = WrapioURLBridge::parseImportSessionRequest(url))
        handOn(std::move(*import), notifications::importSessionFromURL);
    else
        printDiagnostics(u"⚠️ [URLBridge] Unsupported Wrapio URL: "_s + url);
}

}  // namespace wrapio
