#include "RunnerCore/StoredCookie.h"

#include "RunnerCore/HostName.h"

#include <array>
#include <charconv>
#include <optional>

namespace wrapio {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";
constexpr std::size_t mostCookies = 10'000;
constexpr std::size_t fieldCount = 8;

/// Without what separates fields and lines.
std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F && c != '%') {
            out += c;
            continue;
        }
        out += '%';
        out += digits[byte >> 4];
        out += digits[byte & 15];
    }
    return out;
}

std::string unescaped(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t high = text[i] == '%' && i + 2 < text.size() ? digits.find(text[i + 1]) : std::string::npos;
        const std::size_t low = high != std::string::npos ? digits.find(text[i + 2]) : std::string::npos;
        if (low == std::string::npos) {
            out += text[i];
            continue;
        }
        out += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return out;
}

std::optional<std::int64_t> numberOf(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && value >= 0;
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<StoredCookie> parseCookie(std::string_view line) {
    std::array<std::string_view, fieldCount> fields;
    std::size_t count = 0;
    for (; count < fieldCount; ++count) {
        const std::size_t end = std::min(line.find('\t'), line.size());
        fields.at(count) = line.substr(0, end);
        if (end == line.size()) {
            ++count;
            break;
        }
        line.remove_prefix(end + 1);
    }
    const auto expires = numberOf(fields[4]);
    const auto sameSite = numberOf(fields[7]);
    if (count != fieldCount || !expires || !sameSite || *sameSite > static_cast<int>(SameSite::Strict) ||
        fields[0].empty())
        return std::nullopt;
    return StoredCookie{
        unescaped(fields[0]), unescaped(fields[1]), unescaped(fields[2]), unescaped(fields[3]), *expires,
        fields[5] == "1",     fields[6] == "1",     SameSite(*sameSite)};
}

}  // namespace

std::string cookiesText(const std::vector<StoredCookie>& cookies) {
    std::string text;
    for (const StoredCookie& cookie : cookies) {
        for (const std::string& field : {cookie.domain, cookie.path, cookie.name, cookie.value})
            text += escaped(field) + "\t";
        text += std::to_string(cookie.expires) + (cookie.isSecure ? "\t1" : "\t0") +
                (cookie.isHttpOnly ? "\t1\t" : "\t0\t") + std::to_string(static_cast<int>(cookie.sameSite)) + "\n";
    }
    return text;
}

std::vector<StoredCookie> parseCookies(std::string_view text) {
    std::vector<StoredCookie> cookies;
    while (!text.empty() && cookies.size() < mostCookies) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (auto cookie = parseCookie(text.substr(0, end)))
            cookies.push_back(std::move(*cookie));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return cookies;
}

bool cookieBelongsTo(std::string_view domain, std::string_view site) {
    if (domain.starts_with('.'))
        domain.remove_prefix(1);
    return !site.empty() && isHostWithin(lowerCased(domain), lowerCased(site));
}

}  // namespace wrapio
