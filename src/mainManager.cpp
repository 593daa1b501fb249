// The entry of the manager.
#include "Platform/Linux/Machine.h"
#include "WrapioAppManager.h"
#include "WrapioAppProcess.h"

#include <QApplication>
#include <QQuickWindow>

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

/// Where the processor draws in any case, it need not play a graphics card: that takes twice the memory, is no faster,
/// and most of it stays once the windows are closed. A choice that somebody made stands.
void chooseRenderer() {
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND") && !qEnvironmentVariableIsSet("QSG_RHI_BACKEND") &&
        !wrapio::hasRenderNode())
        QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
}

}  // namespace

int main(int argc, char* argv[]) {
    wrapio::prepareProcess();
    const QStringList arguments = wrapio::programArguments(argc, argv);
    choosePlatform();
    chooseRenderer();
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
