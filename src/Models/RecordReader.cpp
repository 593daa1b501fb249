#include "Models/RecordReader.h"

#include <array>
#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using Value = RecordReader::Value;

constexpr qsizetype canonicalIdLength = 36;

[[noreturn]] void refuse(const char* key, QLatin1StringView expected) {
    throw RecordReader::WrongValue{u"the value of \"%1\" is not %2"_s.arg(QLatin1StringView(key), expected)};
}

bool isNull(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

QString asText(const Value& value, const char* key) {
    const auto* const text = std::get_if<std::string_view>(&value);
    if (!text)
        refuse(key, "a text"_L1);
    return QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size()));
}

std::optional<QString> readText(const Value& value, const char* key) {
    return isNull(value) ? std::nullopt : std::optional(asText(value, key));
}

std::optional<WebAddress> readAddress(const Value& value, const char* key) {
    const auto text = readText(value, key);
    if (!text)
        return std::nullopt;
    auto address = WebAddress::parse(*text);
    if (!address)
        refuse(key, "a web address"_L1);
    return address;
}

bool readBoolean(const Value& value, const char* key, bool missing) {
    const bool* const boolean = std::get_if<bool>(&value);
    if (!boolean && !isNull(value))
        refuse(key, "true or false"_L1);
    return boolean ? *boolean : missing;
}

std::optional<double> readNumber(const Value& value, const char* key) {
    if (isNull(value))
        return std::nullopt;
    if (const auto* const number = std::get_if<double>(&value))
        return *number;
    if (const auto* const number = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*number);
    if (const auto* const number = std::get_if<std::uint64_t>(&value))
        return static_cast<double>(*number);
    refuse(key, "a number"_L1);
}

std::optional<std::int64_t> readInteger(const Value& value, const char* key) {
    constexpr double limit = 9223372036854775808.0;  // one past the largest 64-bit integer
    if (isNull(value))
        return std::nullopt;
    if (const auto* const number = std::get_if<std::int64_t>(&value))
        return *number;
    if (const auto* const number = std::get_if<std::uint64_t>(&value)) {
        if (*number > INT64_MAX)
            refuse(key, "a 64-bit integer"_L1);
        return static_cast<std::int64_t>(*number);
    }
    const auto* const number = std::get_if<double>(&value);
    if (!number || !(*number >= -limit && *number < limit) || std::trunc(*number) != *number)
        refuse(key, "an integer"_L1);
    return static_cast<std::int64_t>(*number);
}

QUuid readId(const Value& value) {
    const auto text = readText(value, "id");
    if (!text)
        return QUuid::createUuid();
    const QUuid id = QUuid::fromString(*text);
    if (text->size() != canonicalIdLength || canonicalText(id) != text->toUpper())
        refuse("id", "a UUID"_L1);
    return id;
}

Timestamp readTime(const Value& value) {
    return Timestamp{readNumber(value, "lastUpdated").value_or(Timestamp::now().secondsSinceReference)};
}

template <typename Enumeration, typename FromRawValue>
Enumeration readEnumeration(const Value& value, const char* key, Enumeration missing, FromRawValue fromRawValue) {
    if (isNull(value))
        return missing;
    const auto* const text = std::get_if<std::string_view>(&value);
    const auto read = text ? fromRawValue(*text) : std::nullopt;
    if (!read)
        refuse(key, "one of its known texts"_L1);
    return *read;
}

/// A list is read host by host; here come all other values.
std::vector<QString> readHosts(const Value& value) {
    if (!isNull(value))
        refuse("allowedHosts", "a list"_L1);
    return {};
}

/// How the value of a key reaches the record. A later value of the same key replaces the earlier one.
struct Field {
    const char* key;
    void (*read)(AppConfiguration& app, const Value& value, const char* key);
};

using App = AppConfiguration;

/// In the order in which they are written.
constexpr std::array fields = {
    Field{"id", [](App& a, const Value& v, const char*) { a.id = readId(v); }},
    Field{"configuredURL", [](App& a, const Value& v, const char* key) { a.configuredURL = readAddress(v, key); }},
    Field{"appName", [](App& a, const Value& v, const char* key) { a.appName = readText(v, key); }},
    Field{"iconSource",
          [](App& a, const Value& v, const char* key) {
              a.iconSource = readEnumeration(v, key, IconSource::default_, iconSourceFromRawValue);
          }},
    Field{"lastVisitedURL", [](App& a, const Value& v, const char* key) { a.lastVisitedURL = readAddress(v, key); }},
    Field{"runnerVersion", [](App& a, const Value& v, const char* key) { a.runnerVersion = readText(v, key); }},
    Field{"lastUpdated", [](App& a, const Value& v, const char*) { a.lastUpdated = readTime(v); }},
    Field{"customUserAgent", [](App& a, const Value& v, const char* key) { a.customUserAgent = readText(v, key); }},
    Field{"allowedHosts", [](App& a, const Value& v, const char*) { a.allowedHosts = readHosts(v); }},
    Field{"badgeEnabled", [](App& a, const Value& v, const char* key) { a.badgeEnabled = readBoolean(v, key, true); }},
    Field{"customCSS", [](App& a, const Value& v, const char* key) { a.customCSS = readText(v, key); }},
    Field{"customJS", [](App& a, const Value& v, const char* key) { a.customJS = readText(v, key); }},
    Field{"jsInjectionTime",
          [](App& a, const Value& v, const char* key) {
              a.jsInjectionTime = readEnumeration(v, key, JSInjectionTime::documentEnd, jsInjectionTimeFromRawValue);
          }},
    Field{"themeColor", [](App& a, const Value& v, const char* key) { a.themeColor = readText(v, key); }},
    Field{"themeOpacity", [](App& a, const Value& v, const char* key) { a.themeOpacity = readNumber(v, key); }},
    Field{"themeBorderEnabled",
          [](App& a, const Value& v, const char* key) { a.themeBorderEnabled = readBoolean(v, key, false); }},
    Field{"isDevMode", [](App& a, const Value& v, const char* key) { a.isDevMode = readBoolean(v, key, false); }},
    Field{"sortOrder", [](App& a, const Value& v, const char* key) { a.sortOrder = readInteger(v, key); }},
};

constexpr std::size_t idField = 0;
constexpr std::string_view hostsKey = "allowedHosts";

}  // namespace

bool RecordReader::key(const std::string& name) {
    if (m_place != Place::record)
        return true;
    m_field.reset();
    for (std::size_t i = 0; i < fields.size() && !m_field; ++i) {
        const std::size_t candidate = (m_likelyField + i) % fields.size();
        if (name == fields[candidate].key)
            m_field = candidate;
    }
    m_likelyField = m_field ? *m_field + 1 : m_likelyField;
    return true;
}

bool RecordReader::take(const Value& value) {
    switch (m_place) {
    case Place::outside:
        throw WrongValue{m_form == Form::list ? u"the list of records is not a list"_s
                                              : u"a record is not an object"_s};
    case Place::list:
        throw WrongValue{u"a record is not an object"_s};
    case Place::record:
        if (m_field)
            fields[*m_field].read(m_records.back(), value, fields[*m_field].key);
        m_hasId = m_hasId || m_field == idField;
        return true;
    case Place::hosts:
        m_records.back().allowedHosts.push_back(asText(value, "allowedHosts"));
        return true;
    case Place::ignored:
        return true;
    }
    Q_UNREACHABLE();
}

bool RecordReader::open(bool isObject) {
    if (m_place == Place::ignored) {
        ++m_ignoredDepth;
    } else if (m_place == Place::outside && m_form == Form::list && !isObject) {
        m_place = Place::list;
    } else if (isObject && m_place == (m_form == Form::list ? Place::list : Place::outside)) {
        beginRecord();
    } else if (m_place == Place::record && !m_field) {
        m_place = Place::ignored;
        m_ignoredDepth = 1;
    } else if (m_place == Place::record && !isObject && fields[*m_field].key == hostsKey) {
        m_records.back().allowedHosts.clear();
        m_place = Place::hosts;
    } else {
        take(Nested());
    }
    return true;
}

bool RecordReader::close() {
    switch (m_place) {
    case Place::outside:
    case Place::list:
        m_place = Place::outside;
        return true;
    case Place::record:
        endRecord();
        return true;
    case Place::hosts:
        m_place = Place::record;
        return true;
    case Place::ignored:
        m_place = --m_ignoredDepth == 0 ? Place::record : Place::ignored;
        return true;
    }
    Q_UNREACHABLE();
}

/// The id and the time of a record without them are made at its end, since making them costs more than reading them.
void RecordReader::beginRecord() {
    static const AppConfiguration blank = [] {
        AppConfiguration record;
        record.id = QUuid();
        record.lastUpdated = Timestamp{NAN};
        return record;
    }();
    m_records.push_back(blank);
    m_likelyField = 0;
    m_hasId = false;
    m_place = Place::record;
}

void RecordReader::endRecord() {
    AppConfiguration& record = m_records.back();
    if (!m_hasId)
        record.id = QUuid::createUuid();
    if (std::isnan(record.lastUpdated.secondsSinceReference))
        record.lastUpdated = Timestamp::now();
    m_place = m_form == Form::list ? Place::list : Place::outside;
}

}  // namespace wrapio
