#include "RunnerCore/AppRequest.h"

#include "RunnerCore/DisplayText.h"
#include "RunnerCore/HostName.h"
#include "Utilities/AddressText.h"

namespace wrapio {

namespace {

constexpr std::size_t longestRequest = 8192;
constexpr std::size_t longestSource = 100;

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
        if (low < 0) {
            decoded += text[i];
            continue;
        }
        decoded += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return decoded;
}

/// The value of the first query item called `name`, decoded.
std::string queryItem(std::string_view query, std::string_view name) {
    while (!query.empty()) {
        const std::size_t end = std::min(query.find('&'), query.size());
        const std::string_view item = query.substr(0, end);
        const std::size_t equals = std::min(item.find('='), item.size());
        if (percentDecoded(item.substr(0, equals)) == name)
            return percentDecoded(item.substr(std::min(equals + 1, item.size())));
        query.remove_prefix(std::min(end + 1, query.size()));
    }
    return {};
}

tl::unexpected<std::string> ignored(std::string_view text, std::string_view reason) {
    return tl::unexpected("“" + displayText(text, 200) + "” is ignored: " + std::string(reason));
}

}  // namespace

tl::expected<AppRequest, std::string> parseAppRequest(std::string_view text, std::string_view scheme) {
    if (text.size() > longestRequest)
        return ignored(text, "it is too long");
    const auto parts = parseAddress(text);
    if (!parts || !parts->scheme)
        return ignored(text, "it is not an address");
    const std::string itsScheme = lowerCased(*parts->scheme);
    if (itsScheme == "http" || itsScheme == "https")
        return AddressRequest{std::string(text)};
    if (itsScheme != lowerCased(scheme))
        return ignored(text, "this app does not open addresses of its kind");
    if (lowerCased(parts->host.value_or("")) != "import-session" || (parts->path != "" && parts->path != "/"))
        return ignored(text, "this app does not know that request");
    return ImportSessionRequest{displayText(queryItem(parts->query.value_or(""), "source"), longestSource)};
}

}  // namespace wrapio
