#include "Models/ConfigurationCoding.h"

#include "Models/RecordReader.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int prettyIndent = 2;
constexpr auto replaceInvalid = Json::error_handler_t::replace;

Json textJson(const QString& text) {
    return text.toStdString();
}

Json hostsJson(const std::vector<QString>& hosts) {
    Json array = Json::array();
    for (const QString& host : hosts)
        array.push_back(textJson(host));
    return array;
}

/// Collects the members of a record, whose keys all differ: looking each of them up before it is added, as the object's
/// own operators do, takes longer than all the rest.
class Members {
public:
    Members() { m_members.reserve(mostMembers); }

    void put(const char* key, Json value) { m_members.emplace_back(key, std::move(value)); }
    void put(const char* key, const QString& text) { put(key, textJson(text)); }
    void put(const char* key, const WebAddress& address) { put(key, address.absoluteString()); }
    template <typename Value>
    void put(const char* key, const std::optional<Value>& value) {
        if (value)
            put(key, *value);
    }
    Json object() && { return std::move(m_members); }

private:
    static constexpr std::size_t mostMembers = 18;
    Json::object_t m_members;
};

Json sortedByKey(const Json& object) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : object.items())
        keys.push_back(key);
    std::sort(keys.begin(), keys.end());
    Json sorted = Json::object();
    for (const std::string& key : keys)
        sorted[key] = object[key];
    return sorted;
}

QByteArray prettyList(const std::vector<AppConfiguration>& configurations) {
    Json array = Json::array();
    for (const AppConfiguration& configuration : configurations)
        array.push_back(sortedByKey(encodeConfiguration(configuration)));
    return QByteArray::fromStdString(array.dump(prettyIndent, ' ', false, replaceInvalid));
}

bool hasJsonForm(const AppConfiguration& configuration) {
    return std::isfinite(configuration.lastUpdated.secondsSinceReference) &&
           std::isfinite(configuration.themeOpacity.value_or(0));
}

/// What the reader throws and what the parser finds become error values.
tl::expected<std::vector<AppConfiguration>, DecodingError> decoded(const QByteArray& json, RecordReader::Form form) {
    RecordReader reader(form);
    try {
        if (!Json::sax_parse(json.begin(), json.end(), &reader))
            return tl::unexpected(DecodingError{QString::fromStdString(reader.failure())});
    } catch (const RecordReader::WrongValue& wrong) {
        return tl::unexpected(DecodingError{wrong.reason});
    } catch (const Json::exception& failure) {
        return tl::unexpected(DecodingError{QString::fromUtf8(failure.what())});
    }
    return std::move(reader.records());
}

}  // namespace

Json encodeConfiguration(const AppConfiguration& configuration) {
    Members members;
    members.put("id", canonicalText(configuration.id));
    members.put("configuredURL", configuration.configuredURL);
    members.put("appName", configuration.appName);
    members.put("iconSource", rawValue(configuration.iconSource));
    members.put("lastVisitedURL", configuration.lastVisitedURL);
    members.put("runnerVersion", configuration.runnerVersion);
    members.put("lastUpdated", configuration.lastUpdated.secondsSinceReference);
    members.put("customUserAgent", configuration.customUserAgent);
    members.put("allowedHosts", hostsJson(configuration.allowedHosts));
    members.put("badgeEnabled", configuration.badgeEnabled);
    members.put("customCSS", configuration.customCSS);
    members.put("customJS", configuration.customJS);
    members.put("jsInjectionTime", rawValue(configuration.jsInjectionTime));
    members.put("themeColor", configuration.themeColor);
    members.put("themeOpacity", configuration.themeOpacity);
    members.put("themeBorderEnabled", configuration.themeBorderEnabled);
    members.put("isDevMode", configuration.isDevMode);
    members.put("sortOrder", configuration.sortOrder);
    return std::move(members).object();
}

std::optional<QByteArray> encodeConfigurations(const std::vector<AppConfiguration>& configurations, JsonStyle style) {
    if (!std::all_of(configurations.begin(), configurations.end(), hasJsonForm))
        return std::nullopt;
    if (style == JsonStyle::prettySortedKeys)
        return prettyList(configurations);
    // One record at a time: a document of them all would cost more than the writing.
    QByteArray list = "[";
    for (const AppConfiguration& configuration : configurations) {
        const std::string record = encodeConfiguration(configuration).dump(-1, ' ', false, replaceInvalid);
        list.append(list.size() > 1 ? "," : "").append(record.data(), static_cast<qsizetype>(record.size()));
    }
    return list + ']';
}

tl::expected<AppConfiguration, DecodingError> decodeConfiguration(const QByteArray& json) {
    return decoded(json, RecordReader::Form::record).map([](std::vector<AppConfiguration>&& records) {
        return std::move(records.front());
    });
}

tl::expected<std::vector<AppConfiguration>, DecodingError> decodeConfigurations(const QByteArray& json) {
    return decoded(json, RecordReader::Form::list);
}

}  // namespace wrapio
