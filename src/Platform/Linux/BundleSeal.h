// The seal of an application bundle: a list of its files with their hashes, by which later changes are found.
// Stateless; any thread. The seal is the property list Contents/_CodeSignature/CodeResources. Its dictionary "files2"
// maps every other file of the bundle, by its path below the bundle, to {"hash2": SHA-256, "executable": true} or, for
// a link, to {"symlink": target}.
#pragma once

#include "Platform/Linux/ToolFailure.h"
#include "Platform/SystemHealth.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace wrapio {

/// How a bundle differs from its seal: paths below the bundle, sorted.
struct SealDifferences {
    QStringList changed;  ///< contents, link target, executable bit, or the kind of entry
    QStringList missing;
    QStringList added;

    [[nodiscard]] bool empty() const { return changed.isEmpty() && missing.isEmpty() && added.isEmpty(); }
};

class BundleSeal {
public:
    /// Writes the seal of a bundle, over an older one. Fails when the bundle has no folder Contents, holds what is
    /// neither file nor folder nor link, or a name that is no printable UTF-8, or when a file cannot be read or
    /// written.
    [[nodiscard]] static ToolOutcome<void> seal(const QString& bundlePath);

    /// Compares a bundle with its seal. Fails when there is no readable seal or the bundle cannot be read.
    [[nodiscard]] static ToolOutcome<SealDifferences> compare(const QString& bundlePath);

    /// The comparison in words.
    [[nodiscard]] static SealReport verify(const QString& bundlePath);
};

}  // namespace wrapio
