#include "RunnerCore/PageTitle.h"

#include "Utilities/Utf8.h"

namespace wrapio {

namespace {

constexpr int largestCount = 9'999'999;

struct Count {
    int value = 0;
    bool hasSeparator = false;
    std::size_t digits = 0;
};

/// Reads "1,234+" up to `close`.
std::optional<Count> readCount(std::string_view text, char close) {
    Count count;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9') {
            count.value = count.value * 10 + (c - '0');
            ++count.digits;
            if (count.value > largestCount)
                return std::nullopt;
        } else if ((c == ',' || c == '.') && count.digits > 0) {
            count.hasSeparator = true;
        } else {
            const bool isPlus = c == '+' && i + 1 < text.size();
            const bool isEnd = (isPlus ? text[i + 1] : c) == close;
            return isEnd && count.digits > 0 ? std::optional(count) : std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<int> unreadCountOfTitle(std::string_view title) {
    title = trimmed(title);
    for (std::size_t at = title.find_first_of("(["); at != std::string_view::npos;
         at = title.find_first_of("([", at + 1)) {
        const auto count = readCount(title.substr(at + 1), title[at] == '(' ? ')' : ']');
        const bool mayBeYear = at != 0 && count && count->digits > 3 && !count->hasSeparator;
        if (count && !mayBeYear)
            return count->value;
    }
    return std::nullopt;
}

}  // namespace wrapio
