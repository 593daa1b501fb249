// What is worth knowing about a name before an app of that name is made.
#pragma once

#include <QString>

#include <string>
#include <vector>

namespace wrapio {

/// The file names under which the bundle of one display name is written and looked for.
class BundlePlaces {
public:
    BundlePlaces() = default;
    explicit BundlePlaces(const QString& displayName);

    /// True when all of them are one name.
    [[nodiscard]] bool agree() const { return m_names.size() == 1 && m_isWritable; }
    /// True when one of these names is also one of the other's.
    [[nodiscard]] bool overlap(const BundlePlaces& other) const;
    /// The different names, in UTF-8.
    [[nodiscard]] const std::vector<std::string>& names() const { return m_names; }

private:
    std::vector<std::string> m_names;
    bool m_isWritable = false;
};

/// The name nearest to `displayName` that gives one place; empty when there is none.
[[nodiscard]] QString safeNameFor(const QString& displayName);

/// Hints in words.
[[nodiscard]] QString sharedBundleHint(const QString& otherDisplayName);
[[nodiscard]] QString unsafeNameHint();

}  // namespace wrapio
