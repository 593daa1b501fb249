// What sites may need and this engine does not have; the person is told once, instead of wondering.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace wrapio {

enum class MissingAbility { Calls, ProtectedMedia, Push };

/// The ability that a page's script names ("calls", "drm", "push"), or nothing.
[[nodiscard]] std::optional<MissingAbility> missingAbilityOf(std::string_view text);

/// What to tell the person, in one or two sentences.
[[nodiscard]] std::string missingAbilityText(MissingAbility ability);

/// What the person was told already, kept in a small text file of the profile. A value.
class ToldAbilities {
public:
    static ToldAbilities parse(std::string_view text);
    [[nodiscard]] std::string text() const;

    /// True the first time.
    bool tell(MissingAbility ability) { return m_told.insert(ability).second; }

private:
    std::set<MissingAbility> m_told;
};

}  // namespace wrapio
