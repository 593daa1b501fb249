// The three rules by which a display name becomes a bundle's file name.
#pragma once

#include <string>
#include <string_view>

namespace wrapio {

// The rules differ on purpose and each is kept as it is: existing bundles lie where their rule put them. For ordinary
// names all three agree; for a name they do not agree on, the app that was generated is not found afterwards.

/// Where an app is looked for when it is launched, watched or stopped: each of / \ ? % * | " < > : becomes "_".
[[nodiscard]] std::string launchedBundleName(std::string_view displayName);
/// Where the catalogue and the registration checks look: such characters are deleted, dots stay.
[[nodiscard]] std::string cataloguedBundleName(std::string_view displayName);
/// What the generator writes: such characters and dots are deleted. Empty when nothing of the name is left.
[[nodiscard]] std::string generatedBundleName(std::string_view displayName);

/// True when the three rules give one place.
[[nodiscard]] bool bundleNamesAgree(std::string_view displayName);

/// True when the bundle's file name is no longer than file systems take: 255 bytes.
[[nodiscard]] bool bundleNameFits(std::string_view displayName);
/// The beginning of `displayName` whose bundle's file name fits, cut between two characters.
[[nodiscard]] std::string fittingDisplayName(std::string_view displayName);

/// The name nearest to `displayName` on which the three rules agree; empty when nothing of it is left.
[[nodiscard]] std::string safeDisplayName(std::string_view displayName);

}  // namespace wrapio
