// A dashboard over a catalogue that a test names.
#pragma once

#include "ViewModelFixture.h"
#include "ViewModels/DashboardViewModel.h"

#include <memory>

namespace wrapio {

class DashboardFixture : public ViewModelFixture {
protected:
    DashboardViewModel& makeDashboard(const std::vector<AppConfiguration>& records = {}) {
        dashboard = std::make_unique<DashboardViewModel>(makeServices(records));
        return *dashboard;
    }

    /// The names in the list model, in order.
    [[nodiscard]] QStringList shown() const {
        QStringList result;
        for (int row = 0; row < dashboard->appList()->rowCount(); ++row)
            result << at(row, AppListModel::DisplayNameRole).toString();
        return result;
    }
    [[nodiscard]] QVariant at(int row, AppListModel::Role role) const {
        return dashboard->appList()->data(dashboard->appList()->index(row), role);
    }
    [[nodiscard]] AppConfiguration record(std::size_t index) const { return store->configurations()[index]; }
    [[nodiscard]] QString idOf(std::size_t index) const { return canonicalText(record(index).id); }

    /// A change that anybody else might make.
    void rename(std::size_t index, const QString& name) {
        AppConfiguration changed = record(index);
        changed.appName = name;
        store->updateConfiguration(changed);
    }

    std::unique_ptr<DashboardViewModel> dashboard;
};

}  // namespace wrapio
