#include "Models/Timestamp.h"

#include <chrono>

namespace wrapio {

namespace {

/// 2001-01-01 00:00:00 UTC in Unix time.
constexpr double referenceDate = 978307200.0;

}  // namespace

Timestamp Timestamp::now() {
    const std::chrono::duration<double> sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Timestamp{sinceEpoch.count() - referenceDate};
}

QDateTime Timestamp::toDateTime() const {
    return QDateTime::fromMSecsSinceEpoch(qRound64((secondsSinceReference + referenceDate) * 1000.0), Qt::UTC);
}

}  // namespace wrapio
