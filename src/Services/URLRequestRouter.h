// Decides what becomes of an address that another program handed to this one.
#pragma once

#include "Utilities/NotificationCenter.h"

#include <QString>

#include <functional>

namespace wrapio {

/// Main thread. A request travels by the bridge's slot and a notification without payload, so that a window that opens
/// only now still finds it.
class URLRequestRouter {
public:
    /// What a request does to the program before it is handed on.
    struct Actions {
        std::function<void()> activate;  ///< brings the program to the front, over others
        std::function<void()> showMainWindow;
    };

    /// `notificationCenter` must outlive this.
    URLRequestRouter(NotificationCenter& notificationCenter, Actions actions);

    /// Takes a create or an import-session request. Any other address is reported in diagnostics and does nothing.
    void handleIncomingURL(const QString& url);

private:
    template <typename Request>
    void handOn(Request request, std::string_view notification);

    NotificationCenter& m_notificationCenter;
    Actions m_actions;
};

}  // namespace wrapio
