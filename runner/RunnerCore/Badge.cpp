#include "RunnerCore/Badge.h"

#include "RunnerCore/PageTitle.h"

#include <charconv>

namespace wrapio {

namespace {

constexpr int largestCount = 9'999'999;

Badge countBadge(std::optional<int> count) {
    return {count.value_or(0) > 0 ? count : std::nullopt, false};
}

}  // namespace

void BadgeState::setTitle(std::string_view pageTitle) {
    m_ofTitle = countBadge(unreadCountOfTitle(pageTitle));
}

void BadgeState::setByPage(std::string_view text) {
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (text == "flag")
        m_ofPage = Badge{std::nullopt, true};
    else if (text == "clear")
        m_ofPage = Badge{};
    else if (error == std::errc() && end == text.data() + text.size() && count >= 0)
        m_ofPage = countBadge(std::min(count, largestCount));
}

Badge BadgeState::shown() const {
    return m_isEnabled ? m_ofPage.value_or(m_ofTitle) : Badge{};
}

std::string BadgeState::titleOf(const std::string& name) const {
    const Badge badge = shown();
    if (badge.count)
        return "(" + std::to_string(*badge.count) + ") " + name;
    return badge.isFlagged ? "• " + name : name;
}

}  // namespace wrapio
