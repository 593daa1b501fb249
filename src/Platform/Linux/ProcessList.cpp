#include "Platform/Linux/ProcessList.h"

#include "Platform/Linux/FileCalls.h"

#include <QByteArrayView>
#include <QFile>

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <tuple>

namespace wrapio {

namespace {

constexpr QByteArrayView insideBundle = ".app/Contents/Linux/";
constexpr qsizetype suffixLength = 4;

/// Nothing for processes of others, which may not be looked into, and for those that have ended, which have no program.
std::optional<QString> bundleOf(int processes, const char* process) {
    std::array<char, 32> link{};
    std::snprintf(link.data(), link.size(), "%s/exe", process);
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlinkat(processes, link.data(), target.data(), target.size());
    if (length <= 0)
        return std::nullopt;
    // A program that was removed ends in " (deleted)", behind what matters here.
    const QByteArrayView program(target.data(), length);
    const qsizetype found = program.lastIndexOf(insideBundle);
    if (!program.startsWith('/') || found < 0)
        return std::nullopt;
    struct stat status {};
    if (::fstatat(processes, process, &status, 0) != 0 || status.st_uid != ::geteuid())
        return std::nullopt;
    return QFile::decodeName(program.first(found + suffixLength).toByteArray());
}

/// The 22nd field of the process's stat. The second one is in parentheses and may hold anything, parentheses too.
std::optional<std::uint64_t> startTicks(int processes, const char* process) {
    const auto file = posix::openAt(processes, (std::string(process) + "/stat").c_str(), O_RDONLY);
    std::array<char, 1024> text{};
    if (!file.isOpen() || posix::retrying([&] { return ::read(file.get(), text.data(), text.size() - 1); }) <= 0)
        return std::nullopt;
    const char* field = std::strrchr(text.data(), ')');
    constexpr int fieldsToSkip = 20;
    for (int i = 0; i < fieldsToSkip && field; ++i)
        field = std::strchr(field + 1, ' ');
    return field ? std::optional<std::uint64_t>(std::strtoull(field + 1, nullptr, 10)) : std::nullopt;
}

std::optional<BundleProcess> examine(int processes, const char* name) {
    if (name[0] < '1' || name[0] > '9')
        return std::nullopt;
    const auto bundle = bundleOf(processes, name);
    const auto ticks = bundle ? startTicks(processes, name) : std::nullopt;
    if (!ticks)
        return std::nullopt;
    return BundleProcess{std::strtoll(name, nullptr, 10), *bundle, *ticks};
}

}  // namespace

std::vector<BundleProcess> bundleProcesses() {
    std::vector<BundleProcess> found;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir("/proc"), &::closedir);
    if (!folder)
        return found;
    while (const dirent* const entry = ::readdir(folder.get())) {
        if (auto process = examine(::dirfd(folder.get()), entry->d_name))
            found.push_back(std::move(*process));
    }
    std::sort(found.begin(), found.end(), [](const BundleProcess& a, const BundleProcess& b) {
        return std::tie(a.startTicks, a.processIdentifier) < std::tie(b.startTicks, b.processIdentifier);
    });
    return found;
}

std::optional<QString> bundleOfProcess(qint64 processIdentifier) {
    const auto folder = posix::openAt(AT_FDCWD, "/proc", O_RDONLY | O_DIRECTORY);
    if (processIdentifier <= 0 || !folder.isOpen())
        return std::nullopt;
    return bundleOf(folder.get(), std::to_string(processIdentifier).c_str());
}

}  // namespace wrapio
