// The catalogue as the grid shows it: one row per record, with everything that is derived from it.
#pragma once

#include "Models/AppConfiguration.h"
#include "ViewModels/BundleHints.h"
#include "ViewModels/SearchText.h"

#include <QHash>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace wrapio {

/// One row. Never changed once it is shown: a change makes another row.
struct AppRow {
    QUuid id;
    QString displayName;
    QString host;
    QString iconUrl;     ///< empty when no icon is saved
    QString bundleHint;  ///< empty when there is nothing to hint at
    bool isRunning = false;
    bool isOutdated = false;

    // What the row was made from, kept so that it need not be made again.
    quint64 iconRevision = 0;
    std::optional<QString> appName;
    std::optional<WebAddress> address;
    SearchText searchableName;
    SearchText searchableHost;
    BundlePlaces places;

    /// True when both rows look the same.
    [[nodiscard]] bool looksLike(const AppRow& other) const;
};

using AppRowList = std::vector<std::shared_ptr<const AppRow>>;

/// Keeps the rows in step with the catalogue. What did not change is not computed again: with a thousand apps this runs
/// on every change.
class AppRows {
public:
    /// What of a row is not in the record.
    struct Sources {
        std::function<bool(const AppConfiguration&)> isOutdated;
        std::function<quint64(const QUuid&)> iconRevision;
        /// Asked anew only when the revision has changed.
        std::function<bool(const QUuid&)> hasIcon;
    };

    explicit AppRows(Sources sources)
        : m_sources(std::move(sources)) {}

    /// Makes the rows of `records`, in their order.
    void rebuild(const std::vector<AppConfiguration>& records, const std::set<QUuid>& runningIds);

    [[nodiscard]] const AppRowList& all() const { return m_rows; }
    /// The positions of the rows whose name or host contains `search`, white space at its ends aside; all of them when
    /// nothing else is left of it.
    [[nodiscard]] std::vector<std::size_t> matching(const QString& search) const;

private:
    using Row = std::shared_ptr<const AppRow>;

    [[nodiscard]] Row rowOf(const AppConfiguration& record, const Row& known, bool isRunning) const;
    static void addHints(AppRowList& rows);

    Sources m_sources;
    AppRowList m_rows;
    QHash<QUuid, Row> m_byId;
};

}  // namespace wrapio
