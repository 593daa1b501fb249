#include "ViewModels/AppRows.h"

#include "ViewModels/IconUrl.h"

#include <string_view>
#include <unordered_map>

namespace wrapio {

namespace {

/// Whether the row's name and all that follows from it are those of `record`.
bool isMadeFrom(const AppRow& row, const AppConfiguration& record) {
    return row.appName == record.appName && row.address == record.configuredURL;
}

AppRow namedRow(const AppConfiguration& record) {
    AppRow row;
    row.id = record.id;
    row.appName = record.appName;
    row.address = record.configuredURL;
    row.displayName = record.displayName();
    row.host = record.configuredURL ? record.configuredURL->host().value_or(QString()) : QString();
    row.searchableName = SearchText(row.displayName);
    row.searchableHost = SearchText(row.host);
    row.places = BundlePlaces(row.displayName);
    return row;
}

}  // namespace

bool AppRow::looksLike(const AppRow& other) const {
    return id == other.id && displayName == other.displayName && host == other.host && iconUrl == other.iconUrl &&
           bundleHint == other.bundleHint && isRunning == other.isRunning && isOutdated == other.isOutdated;
}

void AppRows::rebuild(const std::vector<AppConfiguration>& records, const std::set<QUuid>& runningIds) {
    AppRowList rows;
    rows.reserve(records.size());
    QHash<QUuid, Row> byId;
    byId.reserve(static_cast<qsizetype>(records.size()));
    bool sameNames = records.size() == m_rows.size();
    for (const AppConfiguration& record : records) {
        const Row known = m_byId.value(record.id);
        rows.push_back(rowOf(record, known, runningIds.contains(record.id)));
        sameNames = sameNames && known && isMadeFrom(*known, record);
    }
    if (!sameNames)
        addHints(rows);
    for (const Row& row : rows)
        byId.insert(row->id, row);
    m_rows = std::move(rows);
    m_byId = std::move(byId);
}

AppRows::Row AppRows::rowOf(const AppConfiguration& record, const Row& known, bool isRunning) const {
    const bool sameName = known && isMadeFrom(*known, record);
    const bool isOutdated = m_sources.isOutdated(record);
    const quint64 revision = m_sources.iconRevision(record.id);
    if (sameName && known->isOutdated == isOutdated && known->isRunning == isRunning && known->iconRevision == revision)
        return known;
    AppRow row = sameName ? *known : namedRow(record);
    row.isRunning = isRunning;
    row.isOutdated = isOutdated;
    row.iconRevision = revision;
    // Asking for a picture that does not exist would be reported as an error each time a card is made.
    if (!known || known->iconRevision != revision)
        row.iconUrl = m_sources.hasIcon(record.id) ? appIconUrl(record.id, revision) : QString();
    else
        row.iconUrl = known->iconUrl;
    return std::make_shared<const AppRow>(std::move(row));
}

void AppRows::addHints(AppRowList& rows) {
    // Of each file name, the first two rows that have it.
    std::unordered_map<std::string_view, std::pair<const AppRow*, const AppRow*>> owners;
    owners.reserve(rows.size());
    for (const Row& row : rows) {
        for (const std::string& name : row->places.names()) {
            auto& [first, second] = owners[name];
            if (!first)
                first = row.get();
            else if (!second)
                second = row.get();
        }
    }
    std::vector<QString> hints;
    hints.reserve(rows.size());
    for (const Row& row : rows) {
        QString hint = row->places.agree() ? QString() : unsafeNameHint();
        for (const std::string& name : row->places.names()) {
            const auto& [first, second] = owners.at(name);
            if (const AppRow* const other = first == row.get() ? second : first)
                hint = sharedBundleHint(other->displayName);
        }
        hints.push_back(std::move(hint));
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i]->bundleHint == hints[i])
            continue;
        AppRow changed = *rows[i];
        changed.bundleHint = hints[i];
        rows[i] = std::make_shared<const AppRow>(std::move(changed));
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
