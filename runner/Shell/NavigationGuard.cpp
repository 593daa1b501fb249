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

}  // namespace

NavigationPolicy policyOf(const RunnerConfig& config) {
    std::vector<std::string> allowed;
    for (const std::string& host : config.allowedHosts)
        allowed.push_back(engineHost(host));
    return {engineHost(config.host), std::move(allowed), config.isDevMode};
}

NavigationGuard::NavigationGuard(WebKitWebView* view, NavigationPolicy policy, HandOff handOff)
    : m_view(view)
    , m_policy(std::move(policy))
    , m_handOff(std::move(handOff)) {
    g_signal_connect(view, "decide-policy", G_CALLBACK(&NavigationGuard::decidePolicy), this);
}

void NavigationGuard::loadStart(const std::string& address) {
    m_isStarting = true;
    webkit_web_view_load_uri(m_view, address.c_str());
}

bool NavigationGuard::loadRequested(const std::string& address) {
    if (m_policy.decideRequest(address) != Verdict::Inside)
        return false;
    m_isStarting = false;
    webkit_web_view_load_uri(m_view, address.c_str());
    return true;
}

gboolean NavigationGuard::decidePolicy(WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
                                       NavigationGuard* self) {
    switch (type) {
    case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION:
        return self->decideNavigation(decision, false);
    case WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION:
        return self->decideNavigation(decision, true);
    case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
        return self->decideResponse(decision);
    }
    return FALSE;
}

gboolean NavigationGuard::decideNavigation(WebKitPolicyDecision* decision, bool isNewWindow) {
    WebKitNavigationAction* action =
        webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    const std::string address = orEmpty(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
    const NavigationCause cause{webkit_navigation_action_get_navigation_type(action) ==
                                    WEBKIT_NAVIGATION_TYPE_LINK_CLICKED,
                                webkit_navigation_action_is_user_gesture(action) != FALSE};
    const Verdict verdict =
        isNewWindow ? m_policy.decideNewWindow(address, cause) : m_policy.decideNavigation(address, cause);
    if (verdict == Verdict::Inside && !isNewWindow)
        return FALSE;
    webkit_policy_decision_ignore(decision);
    // One window per app: what belongs to the site opens in it.
    if (verdict == Verdict::Inside)
        webkit_web_view_load_uri(m_view, address.c_str());
    else
        leave(address, verdict);
    return TRUE;
}

gboolean NavigationGuard::decideResponse(WebKitPolicyDecision* decision) {
    auto* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
    if (!webkit_response_policy_decision_is_main_frame_main_resource(response))
        return FALSE;
    const std::string address =
        orEmpty(webkit_uri_response_get_uri(webkit_response_policy_decision_get_response(response)));
    if (m_isStarting)
        m_policy.adopt(address);
    m_isStarting = false;
    const Verdict verdict = m_policy.decideMainResponse(address);
    if (verdict != Verdict::Inside) {
        webkit_policy_decision_ignore(decision);
        leave(address, verdict);
        return TRUE;
    }
    if (webkit_response_policy_decision_is_mime_type_supported(response))
        return FALSE;
    webkit_policy_decision_download(decision);
    return TRUE;
}

void NavigationGuard::leave(const std::string& address, Verdict verdict) {
    if (verdict == Verdict::HandOff)
        m_handOff(address);
    else
        reportLine("“" + displayText(address, 200) + "” is not opened");
}

}  // namespace wrapio
