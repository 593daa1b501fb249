#include "ViewModels/AppListModel.h"

#include "ViewModels/ListChanges.h"

namespace wrapio {

namespace {

std::vector<QUuid> idsOf(const AppRowList& rows) {
    std::vector<QUuid> ids;
    ids.reserve(rows.size());
    for (const auto& row : rows)
        ids.push_back(row->id);
    return ids;
}

}  // namespace

int AppListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant AppListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AppRow& row = *m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole)
        return row.displayName;
    if (role < IdRole || role > BundleHintRole)
        return {};
    switch (static_cast<Role>(role)) {
    case IdRole:
        return canonicalText(row.id);
    case DisplayNameRole:
        return row.displayName;
    case HostRole:
        return row.host;
    case IsRunningRole:
        return row.isRunning;
    case IsOutdatedRole:
        return row.isOutdated;
    case IconUrlRole:
        return row.iconUrl;
    case BundleHintRole:
        return row.bundleHint;
    }
    return {};
}

QHash<int, QByteArray> AppListModel::roleNames() const {
    return {{IdRole, "appId"},
            {DisplayNameRole, "displayName"},
            {HostRole, "host"},
            {IsRunningRole, "isRunning"},
            {IsOutdatedRole, "isOutdated"},
            {IconUrlRole, "iconUrl"},
            {BundleHintRole, "bundleHint"}};
}

void AppListModel::show(const AppRowList& rows) {
    const auto countBefore = m_rows.size();
    for (const ListChange& change : listChanges(idsOf(m_rows), idsOf(rows)))
        apply(change, rows);
    refresh(rows);
    if (m_rows.size() != countBefore)
        Q_EMIT countChanged();
}

void AppListModel::apply(const ListChange& change, const AppRowList& rows) {
    const auto first = m_rows.begin() + change.first;
    switch (change.kind) {
    case ListChange::Kind::remove:
        beginRemoveRows({}, change.first, change.last);
        m_rows.erase(first, m_rows.begin() + change.last + 1);
        endRemoveRows();
        break;
    case ListChange::Kind::move: {
        // The base class counts the target with the moved row still in place.
        beginMoveRows({}, change.first, change.first, {}, change.to > change.first ? change.to + 1 : change.to);
        const auto moved = *first;
        m_rows.erase(first);
        m_rows.insert(m_rows.begin() + change.to, moved);
        endMoveRows();
        break;
    }
    case ListChange::Kind::insert:
        beginInsertRows({}, change.first, change.last);
        m_rows.insert(first, rows.begin() + change.first, rows.begin() + change.last + 1);
        endInsertRows();
        break;
    }
}

void AppListModel::refresh(const AppRowList& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (m_rows[i] == rows[i])
            continue;
        const bool differs = !m_rows[i]->looksLike(*rows[i]);
        m_rows[i] = rows[i];
        if (differs)
            Q_EMIT dataChanged(index(static_cast<int>(i)), index(static_cast<int>(i)));
    }
}

}  // namespace wrapio
