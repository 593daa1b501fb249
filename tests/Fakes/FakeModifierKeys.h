// An Option key that a test presses.
#pragma once

#include "Platform/ModifierKeys.h"

namespace wrapio {

class FakeModifierKeys final : public ModifierKeys {
public:
    bool isOptionHeld() const override { return m_isHeld; }
    Subscription addLocalMonitor(std::function<void()> flagsChanged) override {
        return m_local.add(std::move(flagsChanged));
    }
    Subscription addGlobalMonitor(std::function<void()> flagsChanged) override {
        return m_global.add(std::move(flagsChanged));
    }
    void setWatching(bool isWatching) override { watching = isWatching; }

    /// Presses or releases the key while this program has the keyboard, or while another one has it.
    void setHeldHere(bool isHeld) {
        m_isHeld = isHeld;
        m_local.notify();
    }
    void setHeldElsewhere(bool isHeld) {
        m_isHeld = isHeld;
        m_global.notify();
    }
    /// As if the key had changed while nobody watched.
    void setHeldUnseen(bool isHeld) { m_isHeld = isHeld; }

    bool watching = false;

private:
    bool m_isHeld = false;
    Observers<> m_local;
    Observers<> m_global;
};

}  // namespace wrapio
