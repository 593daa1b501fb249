// Being an application that the desktop can reach.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

namespace wrapio {

/// What the desktop asks for. `token` lets a window come to the front; it is empty when the desktop gave none.
struct ApplicationCalls {
    std::function<void(const QByteArray& token)> activate;
    std::function<void(const QStringList& urls, const QByteArray& token)> open;
    std::function<void(const QString& action, const QByteArray& token)> activateAction;
};

/// Main thread.
class ApplicationBus {
public:
    ApplicationBus() = default;
    virtual ~ApplicationBus() = default;
    ApplicationBus(const ApplicationBus&) = delete;
    ApplicationBus& operator=(const ApplicationBus&) = delete;

    /// Can be reached from now on, until this goes away. False when there is no bus, or when another process is known
    /// to it as this application.
    [[nodiscard]] virtual bool join(ApplicationCalls calls) = 0;
};

}  // namespace wrapio
