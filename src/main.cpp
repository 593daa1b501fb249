// The program's entry.
#include "WrapioApp.h"

#include <QGuiApplication>

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

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

int main(int argc, char* argv[]) {
    qInstallMessageHandler(showFatalOnly);
    silenceLibraries();
    // A reader that goes away early, as in "wrapio list | head -1", is no reason to die in the middle of a change.
    std::signal(SIGPIPE, SIG_IGN);
    // A command needs fonts and image formats but no display: it must run where there is none. The environment is left
    // alone, since the apps that are launched inherit it.
    std::vector<char*> arguments(argv, argv + argc);
    std::array platform = {std::string("-platform"), std::string("offscreen")};
    if (argc > 1)
        arguments.insert(arguments.begin() + 1, {platform[0].data(), platform[1].data()});
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    const QGuiApplication application(count, arguments.data());
    QGuiApplication::setApplicationName(QStringLiteral("Wrapio"));
    QGuiApplication::setApplicationVersion(QStringLiteral(WRAPIO_VERSION));
    return wrapio::WrapioApp().run(QGuiApplication::arguments().sliced(1));
}
