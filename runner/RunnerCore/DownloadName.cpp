#include "RunnerCore/DownloadName.h"

#include "RunnerCore/DisplayText.h"
#include "Utilities/Utf8.h"

namespace wrapio {

namespace {

constexpr std::size_t longestSuggestion = 4096;  // characters
constexpr std::size_t longestName = 180;         // bytes
constexpr std::size_t longestExtension = 16;     // bytes, with the dot
constexpr std::string_view refused = "/\\:*?\"<>|";

std::size_t extensionBegin(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || name.size() - dot > longestExtension)
        return name.size();
    constexpr std::string_view archive = ".tar";
    const std::string_view stem = name.substr(0, dot);
    return stem.size() > archive.size() && stem.ends_with(archive) ? dot - archive.size() : dot;
}

/// At most `limit` bytes of `text`, whole characters.
std::string_view shortened(std::string_view text, std::size_t limit) {
    if (text.size() <= limit)
        return text;
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80)
        --limit;
    return text.substr(0, limit);
}

}  // namespace

std::string safeFileName(std::string_view suggested) {
    const std::size_t slash = suggested.find_last_of("/\\");
    if (slash != std::string_view::npos)
        suggested.remove_prefix(slash + 1);
    std::string name = displayText(suggested, longestSuggestion);
    for (char& c : name) {
        if (refused.find(c) != std::string_view::npos)
            c = '_';
    }
    // A leading dot would hide the file, one at the end is lost on other systems.
    name.erase(0, name.find_first_not_of(". "));
    name.erase(name.find_last_not_of(". ") + 1);
    const std::size_t dot = extensionBegin(name);
    const std::string extension = name.substr(dot);
    name = std::string(shortened(std::string_view(name).substr(0, dot), longestName - extension.size())) + extension;
    return name.empty() ? "download" : name;
}

std::string numberedName(std::string_view name, int number) {
    if (number < 2)
        return std::string(name);
    const std::size_t dot = extensionBegin(name);
    return std::string(name.substr(0, dot)) + " (" + std::to_string(number) + ")" + std::string(name.substr(dot));
}

}  // namespace wrapio
