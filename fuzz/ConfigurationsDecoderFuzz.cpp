// Lists of records that anybody may have written.
#include "Property.h"
#include "Services/CollectionRecords.h"

#include <cstddef>
#include <cstdint>

namespace wrapio {

namespace {

void feed(const QByteArray& json) {
    const auto records = decodeCollection(json);
    if (!records)
        return;
    const auto unlimited = decodeConfigurations(json);
    // Not more: a record without an id is given another one each time.
    require(unlimited && unlimited->size() == records->size(), "a list within the limits is one without them, too");
    for (const JsonStyle style : {JsonStyle::compact, JsonStyle::prettySortedKeys}) {
        const auto written = encodeConfigurations(*records, style);
        require(written.has_value(), "what was read can be written");
        const auto again = decodeCollection(*written);
        require(again && *again == *records, "what was written reads as what it was");
    }
}

}  // namespace

}  // namespace wrapio

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wrapio::feed(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}
