// What pages tell the app through the scripts that it lends them.
#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace wrapio {

/// Lives on the main thread, no longer than the content manager.
class PageMessages {
public:
    using Handler = std::function<void(const std::string& text)>;

    PageMessages(WebKitUserContentManager* manager, Handler onBadge, Handler onNeed);
    ~PageMessages();
    PageMessages(const PageMessages&) = delete;
    PageMessages& operator=(const PageMessages&) = delete;

private:
    void listen(const char* name, Handler& handler);

    WebKitUserContentManager* m_manager;
    Handler m_onBadge;
    Handler m_onNeed;
};

}  // namespace wrapio
