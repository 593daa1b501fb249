#include "Platform/Linux/LinuxDirectories.h"

#include <QDir>
#include <QFile>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> environmentVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? std::optional(QFile::decodeName(value)) : std::nullopt;
}

std::optional<QString> homeOfAccount() {
    constexpr std::size_t roomForEntry = 16384;
    std::vector<char> text(roomForEntry);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, text.data(), text.size(), &found) != 0 || !found || !found->pw_dir)
        return std::nullopt;
    return QFile::decodeName(found->pw_dir);
}

/// Absolute, and more than the root: that is what accounts without a home folder have.
std::optional<QString> folder(const std::optional<QString>& path) {
    if (!path || !path->startsWith(u'/'))
        return std::nullopt;
    const QString clean = QDir::cleanPath(*path);
    return clean == u"/" ? std::nullopt : std::optional(clean);
}

}  // namespace

UserSurroundings currentSurroundings() {
    return {&environmentVariable, homeOfAccount()};
}

std::optional<Directories> linuxDirectories(const UserSurroundings& surroundings) {
    auto home = folder(surroundings.variable("HOME"));
    if (!home)
        home = folder(surroundings.accountHome);
    if (!home)
        return std::nullopt;
    const auto inHome = [&](const char* variable, const QString& fallback) {
        return folder(surroundings.variable(variable)).value_or(*home + fallback);
    };
    Directories directories;
    directories.home = *home;
    directories.applicationSupport = inHome("XDG_DATA_HOME", u"/.local/share"_s);
    directories.caches = inHome("XDG_CACHE_HOME", u"/.cache"_s);
    directories.configuration = inHome("XDG_CONFIG_HOME", u"/.config"_s) + u"/Wrapio"_s;
    directories.temporary = folder(surroundings.variable("TMPDIR")).value_or(u"/tmp"_s);
    return directories;
}

}  // namespace wrapio
