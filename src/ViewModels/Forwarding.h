// Ties observable properties to Qt's property system.
#pragma once

#include "Utilities/ObservableProperty.h"

#include <QVariant>

#include <optional>

namespace wrapio {

/// Emits the signal `changed` of `owner` after each change of `property`, so that bindings read it again.
template <typename T, typename Owner>
[[nodiscard]] Subscription forward(ObservableProperty<T>& property, Owner& owner, void (Owner::*changed)()) {
    return property.onDidChange([&owner, changed] { Q_EMIT(owner.*changed)(); });
}

/// A value for bindings; `undefined` there when it is absent.
template <typename T>
[[nodiscard]] QVariant toVariant(const std::optional<T>& value) {
    return value ? QVariant::fromValue(*value) : QVariant();
}

}  // namespace wrapio
