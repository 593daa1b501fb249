#include "Views/Pages/NavigationRules.h"

#include "Utilities/HostRules.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

bool isSameSite(const QString& first, const QString& second) {
    return first == second || sameRootDomain(first, second);
}

}  // namespace

const QStringList& webSchemes() {
    static const QStringList schemes = {u"http"_s, u"https"_s};
    return schemes;
}

const QStringList& internalSchemes() {
    static const QStringList schemes = {u"http"_s, u"https"_s, u"about"_s, u"blob"_s, u"data"_s, u"javascript"_s};
    return schemes;
}

const QString& browserUserAgent() {
    static const QString userAgent =
        u"Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like Gecko) Chrome/120.0.0.0 "
        "Safari/537.36"_s;
    return userAgent;
}

bool sameRootDomain(const QString& first, const QString& second) {
    return sameRootDomain(std::string_view(first.toStdString()), std::string_view(second.toStdString()));
}

bool isExternalLink(const WebAddress& address, const std::optional<QString>& currentHost,
                    const std::optional<QString>& configuredHost) {
    const auto& target = address.host();
    if (!target)
        return false;
    if (currentHost && isSameSite(*target, *currentHost))
        return false;
    return !configuredHost || !isSameSite(*target, *configuredHost);
}

PlainNavigation plainNavigation(const WebAddress& address, const std::optional<QString>& siteHost) {
    const auto& scheme = address.scheme();
    if (scheme && !webSchemes().contains(scheme->toLower()))
        return PlainNavigation::handToSystem;
    const auto& target = address.host();
    if (!target)
        return siteHost ? PlainNavigation::leaveSite : PlainNavigation::allow;
    return siteHost && isSameSite(*target, *siteHost) ? PlainNavigation::allow : PlainNavigation::leaveSite;
}

}  // namespace wrapio
