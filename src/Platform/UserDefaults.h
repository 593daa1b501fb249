// Byte strings kept by key between runs.
#pragma once

#include "Platform/FileSystem.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace wrapio {

class UserDefaults {
public:
    UserDefaults() = default;
    virtual ~UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

    /// The bytes under `key`; nothing when there are none or they cannot be read.
    [[nodiscard]] virtual std::optional<QByteArray> data(const QString& key) const = 0;
    /// Stores `bytes` durably: once this returns they survive a crash; until then the old bytes stand.
    /// Bytes that are there but cannot be read are not overwritten; that is a failure.
    [[nodiscard]] virtual FileResult<void> setData(const QByteArray& bytes, const QString& key) = 0;
    /// Copies the bytes under `key` aside, where no later call overwrites them. Answers where they are.
    virtual FileResult<QString> preserveCopy(const QString& key) = 0;
};

}  // namespace wrapio
