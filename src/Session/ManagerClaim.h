// Finds out whether this process becomes the manager.
#pragma once

#include "Platform/CatalogueLock.h"
#include "Platform/LocalChannel.h"
#include "Platform/Scheduler.h"

#include <functional>

namespace wrapio {

/// Looks for a manager and asks for the catalogue, again and again without blocking, until one of the two is there: a
/// command that holds the catalogue is waited for. Main thread.
class ManagerClaim {
public:
    struct Outcome {
        std::function<void()> becomesManager;                           ///< the catalogue is held
        std::function<void(std::unique_ptr<LocalChannel>)> isAnswered;  ///< another manager has answered
        std::function<void(const CatalogueBusy&)> fails;                ///< neither within the time
    };

    /// Everything must outlive this.
    ManagerClaim(CatalogueLock& lock, LocalCall call, Scheduler& scheduler);

    /// Calls one of `outcome`, now or within `seconds`.
    void start(double seconds, Outcome outcome);

private:
    void look();

    CatalogueLock& m_lock;
    LocalCall m_call;
    Scheduler& m_scheduler;
    Outcome m_outcome;
    double m_deadline = 0;
    ScheduledTask m_next;
};

}  // namespace wrapio
