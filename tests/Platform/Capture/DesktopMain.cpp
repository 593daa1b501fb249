// The entry of test programs that need a display with a window manager.

#include "Platform/System/PrivateDesktop.h"

#include <QGuiApplication>

#include <gmock/gmock.h>

#include <cstdio>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    const QGuiApplication application(argc, argv);
    const wrapio::PrivateDesktop desktop;
    if (!desktop.works()) {
        std::fputs("Could not start Xvfb, dbus-daemon and openbox\n", stderr);
        return 1;
    }
    return RUN_ALL_TESTS();
}
