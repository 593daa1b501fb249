#include "WrapioAppProcess.h"

#include <QString>

#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>

namespace wrapio {

namespace {

/// Standard error belongs to what the program says itself; of Qt's own messages only those are worth a line that tell
/// of the program's end. QT_DEBUG shows all of them.
void showFatalOnly(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg || qEnvironmentVariableIsSet("QT_DEBUG"))
        ::dprintf(STDERR_FILENO, "wrapio: %s\n", qUtf8Printable(text));
}

/// Libraries of image formats tell of damaged pictures on the C library's standard error. Ours are written to the
/// descriptor itself, so that the stream can lead elsewhere.
void silenceLibraries() {
    std::FILE* const nowhere = qEnvironmentVariableIsSet("QT_DEBUG") ? nullptr : std::fopen("/dev/null", "we");
    if (nowhere)
        stderr = nowhere;
}

}  // namespace

void prepareProcess() {
    std::setlocale(LC_ALL, "");
    qInstallMessageHandler(showFatalOnly);
    silenceLibraries();
    // A reader that goes away early, as in "wrapio list | head -1", is no reason to die in the middle of a change.
    std::signal(SIGPIPE, SIG_IGN);
}

QStringList programArguments(int argc, char* argv[]) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

}  // namespace wrapio
