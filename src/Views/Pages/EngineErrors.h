// What went wrong in the engine, in words that people understand.
#pragma once

#include "Views/Pages/PlatformWebView.h"

namespace wrapio {

/// The domain of errors that have a number in the engine only.
inline const QString engineErrorDomain = QStringLiteral("net");

/// The error behind the engine's own number, which is below zero. `text` is what the engine says of it; it is used
/// where nothing better is known.
[[nodiscard]] PageError engineError(int code, const QString& text);

}  // namespace wrapio
