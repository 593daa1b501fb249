#include "RunnerCore/ConfigReader.h"

#include <nlohmann/json.hpp>

namespace wrapio {

namespace {

using Json = nlohmann::ordered_json;

constexpr int deepestNesting = 32;
constexpr std::size_t mostListEntries = 10'000;

/// Collects the members of the outermost object while the parser walks the text.
class MemberCollector {
public:
    ConfigValues values;
    std::string failure;

    bool null() {
        if (m_depth == 1)
            values.erase(m_key);
        return insideObject();
    }
    bool boolean(bool value) { return take(value); }
    bool number_integer(Json::number_integer_t value) { return take(static_cast<double>(value)); }
    bool number_unsigned(Json::number_unsigned_t value) { return take(static_cast<double>(value)); }
    bool number_float(Json::number_float_t value, const std::string& /*text*/) { return take(value); }
    bool binary(Json::binary_t& /*value*/) { return insideObject(); }

    bool string(std::string& value) {
        if (m_depth == 2 && m_list && m_list->size() < mostListEntries)
            m_list->push_back(std::move(value));
        else if (m_depth == 1)
            values[m_key] = std::move(value);
        return insideObject();
    }

    bool key(std::string& value) {
        if (m_depth == 1)
            m_key = std::move(value);
        return true;
    }

    bool start_object(std::size_t /*count*/) {
        if (m_depth == 1)
            values[m_key] = Unusable{};
        return enter();
    }
    bool end_object() { return leave(); }

    bool start_array(std::size_t /*count*/) {
        if (m_depth == 1)
            m_list = &values[m_key].emplace<std::vector<std::string>>();
        return insideObject() && enter();
    }
    bool end_array() {
        if (m_depth == 2)
            m_list = nullptr;
        return leave();
    }

    bool parse_error(std::size_t position, const std::string& /*token*/, const nlohmann::detail::exception& /*error*/) {
        failure = "it is not valid JSON at byte " + std::to_string(position);
        return false;
    }

private:
    template <typename Value>
    bool take(Value value) {
        if (m_depth == 1)
            values[m_key] = value;
        return insideObject();
    }
    bool insideObject() {
        if (m_depth == 0)
            failure = "it does not hold a JSON object";
        return m_depth > 0;
    }
    bool enter() {
        if (++m_depth > deepestNesting)
            failure = "its values are nested too deeply";
        return m_depth <= deepestNesting;
    }
    bool leave() {
        --m_depth;
        return true;
    }

    int m_depth = 0;
    std::string m_key;
    std::vector<std::string>* m_list = nullptr;
};

}  // namespace

tl::expected<ConfigValues, std::string> readConfigValues(std::string_view text) {
    MemberCollector collector;
    if (!Json::sax_parse(text.begin(), text.end(), &collector))
        return tl::unexpected(collector.failure.empty() ? std::string("it is not valid JSON") : collector.failure);
    return std::move(collector.values);
}

}  // namespace wrapio
