// Messages by name inside the process, without payload.
#pragma once

#include "Utilities/ObservableProperty.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace wrapio {

/// Main thread only. Those who post and those who observe know the name and nothing of each other. What a notification
/// is about waits where its poster put it, so that an observer that comes too late still finds it.
class NotificationCenter {
public:
    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    /// Calls `observer` at every post of `name` for as long as the answer lives.
    [[nodiscard]] Subscription addObserver(std::string_view name, std::function<void()> observer) {
        return m_observers[std::string(name)].add(std::move(observer));
    }

    /// Calls the observers of `name`, in the order in which they came, before it returns.
    void post(std::string_view name) const {
        const auto found = m_observers.find(name);
        if (found == m_observers.end())
            return;
        const Observers<> observers = found->second;  // an observer may add one for a name that is new here
        observers.notify();
    }

private:
    std::map<std::string, Observers<>, std::less<>> m_observers;
};

}  // namespace wrapio
