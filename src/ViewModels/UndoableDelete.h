// The latest deletion, while it can still be undone.
#pragma once

#include "Models/AppConfiguration.h"

#include <QImage>
#include <QMetaType>
#include <QObject>
#include <QUuid>

#include <optional>

namespace wrapio {

struct UndoableDelete {
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id)
    Q_PROPERTY(QString displayName READ displayName)

public:
    QUuid id = QUuid::createUuid();   ///< fresh for each deletion: it identifies the toast
    AppConfiguration config;          ///< the record as it was
    std::optional<QImage> icon = {};  ///< its saved icon
    std::size_t originalIndex = 0;    ///< its place in the catalogue

    [[nodiscard]] QString displayName() const { return config.displayName(); }
};

}  // namespace wrapio
