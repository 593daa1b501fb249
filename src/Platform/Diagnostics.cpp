#include "Platform/Diagnostics.h"

#include <atomic>
#include <cstdio>

namespace wrapio {

namespace {

std::atomic currentDestination = DiagnosticsDestination::standardOutput;

std::FILE* streamOf(DiagnosticsDestination destination) {
    switch (destination) {
    case DiagnosticsDestination::standardOutput:
        return stdout;
    case DiagnosticsDestination::standardError:
        return stderr;
    case DiagnosticsDestination::nowhere:
        return nullptr;
    }
    return nullptr;
}

}  // namespace

void setDiagnosticsDestination(DiagnosticsDestination destination) {
    currentDestination = destination;
}

void printDiagnostics(const QString& line) {
    std::FILE* const stream = streamOf(currentDestination);
    if (!stream)
        return;
    const QByteArray text = line.toUtf8() + '\n';
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stream);
    std::fflush(stream);
}

}  // namespace wrapio
