#include "RunnerCore/RunnerConfig.h"

#include "RunnerCore/ConfigReader.h"
#include "RunnerCore/DisplayText.h"
#include "RunnerCore/HostName.h"
#include "Utilities/AddressText.h"
#include "Utilities/HostRules.h"
#include "Utilities/Utf8.h"

#include <algorithm>
#include <cmath>

namespace wrapio {

namespace {

constexpr std::size_t longestAddress = 8192;
constexpr std::size_t longestName = 200;
constexpr std::size_t longestUserAgent = 2048;
constexpr std::size_t mostHosts = 1000;

/// Hands out the values by key and kind, and notes what had to be left out.
class Values {
public:
    Values(ConfigValues values, std::vector<std::string>& warnings)
        : m_values(std::move(values))
        , m_warnings(warnings) {}

    template <typename Value>
    std::optional<Value> take(std::string_view key) {
        const auto found = m_values.find(key);
        if (found == m_values.end())
            return std::nullopt;
        if (auto* value = std::get_if<Value>(&found->second))
            return std::move(*value);
        ignore(key, "it has the wrong type");
        return std::nullopt;
    }

    void ignore(std::string_view key, std::string_view reason) {
        m_warnings.push_back("config.json: \"" + std::string(key) + "\" is ignored: " + std::string(reason));
    }

private:
    ConfigValues m_values;
    std::vector<std::string>& m_warnings;
};

bool isPrintableAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

std::string withoutNul(std::string text) {
    std::erase(text, '\0');
    return text;
}

void readUserAgent(Values& values, RunnerConfig& config) {
    auto agent = values.take<std::string>("userAgent");
    if (!agent || agent->empty())
        return;
    // A line break in it would let the file add headers of its own to every request.
    if (agent->size() > longestUserAgent || !isPrintableAscii(*agent))
        values.ignore("userAgent", "it is too long or holds characters that a header must not hold");
    else
        config.userAgent = std::move(agent);
}

void readAllowedHosts(Values& values, RunnerConfig& config) {
    const auto entries = values.take<std::vector<std::string>>("allowedHosts").value_or(std::vector<std::string>());
    for (const std::string& entry : entries) {
        const auto host = hostOfEntry(entry);
        if (host && config.allowedHosts.size() < mostHosts)
            config.allowedHosts.push_back(*host);
        else
            values.ignore("allowedHosts", "“" + displayText(entry, 80) + "” is no host name or one too many");
    }
}

void readTheme(Values& values, Theme& theme) {
    if (const auto text = values.take<std::string>("themeColor"); text && !text->empty()) {
        theme.color = parseHexColor(*text);
        if (!theme.color)
            values.ignore("themeColor", "“" + displayText(*text, 40) + "” is no colour");
    }
    const double opacity = values.take<double>("themeOpacity").value_or(1.0);
    theme.opacity = std::isfinite(opacity) ? std::clamp(opacity, 0.0, 1.0) : 1.0;
    theme.hasBorder = values.take<bool>("themeBorderEnabled").value_or(false);
}

void readScripts(Values& values, RunnerConfig& config) {
    config.customCss = withoutNul(values.take<std::string>("customCSS").value_or(""));
    config.customJs = withoutNul(values.take<std::string>("customJS").value_or(""));
    const auto time = values.take<std::string>("jsInjectionTime").value_or("documentEnd");
    if (time == "documentStart")
        config.scriptTime = ScriptTime::DocumentStart;
    else if (time != "documentEnd")
        values.ignore("jsInjectionTime", "“" + displayText(time, 40) + "” is no time that is known");
}

/// Sets `url` and `host`, or says why the address cannot be shown.
std::optional<std::string> readAddress(const std::string& text, RunnerConfig& config) {
    const std::string_view address = trimmed(text);
    if (address.size() > longestAddress)
        return "is too long";
    const auto parts = parseAddress(address);
    if (!parts)
        return "is not a web address";
    const std::string scheme = lowerCased(parts->scheme.value_or(""));
    if (scheme != "http" && scheme != "https")
        return "does not begin with http:// or https://";
    if (!parts->host)
        return "names no host";
    if (!config.isDevMode && isInternalHost(*parts->host))
        return "is on this machine or in a private network, which only developer mode allows";
    config.url = std::string(address);
    config.host = lowerCased(*parts->host);
    return std::nullopt;
}

}  // namespace

tl::expected<RunnerConfig, BundleError> decodeConfig(std::string_view text) {
    auto members = readConfigValues(text);
    if (!members)
        return tl::unexpected<BundleError>(ConfigMalformed{members.error()});
    RunnerConfig config;
    Values values(std::move(*members), config.warnings);
    const auto address = values.take<std::string>("url");
    if (!address)
        return tl::unexpected<BundleError>(ConfigMalformed{"it holds no text for \"url\""});
    config.isDevMode = values.take<bool>("isDevMode").value_or(false);
    if (const auto reason = readAddress(*address, config))
        return tl::unexpected<BundleError>(AddressUnusable{*address, *reason});
    config.name = displayText(values.take<std::string>("name").value_or(""), longestName);
    if (config.name.empty())
        config.name = displayText(config.host, longestName);
    config.badgeEnabled = values.take<bool>("badgeEnabled").value_or(true);
    readUserAgent(values, config);
    readAllowedHosts(values, config);
    readScripts(values, config);
    readTheme(values, config.theme);
    return config;
}

}  // namespace wrapio
