// Who shows status items on a Linux desktop.
#pragma once

#include "Platform/StatusHosts.h"

#include <QDBusServiceWatcher>
#include <QObject>

#include <memory>

namespace wrapio {

/// Listens to the session bus, when there is one; asks it nothing on its own. Main thread.
class LinuxStatusHosts final : public QObject, public StatusHosts {
    Q_OBJECT

public:
    LinuxStatusHosts();

    [[nodiscard]] bool isPresent() const override;
    [[nodiscard]] Subscription onAppearance(std::function<void()> observer) override;

private Q_SLOTS:
    void look();

private:
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    Observers<> m_observers;
};

}  // namespace wrapio
