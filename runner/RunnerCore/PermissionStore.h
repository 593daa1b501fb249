// What the person has allowed and forbidden the sites that an app shows, kept in a small text file of the profile.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace wrapio {

enum class Permission { Location, Notifications, Camera, Microphone, Screen, Clipboard, PointerLock, SiteStorage };

/// What a page that has `permission` may do, as the end of a sentence ("use the camera").
[[nodiscard]] std::string permissionText(Permission permission);

/// The origin of a web address: scheme, host and port, lower-cased; nothing for other addresses.
[[nodiscard]] std::optional<std::string> originOf(std::string_view address);

/// A value; used on the main thread.
class PermissionStore {
public:
    struct Entry {
        std::string origin;
        Permission permission;
        bool isAllowed;
    };

    /// Reads what `text()` has written; lines that are not understood are left out.
    static PermissionStore parse(std::string_view text);
    [[nodiscard]] std::string text() const;

    /// The decision for all of `permissions`: allowed when each is, forbidden when one is, nothing when it must be
    /// asked.
    [[nodiscard]] std::optional<bool> decision(const std::string& origin,
                                               const std::vector<Permission>& permissions) const;

    void remember(const std::string& origin, const std::vector<Permission>& permissions, bool isAllowed);
    void forget(const std::string& origin, Permission permission);
    void clear() { m_decisions.clear(); }

    /// All decisions, by origin.
    [[nodiscard]] std::vector<Entry> entries() const;

private:
    std::map<std::pair<std::string, Permission>, bool> m_decisions;
};

}  // namespace wrapio
