// Reads records from JSON text as the parser goes along, without a document of the whole in memory.
#pragma once

#include "Models/AppConfiguration.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace wrapio {

/// What the parser calls for each piece of the text, with what it calls them. Throws WrongValue when the text is no
/// record or no list of them.
class RecordReader {
public:
    /// Why a value is refused.
    struct WrongValue {
        QString reason;
    };
    /// An object or a list where a plain value is expected.
    struct Nested {};
    using Value = std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string_view, Nested>;

    enum class Form { record, list };
    explicit RecordReader(Form form)
        : m_form(form) {}

    /// The records in their order, once the text has ended.
    [[nodiscard]] std::vector<AppConfiguration>& records() { return m_records; }
    /// Why the text is no JSON.
    [[nodiscard]] const std::string& failure() const { return m_failure; }

    // The names are the parser's.
    bool null() { return take(std::monostate()); }
    bool boolean(bool value) { return take(value); }
    bool number_integer(std::int64_t value) { return take(value); }
    bool number_unsigned(std::uint64_t value) { return take(value); }
    bool number_float(double value, const std::string&) { return take(value); }
    bool string(const std::string& value) { return take(std::string_view(value)); }
    template <typename Bytes>
    bool binary(const Bytes&) {
        return take(Nested());
    }
    bool start_object(std::size_t) { return open(true); }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(false); }
    bool end_array() { return close(); }
    bool key(const std::string& name);
    template <typename Exception>
    bool parse_error(std::size_t, const std::string&, const Exception& error) {
        m_failure = error.what();
        return false;
    }

private:
    enum class Place { outside, list, record, hosts, ignored };

    bool take(const Value& value);
    bool open(bool isObject);
    bool close();
    void beginRecord();
    void endRecord();

    Form m_form;
    Place m_place = Place::outside;
    int m_ignoredDepth = 0;
    std::optional<std::size_t> m_field;  ///< the field whose value comes next; none for a key that nobody knows
    std::size_t m_likelyField = 0;       ///< keys mostly come in the order of the fields
    bool m_hasId = false;
    std::vector<AppConfiguration> m_records;
    std::string m_failure;
};

}  // namespace wrapio
