// What the app says to the terminal or the session's log that it was started from.
#pragma once

#include <cstdio>
#include <string>

namespace wrapio {

/// Writes `text`, one line of UTF-8, to standard error. GLib's own function would replace what the locale lacks.
inline void reportLine(const std::string& text) {
    const std::string line = "WrapioRunner: " + text + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace wrapio
