#include "RunnerCore/HostName.h"

#include "Utilities/AddressText.h"
#include "Utilities/Utf8.h"

#include <algorithm>

namespace wrapio {

namespace {

constexpr std::size_t longestHost = 253;
constexpr std::size_t longestEntry = 8192;

}  // namespace

std::string lowerCased(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

std::optional<std::string> hostOfEntry(std::string_view text) {
    text = trimmed(text);
    if (text.empty() || text.size() > longestEntry)
        return std::nullopt;
    const bool isAddress = text.find("://") != std::string_view::npos;
    if (!isAddress && text.starts_with("*."))
        text.remove_prefix(2);
    const auto parts = parseAddress(isAddress ? std::string(text) : "//" + std::string(text));
    if (!parts || !parts->host || parts->host->size() > longestHost)
        return std::nullopt;
    return lowerCased(*parts->host);
}

bool isNumericHost(std::string_view host) {
    return host.find(':') != std::string_view::npos || host.find_first_not_of("0123456789.") == std::string_view::npos;
}

bool isHostWithin(std::string_view host, std::string_view name) {
    if (host == name)
        return true;
    return name.find('.') != std::string_view::npos && !isNumericHost(name) && host.size() > name.size() &&
           host.ends_with(name) && host[host.size() - name.size() - 1] == '.';
}

}  // namespace wrapio
