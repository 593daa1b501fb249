#include "RunnerCore/MissingAbility.h"

#include <algorithm>
#include <array>

namespace wrapio {

namespace {

struct Name {
    MissingAbility ability;
    std::string_view key;
    std::string_view text;
};

constexpr std::array<Name, 3> names{{
    {MissingAbility::Calls, "calls", "Calls do not work in this app: its engine cannot make them."},
    {MissingAbility::ProtectedMedia, "drm",
     "Protected music and films do not play in this app: its engine has no DRM."},
    {MissingAbility::Push, "push",
     "This site cannot reach you while the app is closed: its engine has no push. Notifications come while the app "
     "runs."},
}};

const Name& nameOf(MissingAbility ability) {
    return *std::find_if(names.begin(), names.end(), [ability](const Name& name) { return name.ability == ability; });
}

}  // namespace

std::optional<MissingAbility> missingAbilityOf(std::string_view text) {
    const auto* found = std::find_if(names.begin(), names.end(), [text](const Name& name) { return name.key == text; });
    return found == names.end() ? std::nullopt : std::optional(found->ability);
}

std::string missingAbilityText(MissingAbility ability) {
    return std::string(nameOf(ability).text);
}

ToldAbilities ToldAbilities::parse(std::string_view text) {
    ToldAbilities told;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (const auto ability = missingAbilityOf(text.substr(0, end)))
            told.tell(*ability);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return told;
}

std::string ToldAbilities::text() const {
    std::string text;
    for (const MissingAbility ability : m_told)
        text += std::string(nameOf(ability).key) + "\n";
    return text;
}

}  // namespace wrapio
