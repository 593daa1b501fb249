// Applies the navigation policy to a web view.
#pragma once

#include "RunnerCore/NavigationPolicy.h"
#include "RunnerCore/RunnerConfig.h"
#include "Shell/PageLoader.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace wrapio {

/// The policy of the app that `config` describes, with hosts in the form that the engine uses.
[[nodiscard]] NavigationPolicy policyOf(const RunnerConfig& config);

/// Lives on the main thread, no longer than the loader.
class NavigationGuard {
public:
    using HandOff = std::function<void(const std::string& address)>;
    using PopupMaker = std::function<WebKitWebView*()>;

    /// `handOff` gets each address that leaves the app; `makePopup` makes the view for a window that a page opens.
    NavigationGuard(PageLoader& loader, NavigationPolicy policy, HandOff handOff, PopupMaker makePopup);
    ~NavigationGuard();
    NavigationGuard(const NavigationGuard&) = delete;
    NavigationGuard& operator=(const NavigationGuard&) = delete;

    /// Loads the app's own address; where that redirects to becomes part of the site.
    void loadStart(const std::string& address);

    /// Loads an address from outside, which the policy has allowed.
    void loadRequested(const std::string& address);

    /// Lets the view show pages of any site.
    void openToEverySite() { m_policy = m_policy.forEverySite(); }

    /// What judges the addresses at present.
    [[nodiscard]] const NavigationPolicy& policy() const { return m_policy; }

private:
    static gboolean decidePolicy(WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
                                 NavigationGuard* self);
    [[nodiscard]] gboolean decideNavigation(WebKitPolicyDecision* decision);
    [[nodiscard]] gboolean decideNewWindow(WebKitPolicyDecision* decision);
    [[nodiscard]] gboolean decideResponse(WebKitPolicyDecision* decision);
    void leave(const std::string& address, Verdict verdict);

    PageLoader& m_loader;
    WebKitWebView* m_view;
    NavigationPolicy m_policy;
    HandOff m_handOff;
    PopupMaker m_makePopup;
    bool m_isStarting = false;
};

}  // namespace wrapio
