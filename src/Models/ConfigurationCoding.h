// The JSON form of the record: in the defaults, in collection archives, on the command line.
#pragma once

#include "Models/AppConfiguration.h"

#include <QByteArray>

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>
#include <tl/expected.hpp>

namespace wrapio {

/// The order of keys is part of the format, and only this JSON type keeps it.
using Json = nlohmann::ordered_json;

/// Why a text is no list of records.
struct DecodingError {
    QString reason;
    [[nodiscard]] const QString& description() const { return reason; }
};

enum class JsonStyle {
    compact,             ///< keys in declaration order, no white space
    prettySortedKeys,    ///< keys in alphabetical order, indented by two
};

/// One record as a JSON object: keys in declaration order, absent fields left out.
[[nodiscard]] Json encodeConfiguration(const AppConfiguration& configuration);

/// The JSON array of `configurations` in UTF-8. Nothing when a number in a record has no JSON form.
[[nodiscard]] std::optional<QByteArray> encodeConfigurations(const std::vector<AppConfiguration>& configurations,
                                                             JsonStyle style = JsonStyle::compact);

/// One record. Every key is optional; a value of the wrong type fails the whole.
[[nodiscard]] tl::expected<AppConfiguration, DecodingError> decodeConfiguration(const QByteArray& json);

/// A JSON array of records; one that fails, fails the whole.
[[nodiscard]] tl::expected<std::vector<AppConfiguration>, DecodingError> decodeConfigurations(const QByteArray& json);

}  // namespace wrapio
