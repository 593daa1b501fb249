// Which pages stay inside a page view, and which go to the default browser.
#pragma once

#include "Models/WebAddress.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace wrapio {

/// The schemes that a plain page view shows, in lower case.
[[nodiscard]] const QStringList& webSchemes();
/// The schemes that stay inside the browser view, in lower case.
[[nodiscard]] const QStringList& internalSchemes();
/// What the browser view says it is: a common browser, so that sites show what they show there.
[[nodiscard]] const QString& browserUserAgent();

/// True when two hosts have the same last two labels; see the rule of that name in Utilities.
[[nodiscard]] bool sameRootDomain(const QString& first, const QString& second);

/// Whether `address` leaves the site: neither the host that is shown nor the configured one is its host or shares its
/// root domain. An address without a host never leaves.
[[nodiscard]] bool isExternalLink(const WebAddress& address, const std::optional<QString>& currentHost,
                                  const std::optional<QString>& configuredHost);

enum class PlainNavigation {
    allow,
    handToSystem,  ///< not a web address
    leaveSite,     ///< a web address of another site
};

/// What a plain page view does with `address`, whoever asks for it, when it shows the site of `siteHost`.
[[nodiscard]] PlainNavigation plainNavigation(const WebAddress& address, const std::optional<QString>& siteHost);

}  // namespace wrapio
