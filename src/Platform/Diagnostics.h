// The one way in which the program tells what it does.
#pragma once

#include <QString>

namespace wrapio {

enum class DiagnosticsDestination {
    standardOutput,  ///< where the manager writes
    standardError,   ///< where the command line writes when it is asked to be verbose
    nowhere,         ///< so that scripts find nothing but the answer on standard output
};

/// Sets where lines go from now on. For the program's entry only.
void setDiagnosticsDestination(DiagnosticsDestination destination);

/// Writes one line in UTF-8, and tells the present caller, if there is one who wants to know. A line break inside `line`
/// is written as it is. Any thread.
void printDiagnostics(const QString& line);

}  // namespace wrapio
