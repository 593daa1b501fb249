#include "Platform/Linux/ZipNames.h"

#include "Utilities/Utf8.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t longestName = 4096;
constexpr std::size_t longestElement = 255;
constexpr std::size_t deepest = 64;

/// `name` as a message may show it.
QString shown(std::string_view name) {
    QString text = QString::fromUtf8(name.data(), static_cast<qsizetype>(std::min<std::size_t>(name.size(), 120)));
    for (QChar& c : text) {
        if (c < u' ' || c == QChar(0x7F))
            c = u'?';
    }
    return text;
}

auto refusal(std::string_view name, const QString& reason) {
    return toolFailure(u"the archive is refused: “%1” %2"_s.arg(shown(name), reason));
}

ToolOutcome<void> checkCharacters(std::string_view name) {
    for (std::string_view rest = name; !rest.empty();) {
        const auto c = takeCodePoint(rest);
        if (!c)
            return refusal(name, u"is no UTF-8"_s);
        if (*c < 0x20 || *c == 0x7F)
            return refusal(name, u"has a control character"_s);
        if (*c == U'\\')
            return refusal(name, u"has a backslash"_s);
    }
    return {};
}

ToolOutcome<void> append(ZipPath& path, std::string_view element, std::string_view name) {
    if (element == ".")
        return {};
    if (element.empty())
        return refusal(name, u"has an empty part"_s);
    if (element == "..")
        return refusal(name, u"leads out of the folder"_s);
    if (element.size() > longestElement || path.size() >= deepest)
        return refusal(name, u"is too long"_s);
    path.emplace_back(element);
    return {};
}

std::string folded(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
        .normalized(QString::NormalizationForm_C)
        .toCaseFolded()
        .toStdString();
}

}  // namespace

ToolOutcome<ZipPath> zipPath(std::string_view name) {
    if (name.empty())
        return refusal(name, u"is no name"_s);
    if (name.size() > longestName)
        return refusal(name, u"is too long"_s);
    if (const auto fine = checkCharacters(name); !fine)
        return tl::unexpected(fine.error());
    if (name.front() == '/')
        return refusal(name, u"is an absolute path"_s);
    ZipPath path;
    for (std::string_view rest = name; !rest.empty();) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        if (const auto appended = append(path, rest.substr(0, end), name); !appended)
            return tl::unexpected(appended.error());
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return path;
}

bool isPlatformExtra(const ZipPath& path) {
    return !path.empty() && (path.front() == "__MACOSX" || path.back().starts_with("._"));
}

ToolOutcome<void> ZipPathGuard::admit(const ZipPath& path, bool isFolder) {
    std::string spelling;
    for (std::size_t i = 0; i < path.size(); ++i) {
        spelling += (i == 0 ? "" : "/") + path[i];
        const bool isEntry = i + 1 == path.size();
        const Known seen{spelling, !isEntry || isFolder, isEntry};
        const auto [known, isNew] = m_known.try_emplace(folded(spelling), seen);
        if (isNew)
            continue;
        if (known->second.spelling != spelling || known->second.isFolder != seen.isFolder ||
            (isEntry && known->second.isEntry))
            return refusal(spelling, u"is there twice"_s);
        known->second.isEntry = known->second.isEntry || isEntry;
    }
    return {};
}

}  // namespace wrapio
