// An error as the error sheet shows it.
#pragma once

#include "Platform/AnyError.h"

#include <QMetaType>
#include <QObject>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>

namespace wrapio {

struct AppErrorData {
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString message MEMBER message)
    Q_PROPERTY(QString details READ details)
    Q_PROPERTY(bool isRecoverable READ isRecoverable)

public:
    QUuid id = QUuid::createUuid();
    QString title = {};
    QString message = {};
    std::optional<AnyError> error = {};         ///< what went wrong underneath
    std::function<void()> recoveryAction = {};  ///< offered as a button; empty when there is nothing to offer

    /// The underlying error in words; empty when there is none.
    [[nodiscard]] QString details() const { return error ? error->description() : QString(); }
    [[nodiscard]] bool isRecoverable() const { return static_cast<bool>(recoveryAction); }
};

/// What is shown when a bundle could not be made. The message is the same whatever the cause.
[[nodiscard]] AppErrorData generationFailed(const AnyError& error);

}  // namespace wrapio
