#include "Utilities/BundleNames.h"

#include "Utilities/StringSanitizer.h"

namespace wrapio {

namespace {

constexpr std::string_view separators = "/\\?%*|\"<>:";
constexpr std::string_view extension = ".app";
constexpr std::size_t longestFileName = 255;
constexpr std::size_t longestName = longestFileName - extension.size();

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::string withExtension(std::string name) {
    name += extension;
    return name;
}

}  // namespace

std::string launchedBundleName(std::string_view displayName) {
    std::string name(displayName);
    for (char& c : name) {
        if (separators.find(c) != std::string_view::npos)
            c = '_';
    }
    return withExtension(std::move(name));
}

std::string cataloguedBundleName(std::string_view displayName) {
    return withExtension(StringSanitizer::sanitizeForFilename(displayName, false));
}

std::string generatedBundleName(std::string_view displayName) {
    const std::string name = safeDisplayName(displayName);
    return name.empty() ? std::string() : withExtension(name);
}

bool bundleNamesAgree(std::string_view displayName) {
    const std::string generated = generatedBundleName(displayName);
    return !generated.empty() && generated == launchedBundleName(displayName) &&
           generated == cataloguedBundleName(displayName);
}

bool bundleNameFits(std::string_view displayName) {
    return displayName.size() <= longestName;
}

std::string fittingDisplayName(std::string_view displayName) {
    if (bundleNameFits(displayName))
        return std::string(displayName);
    std::size_t length = longestName;
    while (length > 0 && continuesCharacter(displayName[length]))
        --length;
    return safeDisplayName(displayName.substr(0, length));
}

std::string safeDisplayName(std::string_view displayName) {
    return StringSanitizer::sanitizeForFilename(displayName, true);
}

}  // namespace wrapio
