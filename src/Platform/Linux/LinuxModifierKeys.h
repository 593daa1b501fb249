// The Alt key of a Linux desktop, which stands for Option.
#pragma once

#include "Platform/Linux/X11KeyEvents.h"
#include "Platform/ModifierKeys.h"

#include <QObject>

#include <optional>

namespace wrapio {

/// Sees keys of this program everywhere, those of others on an X11 display only: no other desktop tells. Listens only
/// while it is told to watch. Main thread, with a QGuiApplication.
class LinuxModifierKeys final : public QObject, public ModifierKeys {
public:
    [[nodiscard]] bool isOptionHeld() const override;
    [[nodiscard]] Subscription addLocalMonitor(std::function<void()> flagsChanged) override;
    [[nodiscard]] Subscription addGlobalMonitor(std::function<void()> flagsChanged) override;
    void setWatching(bool isWatching) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void look(const Observers<>& observers);

    Observers<> m_local;
    Observers<> m_global;
    std::optional<X11KeyEvents> m_elsewhere;  ///< while it watches
    bool m_isWatching = false;
    bool m_wasHeld = false;
};

}  // namespace wrapio
