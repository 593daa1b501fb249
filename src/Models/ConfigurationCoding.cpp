#include "Models/ConfigurationCoding.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int prettyIndent = 2;
constexpr qsizetype canonicalIdLength = 36;

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

bool hasJsonForm(const AppConfiguration& configuration) {
    return std::isfinite(configuration.lastUpdated.secondsSinceReference) &&
           std::isfinite(configuration.themeOpacity.value_or(0));
}

/// Thrown inside this file only, and caught at its two entrances.
struct WrongValue {
    QString reason;
};

[[noreturn]] void refuse(const char* key, QLatin1StringView expected) {
    throw WrongValue{u"the value of \"%1\" is not %2"_s.arg(QLatin1StringView(key), expected)};
}

/// The value under `key`, or null when it is missing or JSON null.
const Json* member(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() || found->is_null() ? nullptr : &*found;
}

QString asText(const Json& value, const char* key) {
    if (!value.is_string())
        refuse(key, "a text"_L1);
    return QString::fromStdString(value.get_ref<const std::string&>());
}

std::optional<QString> readText(const Json& object, const char* key) {
    const Json* const value = member(object, key);
    return value ? std::optional(asText(*value, key)) : std::nullopt;
}

std::optional<WebAddress> readAddress(const Json& object, const char* key) {
    const auto text = readText(object, key);
    if (!text)
        return std::nullopt;
    auto address = WebAddress::parse(*text);
    if (!address)
        refuse(key, "a web address"_L1);
    return address;
}

bool readBoolean(const Json& object, const char* key, bool missing) {
    const Json* const value = member(object, key);
    if (value && !value->is_boolean())
        refuse(key, "true or false"_L1);
    return value ? value->get<bool>() : missing;
}

std::optional<double> readNumber(const Json& object, const char* key) {
    const Json* const value = member(object, key);
    if (value && !value->is_number())
        refuse(key, "a number"_L1);
    return value ? std::optional(value->get<double>()) : std::nullopt;
}

std::optional<std::int64_t> readInteger(const Json& object, const char* key) {
    constexpr double limit = 9223372036854775808.0;  // one past the largest 64-bit integer
    const Json* const value = member(object, key);
    if (!value)
        return std::nullopt;
    if (value->is_number_unsigned() && value->get<std::uint64_t>() > INT64_MAX)
        refuse(key, "a 64-bit integer"_L1);
    if (value->is_number_integer())
        return value->get<std::int64_t>();
    const double number = value->is_number_float() ? value->get<double>() : NAN;
    if (!(number >= -limit && number < limit) || std::trunc(number) != number)
        refuse(key, "an integer"_L1);
    return static_cast<std::int64_t>(number);
}

QUuid readId(const Json& object) {
    const auto text = readText(object, "id");
    if (!text)
        return QUuid::createUuid();
    const QUuid id = QUuid::fromString(*text);
    if (text->size() != canonicalIdLength || canonicalText(id) != text->toUpper())
        refuse("id", "a UUID"_L1);
    return id;
}

std::vector<QString> readHosts(const Json& object) {
    std::vector<QString> hosts;
    const Json* const value = member(object, "allowedHosts");
    if (value && !value->is_array())
        refuse("allowedHosts", "a list"_L1);
    if (value) {
        hosts.reserve(value->size());
        for (const Json& host : *value)
            hosts.push_back(asText(host, "allowedHosts"));
    }
    return hosts;
}

template <typename Enumeration, typename FromRawValue>
Enumeration readEnumeration(const Json& object, const char* key, Enumeration missing, FromRawValue fromRawValue) {
    const Json* const value = member(object, key);
    if (!value)
        return missing;
    const auto read = value->is_string() ? fromRawValue(value->get_ref<const std::string&>()) : std::nullopt;
    if (!read)
        refuse(key, "one of its known texts"_L1);
    return *read;
}

AppConfiguration readConfiguration(const Json& object) {
    if (!object.is_object())
        throw WrongValue{u"a record is not an object"_s};
    return AppConfiguration{
        .id = readId(object),
        .configuredURL = readAddress(object, "configuredURL"),
        .appName = readText(object, "appName"),
        .iconSource = readEnumeration(object, "iconSource", IconSource::default_, iconSourceFromRawValue),
        .lastVisitedURL = readAddress(object, "lastVisitedURL"),
        .runnerVersion = readText(object, "runnerVersion"),
        .lastUpdated = Timestamp{readNumber(object, "lastUpdated").value_or(Timestamp::now().secondsSinceReference)},
        .customUserAgent = readText(object, "customUserAgent"),
        .allowedHosts = readHosts(object),
        .badgeEnabled = readBoolean(object, "badgeEnabled", true),
        .customCSS = readText(object, "customCSS"),
        .customJS = readText(object, "customJS"),
        .jsInjectionTime = readEnumeration(object, "jsInjectionTime", JSInjectionTime::documentEnd,
                                           jsInjectionTimeFromRawValue),
        .themeColor = readText(object, "themeColor"),
        .themeOpacity = readNumber(object, "themeOpacity"),
        .themeBorderEnabled = readBoolean(object, "themeBorderEnabled", false),
        .isDevMode = readBoolean(object, "isDevMode", false),
        .sortOrder = readInteger(object, "sortOrder"),
    };
}

/// Parses `json` and reads it by `read`; whatever either throws becomes an error value.
template <typename Value, typename Read>
tl::expected<Value, DecodingError> decoded(const QByteArray& json, Read read) {
    try {
        return read(Json::parse(json.begin(), json.end()));
    } catch (const WrongValue& wrong) {
        return tl::unexpected(DecodingError{wrong.reason});
    } catch (const Json::exception& failure) {
        return tl::unexpected(DecodingError{QString::fromUtf8(failure.what())});
    }
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
    const bool pretty = style == JsonStyle::prettySortedKeys;
    Json array = Json::array();
    for (const AppConfiguration& configuration : configurations) {
        const Json object = encodeConfiguration(configuration);
        array.push_back(pretty ? sortedByKey(object) : object);
    }
    return QByteArray::fromStdString(
        array.dump(pretty ? prettyIndent : -1, ' ', false, Json::error_handler_t::replace));
}

tl::expected<AppConfiguration, DecodingError> decodeConfiguration(const QByteArray& json) {
    return decoded<AppConfiguration>(json, readConfiguration);
}

tl::expected<std::vector<AppConfiguration>, DecodingError> decodeConfigurations(const QByteArray& json) {
    return decoded<std::vector<AppConfiguration>>(json, [](const Json& array) {
        if (!array.is_array())
            throw WrongValue{u"the list of records is not a list"_s};
        std::vector<AppConfiguration> configurations;
        configurations.reserve(array.size());
        for (const Json& object : array)
            configurations.push_back(readConfiguration(object));
        return configurations;
    });
}

}  // namespace wrapio
