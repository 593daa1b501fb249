// What people see of the manager.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <QUuid>

namespace wrapio {

/// The windows and the status item, as the manager calls them. Main thread. `token` is what the desktop or the other
/// process gave so that a window may come to the front; it may be empty.
class ManagerInterface {
public:
    ManagerInterface() = default;
    virtual ~ManagerInterface() = default;
    ManagerInterface(const ManagerInterface&) = delete;
    ManagerInterface& operator=(const ManagerInterface&) = delete;

    /// The catalogue is open and commands are taken. In the background no window is shown.
    virtual void start(bool background) = 0;
    /// Brings the program to the front, as a second start does.
    virtual void activate(const QByteArray& token) = 0;
    /// Takes addresses that other software handed over, one by one in this order.
    virtual void open(const QStringList& urls, const QByteArray& token) = 0;
    /// Shows the editor of an app of the catalogue. False when this interface has none.
    virtual bool edit(const QUuid& app, const QByteArray& token) = 0;
};

}  // namespace wrapio
