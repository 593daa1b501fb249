#include "Platform/Diagnostics.h"

#include "Platform/Caller.h"

#include <unistd.h>

#include <atomic>
#include <cstdio>

namespace wrapio {

namespace {

std::atomic currentDestination = DiagnosticsDestination::standardOutput;

void writeTo(DiagnosticsDestination destination, const QByteArray& text) {
    switch (destination) {
    case DiagnosticsDestination::standardOutput:
        std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
        std::fflush(stdout);
        return;
    case DiagnosticsDestination::standardError:
        // Not through the stream, which libraries write to as well.
        ::dprintf(STDERR_FILENO, "%s", text.constData());
        return;
    case DiagnosticsDestination::nowhere:
        return;
    }
}

}  // namespace

void setDiagnosticsDestination(DiagnosticsDestination destination) {
    currentDestination = destination;
}

void printDiagnostics(const QString& line) {
    writeTo(currentDestination, line.toUtf8() + '\n');
    const CallerPointer caller = CallerScope::current();
    if (caller && caller->diagnostics)
        caller->diagnostics(line);
}

}  // namespace wrapio
