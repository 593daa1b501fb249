// What the editor sheet is open for.
#pragma once

#include "Models/AppTemplate.h"

#include <QMetaType>
#include <QObject>
#include <QUuid>

#include <optional>

namespace wrapio {

/// How the form starts: empty, with the record's values, or with those of a quick-start template.
enum class ConfigurationMode { create, edit, template_ };

/// Identifies one opening of the sheet. A new app's record may not exist yet: then the sheet makes it.
struct AppEditingContext {
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id)
    Q_PROPERTY(bool isNew MEMBER isNew)

public:
    QUuid id = QUuid::createUuid();
    ConfigurationMode mode = ConfigurationMode::create;
    std::optional<QUuid> appId = {};              ///< the record; absent for a blank new app
    std::optional<AppTemplate> appTemplate = {};  ///< in template mode
    bool isNew = true;                            ///< cancelling takes the record away again
    std::optional<QUuid> previousSelection = {};  ///< selected again when a new app is cancelled
};

}  // namespace wrapio
