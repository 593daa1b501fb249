#include "Utilities/HostRules.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace wrapio {

namespace {

std::string lowerCased(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

std::optional<std::int64_t> readInteger(std::string_view piece) {
    if (piece.starts_with('+')) {
        piece.remove_prefix(1);
        if (piece.starts_with('-'))
            return std::nullopt;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), value);
    if (error != std::errc() || end != piece.data() + piece.size())
        return std::nullopt;
    return value;
}

std::vector<std::int64_t> integerLabels(std::string_view host) {
    std::vector<std::int64_t> numbers;
    for (std::size_t start = 0; start <= host.size();) {
        const std::size_t end = std::min(host.find('.', start), host.size());
        if (const auto number = readInteger(host.substr(start, end - start)))
            numbers.push_back(*number);
        start = end + 1;
    }
    return numbers;
}

bool isPrivateNetwork(std::string_view host) {
    const std::vector<std::int64_t> numbers = integerLabels(host);
    if (numbers.size() != 4)
        return false;
    const std::int64_t a = numbers[0];
    const std::int64_t b = numbers[1];
    return a == 10 || (a == 169 && b == 254) || (a == 172 && b >= 16 && b <= 31) || (a == 192 && b == 168);
}

/// The last two labels of a host, or nothing when it has fewer.
std::optional<std::string_view> rootDomain(std::string_view host) {
    const std::size_t last = host.rfind('.');
    if (last == std::string_view::npos)
        return std::nullopt;
    const std::size_t secondLast = last == 0 ? std::string_view::npos : host.rfind('.', last - 1);
    return secondLast == std::string_view::npos ? host : host.substr(secondLast + 1);
}

}  // namespace

bool isInternalHost(std::string_view host) {
    const std::string lower = lowerCased(host);
    if (lower == "localhost" || lower.starts_with("localhost.") || lower.ends_with(".localhost"))
        return true;
    if (lower.starts_with("127.") || lower == "::1" || lower == "[::1]")
        return true;
    return isPrivateNetwork(lower) || lower.ends_with(".local");
}

bool sameRootDomain(std::string_view first, std::string_view second) {
    const auto firstRoot = rootDomain(first);
    const auto secondRoot = rootDomain(second);
    return firstRoot && secondRoot && *firstRoot == *secondRoot;
}

}  // namespace wrapio
