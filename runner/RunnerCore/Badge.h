// What an app's badge shows: the count in the page's title, or what the page has asked for by itself.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

struct Badge {
    std::optional<int> count;  ///< above zero when there is one
    bool isFlagged = false;    ///< something is new, without a number

    bool operator==(const Badge&) const = default;
};

/// A value; used on the main thread.
class BadgeState {
public:
    explicit BadgeState(bool isEnabled)
        : m_isEnabled(isEnabled) {}

    void setTitle(std::string_view pageTitle);

    /// `text` is what the page's script has sent: a number, "flag" or "clear". From then on the title no longer counts.
    void setByPage(std::string_view text);

    [[nodiscard]] Badge shown() const;

    /// `name` with the badge before it, for the window's title.
    [[nodiscard]] std::string titleOf(const std::string& name) const;

private:
    bool m_isEnabled;
    Badge m_ofTitle;
    std::optional<Badge> m_ofPage;
};

}  // namespace wrapio
