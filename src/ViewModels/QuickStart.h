// The quick-start templates, as the views list and name them.
#pragma once

#include "Models/AppTemplate.h"

#include <QVariantList>

#include <optional>

namespace wrapio {

/// Every template for bindings, in the order in which it is shown: a map of `stableId`, `name`, `url`, `iconAssetName`,
/// `fallbackIcon`, `color` and `isDevMode`.
[[nodiscard]] QVariantList quickStartTemplates();

/// The template of that stable id.
[[nodiscard]] std::optional<AppTemplate> quickStartTemplate(const QString& stableId);

}  // namespace wrapio
