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

void putIfPresent(Json& object, const char* key, const std::optional<QString>& text) {
    if (text)
        object[key] = textJson(*text);
}

void putIfPresent(Json& object, const char* key, const std::optional<WebAddress>& address) {
    if (address)
        object[key] = textJson(address->absoluteString());
}

Json hostsJson(const std::vector<QString>& hosts) {
    Json array = Json::array();
    for (const QString& host : hosts)
        array.push_back(textJson(host));
    return array;
}

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
    Json object = Json::object();
    object["id"] = textJson(canonicalText(configuration.id));
    putIfPresent(object, "configuredURL", configuration.configuredURL);
    putIfPresent(object, "appName", configuration.appName);
    object["iconSource"] = textJson(rawValue(configuration.iconSource));
    putIfPresent(object, "lastVisitedURL", configuration.lastVisitedURL);
    putIfPresent(object, "runnerVersion", configuration.runnerVersion);
    object["lastUpdated"] = configuration.lastUpdated.secondsSinceReference;
    putIfPresent(object, "customUserAgent", configuration.customUserAgent);
    object["allowedHosts"] = hostsJson(configuration.allowedHosts);
    object["badgeEnabled"] = configuration.badgeEnabled;
    putIfPresent(object, "customCSS", configuration.customCSS);
    putIfPresent(object, "customJS", configuration.customJS);
    object["jsInjectionTime"] = textJson(rawValue(configuration.jsInjectionTime));
    putIfPresent(object, "themeColor", configuration.themeColor);
    if (configuration.themeOpacity)
        object["themeOpacity"] = *configuration.themeOpacity;
    object["themeBorderEnabled"] = configuration.themeBorderEnabled;
    object["isDevMode"] = configuration.isDevMode;
    if (configuration.sortOrder)
        object["sortOrder"] = *configuration.sortOrder;
    return object;
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
