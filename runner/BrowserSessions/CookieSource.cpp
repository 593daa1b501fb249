#include "BrowserSessions/CookieSource.h"

#include "RunnerCore/DisplayText.h"
#include "RunnerCore/HostName.h"

#include <algorithm>
#include <array>
#include <system_error>

namespace wrapio {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostProfiles = 20;
constexpr std::size_t longestName = 60;

struct ChromiumPlace {
    const char* folder;
    const char* name;
    const char* keyOwner;
};

constexpr std::array<const char*, 3> firefoxPlaces{".mozilla/firefox", "snap/firefox/common/.mozilla/firefox",
                                                   ".var/app/org.mozilla.firefox/.mozilla/firefox"};
constexpr std::array<ChromiumPlace, 2> chromiumPlaces{
    {{"chromium", "Chromium", "chromium"}, {"google-chrome", "Chrome", "chrome"}}};

bool isFile(const fs::path& path) {
    std::error_code failed;
    return fs::is_regular_file(path, failed);
}

std::vector<fs::path> foldersIn(const fs::path& folder) {
    std::vector<fs::path> found;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
        if (entry->is_directory(failed) && found.size() < mostProfiles)
            found.push_back(entry->path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string named(const std::string& browser, const fs::path& folder, bool isUsual) {
    return isUsual ? browser : browser + " (" + displayText(folder.filename().string(), longestName) + ")";
}

void addFirefox(const fs::path& place, std::vector<CookieSource>& sources) {
    for (const fs::path& profile : foldersIn(place)) {
        const std::string folder = profile.filename().string();
        const bool isUsual = folder.ends_with(".default") || folder.find(".default-release") != std::string::npos ||
                             folder.find(".default-esr") != std::string::npos;
        if (isFile(profile / "cookies.sqlite"))
            sources.push_back(
                {BrowserKind::Firefox, named("Firefox", profile, isUsual), profile / "cookies.sqlite", ""});
    }
}

void addChromium(const fs::path& configFolder, const ChromiumPlace& place, std::vector<CookieSource>& sources) {
    for (const fs::path& profile : foldersIn(configFolder / place.folder)) {
        // Newer versions keep it one folder deeper.
        for (const fs::path& database : {profile / "Network" / "Cookies", profile / "Cookies"}) {
            if (!isFile(database))
                continue;
            sources.push_back({BrowserKind::Chromium, named(place.name, profile, profile.filename() == "Default"),
                               database, place.keyOwner});
            break;
        }
    }
}

}  // namespace

std::vector<CookieSource> findCookieSources(const fs::path& home, const fs::path& configFolder) {
    std::vector<CookieSource> sources;
    for (const char* place : firefoxPlaces)
        addFirefox(home / place, sources);
    for (const ChromiumPlace& place : chromiumPlaces)
        addChromium(configFolder, place, sources);
    std::stable_partition(sources.begin(), sources.end(),
                          [](const CookieSource& source) { return source.name.find('(') == std::string::npos; });
    return sources;
}

std::vector<CookieSource> matchingSources(const std::vector<CookieSource>& sources, std::string_view wanted) {
    const std::string lower = lowerCased(wanted);
    std::vector<CookieSource> matching;
    std::copy_if(sources.begin(), sources.end(), std::back_inserter(matching), [&lower](const CookieSource& source) {
        return lowerCased(source.name).find(lower) != std::string::npos;
    });
    return matching;
}

}  // namespace wrapio
