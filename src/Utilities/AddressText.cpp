#include "Utilities/AddressText.h"

#include "Utilities/CharacterClasses.h"
#include "Utilities/Utf8.h"

#include <algorithm>
#include <charconv>

namespace wrapio {

namespace {

constexpr int largestPort = 65535;

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes "scheme:" off the front of `text`, when there is one.
std::optional<std::string> takeScheme(std::string_view& text) {
    const std::size_t colon = text.find_first_of(":/?#");
    if (colon == std::string_view::npos || text[colon] != ':' || colon == 0 || !isLetter(text.front()))
        return std::nullopt;
    const std::string_view scheme = text.substr(0, colon);
    const bool valid = std::all_of(scheme.begin(), scheme.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
    });
    if (!valid)
        return std::nullopt;
    text.remove_prefix(colon + 1);
    return std::string(scheme);
}

/// Takes everything from the first `mark` on off the end of `text`.
std::optional<std::string> takeAfter(std::string_view& text, char mark) {
    const std::size_t at = text.find(mark);
    if (at == std::string_view::npos)
        return std::nullopt;
    std::string after(text.substr(at + 1));
    text = text.substr(0, at);
    return after;
}

bool holdsOnlyHostCharacters(std::string_view host) {
    constexpr std::string_view never = "<>\"{}|\\^`[]/?#@";
    while (!host.empty()) {
        const char first = host.front();
        const auto c = takeCodePoint(host);
        if (!c || isWhitespace(*c) || isControl(*c) || isNewline(*c) || never.find(first) != std::string_view::npos)
            return false;
    }
    return true;
}

bool readPort(std::string_view digits, AddressParts& parts) {
    if (digits.empty())
        return true;
    int port = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (error != std::errc() || end != digits.data() + digits.size() || port < 0 || port > largestPort)
        return false;
    parts.port = port;
    return true;
}

bool readAuthority(std::string_view authority, AddressParts& parts) {
    if (const std::size_t at = authority.rfind('@'); at != std::string_view::npos)
        authority.remove_prefix(at + 1);
    std::string_view host = authority;
    std::string_view port;
    bool literal = false;
    if (authority.starts_with('[')) {
        const std::size_t close = authority.find(']');
        if (close == std::string_view::npos)
            return false;
        host = authority.substr(1, close - 1);
        port = authority.substr(close + 1);
        if (!port.empty() && port.front() != ':')
            return false;
        literal = true;
    } else if (const std::size_t colon = authority.find(':'); colon != std::string_view::npos) {
        host = authority.substr(0, colon);
        port = authority.substr(colon);
    }
    if (!port.empty())
        port.remove_prefix(1);
    const bool valid = literal ? !host.empty() && host.find_first_not_of("0123456789abcdefABCDEF:.%-_~") ==
                                                      std::string_view::npos
                               : holdsOnlyHostCharacters(host);
    if (!valid || !readPort(port, parts))
        return false;
    if (!host.empty())
        parts.host = std::string(host);
    return true;
}

bool holdsNoControls(std::string_view text) {
    while (!text.empty()) {
        const auto c = takeCodePoint(text);
        if (!c || *c < 0x20 || *c == 0x7F)
            return false;
    }
    return true;
}

}  // namespace

std::optional<AddressParts> parseAddress(std::string_view text) {
    if (text.empty() || !holdsNoControls(text))
        return std::nullopt;
    AddressParts parts;
    parts.scheme = takeScheme(text);
    parts.fragment = takeAfter(text, '#');
    parts.query = takeAfter(text, '?');
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const std::size_t slash = std::min(text.find('/'), text.size());
        if (!readAuthority(text.substr(0, slash), parts))
            return std::nullopt;
        text.remove_prefix(slash);
    }
    parts.path = std::string(text);
    return parts;
}

}  // namespace wrapio
