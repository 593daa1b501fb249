#include "RunnerCore/PermissionStore.h"

#include "RunnerCore/HostName.h"
#include "Utilities/AddressText.h"

#include <algorithm>
#include <array>

namespace wrapio {

namespace {

constexpr std::size_t mostDecisions = 1000;
constexpr std::size_t longestOrigin = 300;

struct Name {
    Permission permission;
    std::string_view key;
    std::string_view sentence;
};

constexpr std::array<Name, 8> names{{
    {Permission::Location, "location", "know where you are"},
    {Permission::Notifications, "notifications", "show notifications"},
    {Permission::Camera, "camera", "use the camera"},
    {Permission::Microphone, "microphone", "use the microphone"},
    {Permission::Screen, "screen", "see the screen"},
    {Permission::Clipboard, "clipboard", "read the clipboard"},
    {Permission::PointerLock, "pointer-lock", "catch the mouse pointer"},
    {Permission::SiteStorage, "site-storage", "use its stored data inside other sites"},
}};

const Name& nameOf(Permission permission) {
    return *std::find_if(names.begin(), names.end(),
                         [permission](const Name& name) { return name.permission == permission; });
}

std::string_view takeUntil(std::string_view& text, char end) {
    const std::size_t size = std::min(text.find(end), text.size());
    const std::string_view taken = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    return taken;
}

}  // namespace

std::string permissionText(Permission permission) {
    return std::string(nameOf(permission).sentence);
}

std::optional<std::string> originOf(std::string_view address) {
    const auto parts = parseAddress(address);
    if (!parts || !parts->scheme || !parts->host)
        return std::nullopt;
    const std::string scheme = lowerCased(*parts->scheme);
    const std::string host = lowerCased(*parts->host);
    if ((scheme != "http" && scheme != "https") || host.size() > longestOrigin)
        return std::nullopt;
    const bool isNumber6 = host.find(':') != std::string::npos;
    return scheme + "://" + (isNumber6 ? "[" + host + "]" : host) +
           (parts->port ? ":" + std::to_string(*parts->port) : "");
}

PermissionStore PermissionStore::parse(std::string_view text) {
    PermissionStore store;
    while (!text.empty() && store.m_decisions.size() < mostDecisions) {
        std::string_view line = takeUntil(text, '\n');
        const std::string_view origin = takeUntil(line, '\t');
        const std::string_view key = takeUntil(line, '\t');
        const auto* name = std::find_if(names.begin(), names.end(), [key](const Name& n) { return n.key == key; });
        const bool isKnown = name != names.end() && originOf(origin) == origin && (line == "allow" || line == "deny");
        if (isKnown)
            store.m_decisions[{std::string(origin), name->permission}] = line == "allow";
    }
    return store;
}

std::string PermissionStore::text() const {
    std::string text;
    for (const auto& [key, isAllowed] : m_decisions)
        text += key.first + "\t" + std::string(nameOf(key.second).key) + "\t" + (isAllowed ? "allow" : "deny") + "\n";
    return text;
}

std::optional<bool> PermissionStore::decision(const std::string& origin,
                                              const std::vector<Permission>& permissions) const {
    bool areAllKnown = true;
    for (const Permission permission : permissions) {
        const auto found = m_decisions.find({origin, permission});
        if (found == m_decisions.end())
            areAllKnown = false;
        else if (!found->second)
            return false;
    }
    return areAllKnown ? std::optional(true) : std::nullopt;
}

void PermissionStore::remember(const std::string& origin, const std::vector<Permission>& permissions, bool isAllowed) {
    for (const Permission permission : permissions) {
        if (m_decisions.size() < mostDecisions)
            m_decisions[{origin, permission}] = isAllowed;
    }
}

void PermissionStore::forget(const std::string& origin, Permission permission) {
    m_decisions.erase({origin, permission});
}

std::vector<PermissionStore::Entry> PermissionStore::entries() const {
    std::vector<Entry> entries;
    for (const auto& [key, isAllowed] : m_decisions)
        entries.push_back({key.first, key.second, isAllowed});
    return entries;
}

}  // namespace wrapio
