#include "Utilities/QueryItems.h"

#include "Utilities/Utf8.h"

#include <algorithm>
#include <charconv>

namespace wrapio {

namespace {

constexpr std::size_t escapeLength = 3;

std::optional<char> decodedByte(std::string_view escape) {
    unsigned char byte = 0;
    const char* const end = escape.data() + escape.size();
    const auto [stopped, error] = std::from_chars(escape.data() + 1, end, byte, 16);
    if (escape.size() != escapeLength || error != std::errc() || stopped != end)
        return std::nullopt;
    return static_cast<char>(byte);
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        if (!takeCodePoint(text))
            return false;
    }
    return true;
}

std::optional<QueryItem> readItem(std::string_view text) {
    const std::size_t equals = text.find('=');
    auto name = percentDecoded(text.substr(0, equals));
    if (!name)
        return std::nullopt;
    if (equals == std::string_view::npos)
        return QueryItem{std::move(*name), std::nullopt};
    return QueryItem{std::move(*name), percentDecoded(text.substr(equals + 1))};
}

}  // namespace

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    while (!text.empty()) {
        if (text.front() != '%') {
            decoded.push_back(text.front());
            text.remove_prefix(1);
            continue;
        }
        const auto byte = decodedByte(text.substr(0, escapeLength));
        if (!byte)
            return std::nullopt;
        decoded.push_back(*byte);
        text.remove_prefix(escapeLength);
    }
    return isUtf8(decoded) ? std::optional(std::move(decoded)) : std::nullopt;
}

std::vector<QueryItem> queryItems(std::string_view query) {
    std::vector<QueryItem> items;
    while (true) {
        const std::size_t ampersand = query.find('&');
        if (auto item = readItem(query.substr(0, ampersand)))
            items.push_back(std::move(*item));
        if (ampersand == std::string_view::npos)
            return items;
        query.remove_prefix(ampersand + 1);
    }
}

std::optional<std::string> firstValue(const std::vector<QueryItem>& items, std::string_view name) {
    const auto found =
        std::find_if(items.begin(), items.end(), [name](const QueryItem& item) { return item.name == name; });
    return found == items.end() ? std::nullopt : found->value;
}

}  // namespace wrapio
