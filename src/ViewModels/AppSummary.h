// The little that a dialog tells of a record.
#pragma once

#include "Models/AppConfiguration.h"

#include <QMetaType>
#include <QObject>

namespace wrapio {

struct AppSummary {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString displayName MEMBER displayName)

public:
    QString id;
    QString displayName;

    [[nodiscard]] static AppSummary of(const AppConfiguration& config) {
        return {canonicalText(config.id), config.displayName()};
    }
};

}  // namespace wrapio
