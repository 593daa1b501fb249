#include "Utilities/ApplicationIdentity.h"

#include <algorithm>

namespace wrapio {

namespace {

constexpr std::size_t longestName = 255;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isElementCharacter(char c) {
    const char l = lowered(c);
    return (l >= 'a' && l <= 'z') || isDigit(c) || c == '-' || c == '_';
}

}  // namespace

std::string desktopId(std::string_view bundleIdentifier) {
    std::string id;
    id.reserve(bundleIdentifier.size() + 4);
    bool elementStart = true;
    for (const char c : bundleIdentifier) {
        if (elementStart && isDigit(c))
            id += '_';
        id += c;
        elementStart = c == '.';
    }
    return id;
}

bool isValidDesktopId(std::string_view id) {
    if (id.empty() || id.size() > longestName)
        return false;
    std::size_t elements = 1;
    bool elementStart = true;
    for (const char c : id) {
        if (c == '.') {
            if (elementStart)
                return false;
            ++elements;
            elementStart = true;
            continue;
        }
        if (!isElementCharacter(c) || (elementStart && isDigit(c)))
            return false;
        elementStart = false;
    }
    return elements >= 2 && !elementStart;
}

std::string appUrlScheme(std::string_view canonicalId) {
    std::string scheme = "wrapio-";
    std::transform(canonicalId.begin(), canonicalId.end(), std::back_inserter(scheme), lowered);
    return scheme;
}

}  // namespace wrapio
