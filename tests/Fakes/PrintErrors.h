// Lets GoogleTest show the platform's errors in failure messages.
#pragma once

#include "Platform/FileSystem.h"
#include "Platform/ToolRunner.h"

#include <ostream>

namespace wrapio {

inline void PrintTo(const FileError& error, std::ostream* out) {
    *out << error.description().toStdString();
}
inline void PrintTo(const LaunchError& error, std::ostream* out) {
    *out << error.description().toStdString();
}

}  // namespace wrapio
