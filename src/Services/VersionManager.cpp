#include "Services/VersionManager.h"

#include "Platform/Diagnostics.h"
#include "Platform/PropertyList.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <vector>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPropertyList = 16LL * 1024 * 1024;

std::optional<std::int64_t> integer(const QString& piece) {
    const std::string text = piece.toStdString();
    const char* begin = text.data();
    const char* const end = begin + text.size();
    if (end - begin > 1 && *begin == '+' && begin[1] != '-')
        ++begin;
    std::int64_t value = 0;
    const auto [rest, error] = std::from_chars(begin, end, value);
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

/// The numbers of a version. A piece that is none is dropped, so that those after it move up.
std::vector<std::int64_t> numbers(const QString& version) {
    std::vector<std::int64_t> result;
    for (const QString& piece : version.split(u'.', Qt::SkipEmptyParts)) {
        if (const auto number = integer(piece))
            result.push_back(*number);
    }
    return result;
}

}  // namespace

QString VersionManager::runnerTemplateVersion() const {
    const QString unknown = u"1.0.0"_s;
    const auto bundle = m_resources.path(u"WrapioRunner"_s, u"app"_s);
    if (!bundle) {
        printDiagnostics(u"⚠️ [VersionManager] Could not find WrapioRunner template to determine version"_s);
        return unknown;
    }
    const auto bytes = m_files.read(*bundle + u"/Contents/Info.plist"_s, largestPropertyList);
    const auto information = bytes ? PropertyList::parse(*bytes) : std::nullopt;
    const auto version = information ? information->text("CFBundleShortVersionString") : std::nullopt;
    return version.value_or(unknown);
}

bool VersionManager::isVersion(const QString& version, const QString& other) {
    auto mine = numbers(version);
    auto theirs = numbers(other);
    const std::size_t length = std::max(mine.size(), theirs.size());
    mine.resize(length, 0);
    theirs.resize(length, 0);
    return mine > theirs;
}

}  // namespace wrapio
