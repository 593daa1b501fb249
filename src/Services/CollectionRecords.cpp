#include "Services/CollectionRecords.h"

#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestReason = 200;

/// Follows a JSON text without building anything of it, and stops where a limit is passed.
class BoundsCheck final : public nlohmann::json_sax<Json> {
public:
    explicit BoundsCheck(const CollectionLimits& limits)
        : m_limits(limits) {}

    /// What was wrong with the text; empty when nothing was.
    [[nodiscard]] const QString& reason() const { return m_reason; }

    bool null() override { return countValue(); }
    bool boolean(bool) override { return countValue(); }
    bool number_integer(number_integer_t) override { return countValue(); }
    bool number_unsigned(number_unsigned_t) override { return countValue(); }
    bool number_float(number_float_t, const string_t&) override { return countValue(); }
    bool string(string_t&) override { return countValue(); }
    bool binary(binary_t&) override { return countValue(); }
    bool key(string_t&) override { return countMember(); }
    bool start_object(std::size_t) override { return open(); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& failure) override {
        // The message quotes the text around the error, which may be all of it.
        return refuse(QString::fromUtf8(failure.what()).left(longestReason));
    }

private:
    bool refuse(const QString& reason) {
        m_reason = reason;
        return false;
    }
    bool countValue() {
        if (m_members.size() == 1 && ++m_records > m_limits.records)
            return refuse(u"the list holds more than %1 records"_s.arg(m_limits.records));
        if (++m_values > m_limits.values)
            return refuse(u"the list holds more than %1 values"_s.arg(m_limits.values));
        return true;
    }
    bool countMember() {
        if (++m_members.back() > m_limits.membersOfObject)
            return refuse(u"an object has more than %1 members"_s.arg(m_limits.membersOfObject));
        return true;
    }
    bool open() {
        if (!countValue())
            return false;
        m_members.push_back(0);
        return m_members.size() <= m_limits.depth || refuse(u"values are nested too deeply"_s);
    }
    bool close() {
        m_members.pop_back();
        return true;
    }

    const CollectionLimits& m_limits;
    std::size_t m_records = 0;
    std::size_t m_values = 0;
    std::vector<std::size_t> m_members;  ///< of each object (0 for a list) that is open
    QString m_reason;
};

}  // namespace

tl::expected<std::vector<AppConfiguration>, DecodingError> decodeCollection(const QByteArray& json,
                                                                            const CollectionLimits& limits) {
    BoundsCheck check(limits);
    if (!Json::sax_parse(json.begin(), json.end(), &check))
        return tl::unexpected(DecodingError{check.reason()});
    return decodeConfigurations(json);
}

}  // namespace wrapio
