// A moment, as the catalogue's format counts it.
#pragma once

#include <QDateTime>

#include <compare>

namespace wrapio {

/// Seconds, with fraction, since 2001-01-01 00:00:00 UTC.
struct Timestamp {
    double secondsSinceReference = 0;

    /// The system's clock. Code whose behaviour depends on time takes a Clock instead.
    [[nodiscard]] static Timestamp now();
    [[nodiscard]] QDateTime toDateTime() const;

    auto operator<=>(const Timestamp&) const = default;
};

}  // namespace wrapio
