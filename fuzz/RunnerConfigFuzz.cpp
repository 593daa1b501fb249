// What reaches the runner from outside: the files of its bundle, addresses, and what pages and its own profile say.
#include "Property.h"
#include "RunnerCore/AppRequest.h"
#include "RunnerCore/Badge.h"
#include "RunnerCore/BundleError.h"
#include "RunnerCore/BundleInfo.h"
#include "RunnerCore/DisplayText.h"
#include "RunnerCore/DownloadName.h"
#include "RunnerCore/InjectedScripts.h"
#include "RunnerCore/NavigationPolicy.h"
#include "RunnerCore/PermissionStore.h"
#include "RunnerCore/RunnerConfig.h"
#include "RunnerCore/StoredCookie.h"
#include "RunnerCore/WindowState.h"
#include "Utilities/ApplicationIdentity.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace wrapio {

namespace {

constexpr std::string_view recordScheme = "wrapio-3f2a9c01-0000-4000-8000-0123456789ab";

bool isOneLine(std::string_view text) {
    return text.find_first_of(std::string_view("\n\r\0", 3)) == std::string_view::npos;
}

bool startsWithoutCase(std::string_view text, std::string_view start) {
    const auto isSame = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + ('a' - 'A') : a) == b; };
    return text.size() >= start.size() && std::equal(start.begin(), start.end(), text.begin(),
                                                     [&](char wanted, char found) { return isSame(found, wanted); });
}

bool isWeb(std::string_view address) {
    return startsWithoutCase(address, "http:") || startsWithoutCase(address, "https:");
}

void checkMessage(const BundleError& error) {
    const Message message = messageFor(error);
    require(!message.title.empty(), "what is wrong is said");
    require(isOneLine(oneLine(message)), "the terminal gets one line");
}

void feedShownText(std::string_view text) {
    const std::string shown = displayText(text, 80);
    require(isOneLine(shown), "what is shown stands on one line");
    require(displayText(shown, 81) == shown, "what is shown is clean");
    const std::string name = safeFileName(text);
    require(!name.empty() && name.front() != '.' && name.size() <= 200, "a file name is visible and not too long");
    require(isOneLine(name) && name.find_first_of("/\\") == std::string::npos, "a file name is no path");
    require(numberedName(name, 2) != name, "a number makes another name");
    const auto literal = nlohmann::ordered_json::parse(scriptLiteral(text), nullptr, false);
    require(literal.is_string(), "a script's literal is one value");
    BadgeState badge(true);
    badge.setTitle(text);
    badge.setByPage(text);
    require(badge.shown().count.value_or(1) > 0, "a count is above zero");
}

void feedProfile(std::string_view text) {
    const auto cookies = parseCookies(text);
    require(parseCookies(cookiesText(cookies)) == cookies, "cookies read as they were written");
    const std::string permissions = PermissionStore::parse(text).text();
    require(PermissionStore::parse(permissions).text() == permissions, "permissions read as they were written");
    const WindowState state = parseWindowState(text);
    require(parseWindowState(windowStateText(state)) == state, "a window's state reads as it was written");
    require(state.zoom > 0 && state.zoom <= 10 && state.width > 0 && state.height > 0, "a window can be used");
}

void feedAddress(std::string_view text, const NavigationPolicy& policy) {
    const auto request = parseAppRequest(text, recordScheme);
    if (!request)
        require(isOneLine(request.error()), "what is ignored is said on one line");
    else if (const auto* import = std::get_if<ImportSessionRequest>(&*request))
        require(isOneLine(import->source), "a source stands on one line");
    require(policy.decideRequest(text) != Verdict::HandOff, "nothing from outside is handed on");
    require(policy.decideRequest(text) != Verdict::Inside || isWeb(text), "only web addresses come from outside");
    const bool isOurs = startsWithoutCase(text, "file:") || startsWithoutCase(text, "wrapio-");
    for (const bool isLink : {false, true}) {
        require(!isOurs || policy.decideNavigation(text, {isLink, true}) == Verdict::Refuse, "files are never opened");
        require(isWeb(text) || policy.decideNavigation(text, {isLink, false}) != Verdict::HandOff,
                "no program starts without a click");
        require(policy.decideNewWindow(text, {isLink, false}) == Verdict::Refuse, "no window opens without a click");
    }
}

void feedConfig(std::string_view text) {
    const auto config = decodeConfig(text);
    if (!config)
        return checkMessage(config.error());
    require(isWeb(config->url) && !config->host.empty(), "an app shows a web address");
    require(!config->name.empty() && displayText(config->name, 201) == config->name, "a name can be shown");
    require(isOneLine(config->userAgent.value_or("")), "a header stays one header");
    require(config->theme.opacity >= 0 && config->theme.opacity <= 1, "an opacity is a share");
    require(config->customJs.find('\0') == std::string::npos, "a script reaches the engine whole");
    require(std::all_of(config->warnings.begin(), config->warnings.end(), isOneLine), "a warning is one line");
    const std::string style = themeStyleSheet(config->theme, {246, 245, 244, 1}, {53, 132, 228, 1});
    require(std::count(style.begin(), style.end(), '{') == std::count(style.begin(), style.end(), '}'),
            "a style sheet is whole");
    NavigationPolicy policy(config->host, config->allowedHosts, config->isDevMode);
    policy.adopt(config->url);
    feedAddress(config->url, policy);
}

void feedPlist(std::string_view bytes) {
    const auto info = decodeInfoPlist(bytes);
    if (!info)
        return checkMessage(info.error());
    require(isValidDesktopId(info->desktopId), "the desktop takes the identifier");
    require(info->recordId.size() == 36 && recordIdOfScheme(info->urlScheme) == info->recordId, "the app has a record");
}

/// Settings whose every text is `text`: noise alone seldom gets past the braces.
std::string settingsOf(std::string_view text) {
    nlohmann::ordered_json settings;
    for (const char* key : {"name", "userAgent", "customCSS", "customJS", "jsInjectionTime", "themeColor"})
        settings[key] = text;
    settings["url"] = "https://" + std::string(text);
    settings["allowedHosts"] = {text, text};
    return settings.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::ignore);
}

}  // namespace

}  // namespace wrapio

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace wrapio;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    feedConfig(text);
    feedConfig(settingsOf(text));
    feedPlist(text);
    const NavigationPolicy policy("www.example.com", {"login.example.org"}, false);
    feedAddress(text, policy);
    feedAddress(std::string(recordScheme) + "://import-session?" + std::string(text), policy);
    feedShownText(text);
    feedProfile(text);
    return 0;
}
