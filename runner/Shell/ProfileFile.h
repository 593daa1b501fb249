// Small text files of the profile, for the person only.
#pragma once

#include "RunnerCore/FileReader.h"
#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"

#include <gio/gio.h>

#include <string>

namespace wrapio {

/// The text of the file at `path`; empty when there is none, or more than `limit` bytes.
inline std::string readProfileFile(const std::string& path, std::size_t limit = std::size_t{1024} * 1024) {
    return readSmallFile(path, limit).value_or("");
}

/// Replaces the file at `path` in one step. Says on standard error when it cannot.
inline void writeProfileFile(const std::string& path, const std::string& text) {
    constexpr int privateMode = 0600;
    GError* error = nullptr;
    if (!g_file_set_contents_full(path.c_str(), text.data(), static_cast<gssize>(text.size()),
                                  G_FILE_SET_CONTENTS_CONSISTENT, privateMode, &error))
        reportLine("not remembered: " + takeMessage(error));
}

}  // namespace wrapio
