// Keeps the catalogue to one writer at a time.
#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace wrapio {

/// Another process holds the catalogue, or nobody can.
struct CatalogueBusy {
    QString reason;
    bool byManager = false;   ///< a manager holds it, which carries commands out for others
    bool isHopeless = false;  ///< nobody holds it: it cannot be locked, however long one waits
    [[nodiscard]] const QString& description() const { return reason; }
};

/// Every process takes it before it loads a catalogue that it may change, and holds it until it ends.
class CatalogueLock {
public:
    CatalogueLock() = default;
    virtual ~CatalogueLock() = default;
    CatalogueLock(const CatalogueLock&) = delete;
    CatalogueLock& operator=(const CatalogueLock&) = delete;

    /// Waits up to `seconds` for the lock while another process holds it. It is given back when this goes away or the process ends, however it ends.
    [[nodiscard]] virtual tl::expected<void, CatalogueBusy> acquire(double seconds) = 0;
};

}  // namespace wrapio
