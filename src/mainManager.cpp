// The entry of the manager.
#include "WrapioAppManager.h"
#include "WrapioAppProcess.h"

#include <QApplication>

namespace {

/// The display that there is, and none where there is none: commands, requests and the watch over running apps work
/// all the same. A choice that somebody made for all Qt programs stands.
void choosePlatform() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    QByteArray platforms = "offscreen";
    if (qEnvironmentVariableIsSet("DISPLAY"))
        platforms = "xcb;" + platforms;
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        platforms = "wayland;" + platforms;
    qputenv("QT_QPA_PLATFORM", platforms);
}

}  // namespace

int main(int argc, char* argv[]) {
    wrapio::prepareProcess();
    const QStringList arguments = wrapio::programArguments(argc, argv);
    choosePlatform();
    const QApplication application(argc, argv);
    qunsetenv("QT_QPA_PLATFORM");
    QApplication::setApplicationName(QStringLiteral("Wrapio"));
    QApplication::setApplicationVersion(QStringLiteral(WRAPIO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.wrapio.Wrapio"));
    // The program goes on when its windows are closed.
    QApplication::setQuitOnLastWindowClosed(false);
    wrapio::WrapioAppManager manager(arguments);
    return manager.run();
}
