#include "Shell/NavigationGuard.h"

#include "RunnerCore/DisplayText.h"
#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"

namespace wrapio {

namespace {

std::string engineHost(const std::string& host) {
    const TextPtr ascii(g_hostname_to_ascii(host.c_str()));
    return ascii ? std::string(ascii.get()) : host;
}

struct Request {
    std::string address;
    NavigationCause cause;
};

Request requestOf(WebKitPolicyDecision* decision) {
    WebKitNavigationAction* action =
        webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    return {orEmpty(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action))),
            {webkit_navigation_action_get_navigation_type(action) == WEBKIT_NAVIGATION_TYPE_LINK_CLICKED,
             webkit_navigation_action_is_user_gesture(action) != FALSE}};
}

/// What the server wants to be saved, and what the engine cannot show.
bool isDownload(WebKitResponsePolicyDecision* response) {
    SoupMessageHeaders* headers =
        webkit_uri_response_get_http_headers(webkit_response_policy_decision_get_response(response));
    char* disposition = nullptr;
    GHashTable* parameters = nullptr;
    bool isAttachment = false;
    if (headers != nullptr && soup_message_headers_get_content_disposition(headers, &disposition, &parameters)) {
        isAttachment = g_ascii_strcasecmp(disposition, "attachment") == 0;
        g_free(disposition);
        g_hash_table_unref(parameters);
    }
    return isAttachment || !webkit_response_policy_decision_is_mime_type_supported(response);
}

}  // namespace

NavigationPolicy policyOf(const RunnerConfig& config) {
    std::vector<std::string> allowed;
    for (const std::string& host : config.allowedHosts)
        allowed.push_back(engineHost(host));
    return {engineHost(config.host), std::move(allowed), config.isDevMode};
}

NavigationGuard::NavigationGuard(PageLoader& loader, NavigationPolicy policy, HandOff handOff, PopupMaker makePopup)
    : m_loader(loader)
    , m_view(loader.view())
    , m_policy(std::move(policy))
    , m_handOff(std::move(handOff))
    , m_makePopup(std::move(makePopup)) {
    g_signal_connect(m_view, "decide-policy", G_CALLBACK(&NavigationGuard::decidePolicy), this);
    connect(
        m_view, "create",
        [](WebKitWebView*, WebKitNavigationAction*, NavigationGuard* self) -> GtkWidget* {
            return GTK_WIDGET(self->m_makePopup());
        },
        this);
}

NavigationGuard::~NavigationGuard() {
    g_signal_handlers_disconnect_by_data(m_view, this);
}

void NavigationGuard::loadStart(const std::string& address) {
    m_isStarting = true;
    m_loader.load(address);
}

void NavigationGuard::loadRequested(const std::string& address) {
    m_isStarting = false;
    m_loader.load(address);
}

gboolean NavigationGuard::decidePolicy(WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
                                       NavigationGuard* self) {
    switch (type) {
    case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION:
        return self->decideNavigation(decision);
    case WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION:
        return self->decideNewWindow(decision);
    case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
        return self->decideResponse(decision);
    }
    return FALSE;
}

gboolean NavigationGuard::decideNavigation(WebKitPolicyDecision* decision) {
    const Request request = requestOf(decision);
    const Verdict verdict = m_policy.decideNavigation(request.address, request.cause);
    if (verdict == Verdict::Inside)
        return FALSE;
    webkit_policy_decision_ignore(decision);
    m_loader.requestStopped();
    leave(request.address, verdict);
    return TRUE;
}

gboolean NavigationGuard::decideNewWindow(WebKitPolicyDecision* decision) {
    const Request request = requestOf(decision);
    // A window that a script opens is needed by the script: it may wait for what happens there.
    if (!request.cause.isLink && m_policy.mayOpenWindow(request.address, request.cause)) {
        webkit_policy_decision_use(decision);
        return TRUE;
    }
    webkit_policy_decision_ignore(decision);
    const Verdict verdict = m_policy.decideNewWindow(request.address, request.cause);
    // One window per app: a link to the site opens in it.
    if (verdict == Verdict::Inside)
        m_loader.load(request.address);
    else
        leave(request.address, verdict);
    return TRUE;
}

gboolean NavigationGuard::decideResponse(WebKitPolicyDecision* decision) {
    auto* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
    const std::string address =
        orEmpty(webkit_uri_response_get_uri(webkit_response_policy_decision_get_response(response)));
    if (isDownload(response) && m_policy.mayDownload(address)) {
        webkit_policy_decision_download(decision);
        return TRUE;
    }
    if (!webkit_response_policy_decision_is_main_frame_main_resource(response))
        return FALSE;
    if (m_isStarting)
        m_policy.adopt(address);
    m_isStarting = false;
    const Verdict verdict = m_policy.decideMainResponse(address);
    if (verdict == Verdict::Inside)
        return FALSE;
    webkit_policy_decision_ignore(decision);
    leave(address, verdict);
    return TRUE;
}

void NavigationGuard::leave(const std::string& address, Verdict verdict) {
    if (verdict == Verdict::HandOff)
        m_handOff(address);
    else
        reportLine("“" + displayText(address, 200) + "” is not opened");
}

}  // namespace wrapio
