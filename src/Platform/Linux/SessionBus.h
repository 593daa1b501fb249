// What is asked of the session bus. Main thread.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace wrapio {

/// True when there is a session bus that lets us in. Never starts one.
[[nodiscard]] bool isSessionBusReachable();

/// Asks the application that has the bus name `desktopId` to come to the front. `token` is what the desktop gave us for
/// that, empty when it gave nothing. `done` comes later: true when the application did as it was asked. An application
/// that does not run is not started.
void activateOnSessionBus(const QString& desktopId, const QByteArray& token, std::function<void(bool)> done);

/// True when something on the session bus shows status items.
[[nodiscard]] bool hasStatusItemHost();

}  // namespace wrapio
