// This program and its windows, among all that run.
#pragma once

#include <QString>

#include <vector>

namespace wrapio {

struct ApplicationWindow {
    quint64 number = 0;  ///< means something only to the application that listed it
    QString title;
    QString identifier;
    bool canBecomeMain = false;

    bool operator==(const ApplicationWindow&) const = default;
};

/// Main thread.
class ThisApplication {
public:
    ThisApplication() = default;
    virtual ~ThisApplication() = default;
    ThisApplication(const ThisApplication&) = delete;
    ThisApplication& operator=(const ThisApplication&) = delete;

    /// Brings the program to the front, over others.
    virtual void activate() = 0;
    /// The windows, in the platform's order. One that can be made again when it is asked for may be listed though it
    /// was closed.
    [[nodiscard]] virtual std::vector<ApplicationWindow> windows() const = 0;
    /// Shows a window in front of the others and gives it the keyboard.
    virtual void makeKeyAndOrderFront(const ApplicationWindow& window) = 0;
    /// Ends the program, once the event loop has its turn.
    virtual void terminate() = 0;
};

}  // namespace wrapio
