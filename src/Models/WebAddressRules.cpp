// Which typed texts become a record's address.
#include "Models/ConfigurationManager.h"
#include "Platform/Diagnostics.h"
#include "Utilities/HostRules.h"
#include "Utilities/Utf8.h"

namespace wrapio {

using namespace Qt::StringLiterals;

std::optional<WebAddress> ConfigurationManager::normalizeURL(const QString& text, bool isDevMode) {
    const std::string utf8 = text.toStdString();
    const QString typed = QString::fromUtf8(trimmed(utf8));
    if (typed.isEmpty())
        return std::nullopt;
    const QString lower = typed.toLower();
    const bool hasScheme = lower.startsWith("http://"_L1) || lower.startsWith("https://"_L1);
    const QString scheme = isDevMode ? u"http://"_s : u"https://"_s;
    auto address = WebAddress::parse(hasScheme ? typed : scheme + typed);
    if (!address || !address->host())
        return std::nullopt;
    if (isDevMode)
        return address;
    const QString& host = *address->host();
    if (!host.contains(u'.'))
        return std::nullopt;
    if (isInternalHost(host.toStdString())) {
        printDiagnostics(u"⚠️ Blocked internal/private URL: "_s + host);
        return std::nullopt;
    }
    return address;
}

}  // namespace wrapio
