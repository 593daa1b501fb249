// The small file that makes an archive recognisable.
#pragma once

#include "Models/Timestamp.h"

#include <QByteArray>

#include <cstddef>

namespace wrapio {

struct CollectionManifest {
    int version = 1;
    Timestamp exportDate;
    std::size_t appCount = 0;

    /// Compact JSON, keys in the order of the fields.
    [[nodiscard]] QByteArray encoded() const;
};

}  // namespace wrapio
