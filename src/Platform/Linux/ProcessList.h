// Which processes run from application bundles.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace wrapio {

struct BundleProcess {
    qint64 processIdentifier = 0;
    QString bundlePath;            ///< as the kernel knows it, links resolved; it may be gone from the disk
    std::uint64_t startTicks = 0;  ///< when it started, in clock ticks since the machine did

    bool operator==(const BundleProcess&) const = default;
};

/// This user's processes whose program lies in a bundle's Contents/Linux, oldest first. Reads every process anew, since
/// a process can become another program at any time; that takes about a microsecond for each. Any thread.
[[nodiscard]] std::vector<BundleProcess> bundleProcesses();

/// The bundle that a process of this user runs from. Any thread.
[[nodiscard]] std::optional<QString> bundleOfProcess(qint64 processIdentifier);

}  // namespace wrapio
