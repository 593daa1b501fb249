// A value that announces its changes: first the coming value, then the change, then that it has changed.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace wrapio {

/// Keeps one observer registered for as long as it lives. Move-only.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : m_end(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : m_end(std::exchange(other.m_end, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            end();
            m_end = std::exchange(other.m_end, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { end(); }

    void end() {
        if (const auto end = std::exchange(m_end, nullptr))
            end();
    }

private:
    std::function<void()> m_end;
};

/// A list of callbacks that may be changed while it is being called: an observer that ends during a round is not
/// called any more, one that begins is called from the next round on.
template <typename... Arguments>
class Observers {
public:
    using Callback = std::function<void(Arguments...)>;

    [[nodiscard]] Subscription add(Callback callback) {
        const std::uint64_t key = ++m_state->lastKey;
        m_state->entries.push_back({key, std::make_shared<Callback>(std::move(callback))});
        return Subscription([weak = std::weak_ptr(m_state), key] {
            if (const auto state = weak.lock())
                std::erase_if(state->entries, [key](const Entry& entry) { return entry.key == key; });
        });
    }

    void notify(const Arguments&... arguments) const {
        const auto state = m_state;
        const std::vector<Entry> round = state->entries;
        for (const Entry& entry : round) {
            const bool registered =
                std::any_of(state->entries.begin(), state->entries.end(),
                            [&entry](const Entry& present) { return present.key == entry.key; });
            if (registered)
                (*entry.callback)(arguments...);
        }
    }

private:
    struct Entry {
        std::uint64_t key;
        std::shared_ptr<Callback> callback;
    };
    struct State {
        std::uint64_t lastKey = 0;
        std::vector<Entry> entries;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

/// An observable property of the main thread. Every assignment is announced, equal values included. Observers must not
/// change the system while they are being told: they queue what they want to do.
template <typename T>
class ObservableProperty {
public:
    explicit ObservableProperty(T initial = T()) : m_value(std::move(initial)) {}
    ObservableProperty(const ObservableProperty&) = delete;
    ObservableProperty& operator=(const ObservableProperty&) = delete;

    [[nodiscard]] const T& value() const { return m_value; }

    void set(T next) {
        m_willChange.notify(next);
        m_value = std::move(next);
        m_didChange.notify();
    }

    /// Calls `observer` with the coming value while `value()` is still the old one.
    [[nodiscard]] Subscription onWillChange(std::function<void(const T& next)> observer) {
        return m_willChange.add(std::move(observer));
    }

    /// Calls `observer` once `value()` is the new one.
    [[nodiscard]] Subscription onDidChange(std::function<void()> observer) {
        return m_didChange.add(std::move(observer));
    }

private:
    T m_value;
    Observers<T> m_willChange;
    Observers<> m_didChange;
};

}  // namespace wrapio
