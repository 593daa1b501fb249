// What every process of the program does first.
#pragma once

#include <QStringList>

namespace wrapio {

/// Keeps libraries quiet and the process alive when a reader of its output goes away. Before anything else.
void prepareProcess();

/// The arguments without the program's name.
[[nodiscard]] QStringList programArguments(int argc, char* argv[]);

}  // namespace wrapio
