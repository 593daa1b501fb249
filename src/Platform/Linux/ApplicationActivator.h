// Brings other applications to the front.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

class QObject;

namespace wrapio {

/// Main thread. An application is asked over the session bus; whatever it answers, the window manager of an X11 display
/// is asked then, since it may hold back windows that raise themselves.
class ApplicationActivator {
public:
    ApplicationActivator();
    ApplicationActivator(const ApplicationActivator&) = delete;
    ApplicationActivator& operator=(const ApplicationActivator&) = delete;
    /// Sees what is under way to its end, so that a program may end right after it has asked. That takes as long as an
    /// application has to answer, 2 seconds, at most.
    ~ApplicationActivator();

    /// Returns at once. `busName` is empty when it is not known; an application that does not run is not started.
    /// `token` is what the desktop gave us for this, empty when it gave nothing.
    void activate(const QString& busName, qint64 processIdentifier, const QByteArray& token);

private:
    struct Request;
    void finish(const QObject& watcher);
    std::vector<Request> m_requests;  ///< those without an answer
};

}  // namespace wrapio
