#include "RunnerCore/NavigationPolicy.h"

#include "RunnerCore/HostName.h"
#include "Utilities/AddressText.h"
#include "Utilities/HostRules.h"

#include <algorithm>
#include <array>
#include <optional>

namespace wrapio {

namespace {

/// Made and kept by the page itself; the engine guards them.
constexpr std::array<std::string_view, 4> pageSchemes{"about", "blob", "data", "javascript"};

std::string schemeOf(std::string_view address) {
    const std::size_t colon = address.find(':');
    return colon == std::string_view::npos ? std::string() : lowerCased(address.substr(0, colon));
}

bool isWebScheme(std::string_view scheme) {
    return scheme == "http" || scheme == "https";
}

bool isPageScheme(std::string_view scheme) {
    return std::find(pageSchemes.begin(), pageSchemes.end(), scheme) != pageSchemes.end();
}

/// Local files, and the schemes by which Wrapio's own programs are asked to do things: no page may use those.
bool isForbiddenScheme(std::string_view scheme) {
    return scheme.empty() || scheme == "file" || scheme.starts_with("wrapio-");
}

std::optional<std::string> hostOf(std::string_view address) {
    const auto parts = parseAddress(address);
    return parts && parts->host ? std::optional(lowerCased(*parts->host)) : std::nullopt;
}

}  // namespace

NavigationPolicy::NavigationPolicy(std::string siteHost, std::vector<std::string> allowedHosts, bool isDevMode)
    : m_siteHosts{std::move(siteHost)}
    , m_allowedHosts(std::move(allowedHosts))
    , m_isDevMode(isDevMode) {}

bool NavigationPolicy::belongs(std::string_view host) const {
    if (!m_isDevMode && isInternalHost(host))
        return false;
    if (m_isForEverySite)
        return true;
    const auto isSite = [host](const std::string& site) {
        // The last two numbers of two addresses say nothing about who owns them.
        return host == site || (!isNumericHost(host) && !isNumericHost(site) && sameRootDomain(host, site));
    };
    const auto isAllowed = [host](const std::string& allowed) { return isHostWithin(host, allowed); };
    return std::any_of(m_siteHosts.begin(), m_siteHosts.end(), isSite) ||
           std::any_of(m_allowedHosts.begin(), m_allowedHosts.end(), isAllowed);
}

Verdict NavigationPolicy::decideWebAddress(std::string_view address) const {
    const auto host = hostOf(address);
    if (!host)
        return Verdict::Refuse;
    return belongs(*host) ? Verdict::Inside : Verdict::HandOff;
}

Verdict NavigationPolicy::decideNavigation(std::string_view address, NavigationCause cause) const {
    const std::string scheme = schemeOf(address);
    if (isWebScheme(scheme))
        return cause.isLink ? decideWebAddress(address) : Verdict::Inside;
    if (isPageScheme(scheme))
        return Verdict::Inside;
    return cause.isDeliberate && !isForbiddenScheme(scheme) ? Verdict::HandOff : Verdict::Refuse;
}

Verdict NavigationPolicy::decideMainResponse(std::string_view address) const {
    const std::string scheme = schemeOf(address);
    if (isWebScheme(scheme))
        return decideWebAddress(address);
    return isPageScheme(scheme) ? Verdict::Inside : Verdict::Refuse;
}

Verdict NavigationPolicy::decideNewWindow(std::string_view address, NavigationCause cause) const {
    const std::string scheme = schemeOf(address);
    if (!cause.isDeliberate || isPageScheme(scheme))
        return Verdict::Refuse;
    return decideNavigation(address, {true, true});
}

bool NavigationPolicy::mayOpenWindow(std::string_view address, NavigationCause cause) const {
    const std::string scheme = schemeOf(address);
    return cause.isDeliberate && (address.empty() || scheme == "about" || isWebScheme(scheme));
}

bool NavigationPolicy::mayDownload(std::string_view address) const {
    const std::string scheme = schemeOf(address);
    if (!isWebScheme(scheme))
        return isPageScheme(scheme);
    const auto host = hostOf(address);
    return host && (m_isDevMode || !isInternalHost(*host));
}

NavigationPolicy NavigationPolicy::forEverySite() const {
    NavigationPolicy policy = *this;
    policy.m_isForEverySite = true;
    return policy;
}

Verdict NavigationPolicy::decideRequest(std::string_view address) const {
    if (!isWebScheme(schemeOf(address)))
        return Verdict::Refuse;
    return decideWebAddress(address) == Verdict::Inside ? Verdict::Inside : Verdict::Refuse;
}

void NavigationPolicy::adopt(std::string_view address) {
    const auto host = hostOf(address);
    if (host && (m_isDevMode || !isInternalHost(*host)))
        m_siteHosts.push_back(*host);
}

}  // namespace wrapio
