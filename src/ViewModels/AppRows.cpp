#include "ViewModels/AppRows.h"

#include "ViewModels/IconUrl.h"

#include <string_view>
#include <unordered_map>

namespace wrapio {

bool AppRow::looksLike(const AppRow& other) const {
    return id == other.id && displayName == other.displayName && host == other.host && iconUrl == other.iconUrl &&
           bundleHint == other.bundleHint && isRunning == other.isRunning && isOutdated == other.isOutdated;
}

void AppRows::rebuild(const std::vector<AppConfiguration>& records, const std::set<QUuid>& runningIds) {
    std::vector<AppRow> rows;
    rows.reserve(records.size());
    for (const AppConfiguration& record : records) {
        rows.push_back(makeRow(record));
        rows.back().isRunning = runningIds.contains(record.id);
    }
    addHints(rows);

    AppRowList shown;
    shown.reserve(rows.size());
    QHash<QUuid, std::shared_ptr<const AppRow>> byId;
    byId.reserve(static_cast<qsizetype>(rows.size()));
    for (AppRow& row : rows) {
        const auto known = m_byId.value(row.id);
        const bool unchanged =
            known && known->looksLike(row) && known->appName == row.appName && known->address == row.address;
        shown.push_back(unchanged ? known : std::make_shared<const AppRow>(std::move(row)));
        byId.insert(shown.back()->id, shown.back());
    }
    m_rows = std::move(shown);
    m_byId = std::move(byId);
}

AppRow AppRows::makeRow(const AppConfiguration& record) const {
    AppRow row;
    const auto known = m_byId.value(record.id);
    if (known && known->appName == record.appName && known->address == record.configuredURL) {
        row = *known;
    } else {
        row.id = record.id;
        row.appName = record.appName;
        row.address = record.configuredURL;
        row.displayName = record.displayName();
        row.host = record.configuredURL ? record.configuredURL->host().value_or(QString()) : QString();
        row.searchableName = SearchText(row.displayName);
        row.searchableHost = SearchText(row.host);
        row.places = BundlePlaces(row.displayName);
    }
    row.isOutdated = m_sources.isOutdated(record);
    row.iconUrl = appIconUrl(record.id, m_sources.iconRevision(record.id));
    return row;
}

void AppRows::addHints(std::vector<AppRow>& rows) const {
    // Of each file name, the first two rows that have it.
    std::unordered_map<std::string_view, std::pair<const AppRow*, const AppRow*>> owners;
    for (const AppRow& row : rows) {
        for (const std::string& name : row.places.names()) {
            auto& [first, second] = owners[name];
            if (!first)
                first = &row;
            else if (!second)
                second = &row;
        }
    }
    for (AppRow& row : rows) {
        row.bundleHint.clear();
        for (const std::string& name : row.places.names()) {
            const auto& [first, second] = owners[name];
            if (const AppRow* const other = first == &row ? second : first; other && row.bundleHint.isEmpty())
                row.bundleHint = sharedBundleHint(other->displayName);
        }
        if (row.bundleHint.isEmpty() && !row.places.agree())
            row.bundleHint = unsafeNameHint();
    }
}

std::vector<std::size_t> AppRows::matching(const QString& search) const {
    const QString trimmed = search.trimmed();
    const SearchText needle(trimmed);
    std::vector<std::size_t> positions;
    positions.reserve(m_rows.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const AppRow& row = *m_rows[i];
        if (trimmed.isEmpty() || row.searchableName.contains(needle) || row.searchableHost.contains(needle))
            positions.push_back(i);
    }
    return positions;
}

}  // namespace wrapio
