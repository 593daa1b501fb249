// Reading the list of records of an archive, which anybody may have made.
#pragma once

#include "Models/ConfigurationCoding.h"

#include <QByteArray>

#include <tl/expected.hpp>

#include <cstddef>
#include <vector>

namespace wrapio {

/// What a list from elsewhere may hold. Lists within these limits decode in time and memory proportional to their size.
struct CollectionLimits {
    std::size_t records = 100'000;
    std::size_t values = 4'000'000;  ///< everything between the brackets, nested values included
    std::size_t membersOfObject = 1'000;
    std::size_t depth = 64;
};

/// A JSON array of records, refused before it is taken apart when it is beyond `limits`. One record that does not
/// decode fails the whole. Any thread.
[[nodiscard]] tl::expected<std::vector<AppConfiguration>, DecodingError>
decodeCollection(const QByteArray& json, const CollectionLimits& limits = {});

}  // namespace wrapio
