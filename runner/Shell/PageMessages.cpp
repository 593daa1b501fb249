#include "Shell/PageMessages.h"

#include "RunnerCore/PageShims.h"
#include "Shell/GObjects.h"

namespace wrapio {

namespace {

constexpr std::size_t longestMessage = 64;

void received(WebKitUserContentManager*, JSCValue* value, PageMessages::Handler* handler) {
    if (!jsc_value_is_string(value))
        return;
    const TextPtr text(jsc_value_to_string(value));
    if (text && std::string_view(text.get()).size() <= longestMessage)
        (*handler)(text.get());
}

}  // namespace

PageMessages::PageMessages(WebKitUserContentManager* manager, Handler onBadge, Handler onNeed)
    : m_manager(manager)
    , m_onBadge(std::move(onBadge))
    , m_onNeed(std::move(onNeed)) {
    listen(badgeMessage, m_onBadge);
    listen(needMessage, m_onNeed);
}

PageMessages::~PageMessages() {
    g_signal_handlers_disconnect_by_data(m_manager, &m_onBadge);
    g_signal_handlers_disconnect_by_data(m_manager, &m_onNeed);
}

void PageMessages::listen(const char* name, Handler& handler) {
    g_signal_connect(m_manager, ("script-message-received::" + std::string(name)).c_str(), G_CALLBACK(&received),
                     &handler);
    webkit_user_content_manager_register_script_message_handler(m_manager, name, nullptr);
}

}  // namespace wrapio
