// Takes the bundle away that an app had under its old name.
#pragma once

#include "Models/AppConfiguration.h"
#include "ViewModels/ViewModelServices.h"

namespace wrapio {

/// To be called once the bundle of `after` stands. Ends the app that runs from the bundle of `before`, and removes that
/// bundle and its registration, wherever one of the three rules puts it, unless a record of the catalogue lives there.
/// A bundle that cannot be removed is reported in diagnostics.
void removeOldBundle(const AppConfiguration& before, const AppConfiguration& after, const ViewModelServices& services);

}  // namespace wrapio
