// What external tools wrote, as text.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace wrapio {

/// `bytes` as UTF-8, every character kept; nothing when they are not valid UTF-8. Any thread.
[[nodiscard]] std::optional<QString> decodedUtf8(const QByteArray& bytes);

}  // namespace wrapio
