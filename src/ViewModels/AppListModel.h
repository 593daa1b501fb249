// The apps that the grid shows, as a list model.
#pragma once

#include "ViewModels/AppRows.h"

#include <QAbstractListModel>

namespace wrapio {

/// Tells its views each single change, so that they can animate it: a reorder is moves, never a reset. Main thread.
class AppListModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        IdRole = Qt::UserRole + 1,  ///< the canonical text
        DisplayNameRole,
        HostRole,
        IsRunningRole,
        IsOutdatedRole,
        IconUrlRole,
        BundleHintRole,  ///< why the app might not be found or not be alone in its bundle; empty when all is well
    };
    Q_ENUM(Role)

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] int count() const { return rowCount(); }

    /// Shows `rows` instead of what was shown.
    void show(const AppRowList& rows);

Q_SIGNALS:
    void countChanged();

private:
    void apply(const struct ListChange& change, const AppRowList& rows);
    void refresh(const AppRowList& rows);

    AppRowList m_rows;
};

}  // namespace wrapio
