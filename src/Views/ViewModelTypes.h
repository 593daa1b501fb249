// The view models, as QML knows them.
#pragma once

#include "ViewModels/AppListModel.h"
#include "ViewModels/ConfigurationViewModel.h"
#include "ViewModels/DashboardViewModel.h"
#include "ViewModels/EditorSheetViewModel.h"

#include <QtQml/qqml.h>

namespace wrapio {

struct AppListModelType {
    Q_GADGET
    QML_FOREIGN(wrapio::AppListModel)
    QML_NAMED_ELEMENT(AppListModel)
    QML_UNCREATABLE("The dashboard's view model has it.")
};

struct ConfigurationViewModelType {
    Q_GADGET
    QML_FOREIGN(wrapio::ConfigurationViewModel)
    QML_NAMED_ELEMENT(ConfigurationViewModel)
    QML_UNCREATABLE("The editor's view model has it.")
};

struct EditorSheetViewModelType {
    Q_GADGET
    QML_FOREIGN(wrapio::EditorSheetViewModel)
    QML_NAMED_ELEMENT(EditorSheetViewModel)
    QML_UNCREATABLE("The dashboard's view model has it.")
};

struct DashboardViewModelType {
    Q_GADGET
    QML_FOREIGN(wrapio::DashboardViewModel)
    QML_NAMED_ELEMENT(DashboardViewModel)
    QML_UNCREATABLE("The window makes it.")
};

}  // namespace wrapio
