// The keys that change what others mean.
#pragma once

#include "Utilities/ObservableProperty.h"

#include <functional>

namespace wrapio {

/// Main thread. "Option" is the key that keyboards of this system label Alt.
class ModifierKeys {
public:
    ModifierKeys() = default;
    virtual ~ModifierKeys() = default;
    ModifierKeys(const ModifierKeys&) = delete;
    ModifierKeys& operator=(const ModifierKeys&) = delete;

    /// Whether Option is held at this moment, whoever has the keyboard.
    [[nodiscard]] virtual bool isOptionHeld() const = 0;
    /// Calls `flagsChanged` when Option goes down or up while this program has the keyboard, for as long as the answer
    /// lives. Each change reaches either the local or the global monitors.
    [[nodiscard]] virtual Subscription addLocalMonitor(std::function<void()> flagsChanged) = 0;
    /// The same for changes while another program has the keyboard.
    [[nodiscard]] virtual Subscription addGlobalMonitor(std::function<void()> flagsChanged) = 0;
    /// Whether anybody acts on changes now. While nobody does, monitors may stay silent, so that the program sleeps
    /// while people type elsewhere. Off at first.
    virtual void setWatching(bool isWatching) = 0;
};

}  // namespace wrapio
