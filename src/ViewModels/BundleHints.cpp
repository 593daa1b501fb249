#include "ViewModels/BundleHints.h"

#include "Utilities/BundleNames.h"

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

BundlePlaces::BundlePlaces(const QString& displayName) {
    const std::string name = displayName.toStdString();
    const std::string generated = generatedBundleName(name);
    m_isWritable = !generated.empty();
    for (std::string place : {generated, launchedBundleName(name), cataloguedBundleName(name)}) {
        if (!place.empty() && std::find(m_names.begin(), m_names.end(), place) == m_names.end())
            m_names.push_back(std::move(place));
    }
}

bool BundlePlaces::overlap(const BundlePlaces& other) const {
    return std::find_first_of(m_names.begin(), m_names.end(), other.m_names.begin(), other.m_names.end()) !=
           m_names.end();
}

QString safeNameFor(const QString& displayName) {
    return QString::fromStdString(safeDisplayName(displayName.toStdString()));
}

QString sharedBundleHint(const QString& otherDisplayName) {
    return u"“%1” has the same bundle: of apps with one name only the one made last exists."_s.arg(otherDisplayName);
}

QString unsafeNameHint() {
    return u"Some characters of this name cannot be part of a file name, so the app may not be found again."_s;
}

}  // namespace wrapio
