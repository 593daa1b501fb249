#include "RunnerCore/BundleInfo.h"

#include "RunnerCore/HostName.h"
#include "Utilities/ApplicationIdentity.h"

#include <plist/plist.h>

#include <algorithm>
#include <memory>

namespace wrapio {

namespace {

/// Trees are freed and binary lists are read by recursion, so what could nest too deeply is not given to the library.
constexpr int deepestNesting = 64;
constexpr std::size_t largestBinary = std::size_t{16} * 1024;

struct FreePlist {
    void operator()(void* node) const { plist_free(node); }
};
using PlistPtr = std::unique_ptr<void, FreePlist>;

bool isBinary(std::string_view bytes) {
    return bytes.starts_with("bplist");
}

bool nestsTooDeeply(std::string_view xml) {
    int depth = 0;
    for (std::size_t at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1)) {
        const std::string_view tag = xml.substr(at, 8);
        if (tag.starts_with("<array") || tag.starts_with("<dict"))
            ++depth;
        else if (tag.starts_with("</array") || tag.starts_with("</dict"))
            --depth;
        if (depth > deepestNesting)
            return true;
    }
    return false;
}

PlistPtr parse(std::string_view bytes) {
    plist_t root = nullptr;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    if (isBinary(bytes))
        plist_from_bin(bytes.data(), size, &root);
    else
        plist_from_xml(bytes.data(), size, &root);
    return PlistPtr(root);
}

bool isOfType(plist_t node, plist_type type) {
    return node != nullptr && plist_get_node_type(node) == type;
}

plist_t member(plist_t dictionary, const char* key) {
    return isOfType(dictionary, PLIST_DICT) ? plist_dict_get_item(dictionary, key) : nullptr;
}

std::string textOf(plist_t node) {
    if (!isOfType(node, PLIST_STRING))
        return {};
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string() : std::string(text, static_cast<std::size_t>(length));
}

/// The first URL scheme of the list that names a record.
std::string findScheme(plist_t types) {
    const std::uint32_t count = isOfType(types, PLIST_ARRAY) ? plist_array_get_size(types) : 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        plist_t schemes = member(plist_array_get_item(types, i), "CFBundleURLSchemes");
        const std::uint32_t size = isOfType(schemes, PLIST_ARRAY) ? plist_array_get_size(schemes) : 0;
        for (std::uint32_t j = 0; j < size; ++j) {
            std::string scheme = lowerCased(textOf(plist_array_get_item(schemes, j)));
            if (recordIdOfScheme(scheme))
                return scheme;
        }
    }
    return {};
}

tl::unexpected<BundleError> malformed(std::string reason) {
    return tl::unexpected<BundleError>(InfoPlistMalformed{std::move(reason)});
}

}  // namespace

std::optional<std::string> recordIdOfScheme(std::string_view scheme) {
    constexpr std::string_view prefix = "wrapio-";
    constexpr std::string_view pattern = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    if (!scheme.starts_with(prefix) || scheme.size() != prefix.size() + pattern.size())
        return std::nullopt;
    std::string id(scheme.substr(prefix.size()));
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool isHex = std::string_view("0123456789abcdefABCDEF").find(id[i]) != std::string_view::npos;
        if (pattern[i] == '-' ? id[i] != '-' : !isHex)
            return std::nullopt;
        if (id[i] >= 'a')
            id[i] = static_cast<char>(id[i] - 'a' + 'A');
    }
    return id;
}

tl::expected<BundleInfo, BundleError> decodeInfoPlist(std::string_view bytes) {
    if (isBinary(bytes) ? bytes.size() > largestBinary : nestsTooDeeply(bytes))
        return malformed("its values are nested too deeply");
    if (bytes.size() > largestInfoPlist)
        return malformed("it is too large");
    const PlistPtr root = parse(bytes);
    if (!isOfType(root.get(), PLIST_DICT))
        return malformed("it is not a property list");
    BundleInfo info;
    info.desktopId = desktopId(textOf(member(root.get(), "CFBundleIdentifier")));
    if (!isValidDesktopId(info.desktopId))
        return malformed("its bundle identifier is missing or not valid");
    info.urlScheme = findScheme(member(root.get(), "CFBundleURLTypes"));
    const auto record = recordIdOfScheme(info.urlScheme);
    if (!record)
        return malformed("it does not say which Wrapio app this is");
    info.recordId = *record;
    info.version = textOf(member(root.get(), "CFBundleShortVersionString"));
    return info;
}

}  // namespace wrapio
