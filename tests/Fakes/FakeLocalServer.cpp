#include "Fakes/FakeLocalServer.h"

#include <utility>

namespace wrapio {

namespace {

/// What one side has received.
struct Side {
    LocalChannel::Events events;
    QByteArray arrived;
    bool isClosed = false;
};

class FakeLocalChannel final : public LocalChannel {
public:
    FakeLocalChannel(Scheduler& scheduler, std::shared_ptr<Side> own, std::shared_ptr<Side> other)
        : m_scheduler(scheduler)
        , m_own(std::move(own))
        , m_other(std::move(other)) {}
    ~FakeLocalChannel() override {
        m_own->events = {};
        m_other->isClosed = true;
        deliver(m_scheduler, m_other);
    }

    void listen(Events events) override {
        m_own->events = std::move(events);
        deliver(m_scheduler, m_own);
    }
    void send(const QByteArray& bytes) override {
        m_other->arrived += bytes;
        deliver(m_scheduler, m_other);
    }

private:
    static void deliver(Scheduler& scheduler, const std::shared_ptr<Side>& side) {
        scheduler.async([side] {
            if (!side->arrived.isEmpty() && side->events.received) {
                const auto received = side->events.received;
                received(std::exchange(side->arrived, {}));
            }
            if (side->isClosed && side->arrived.isEmpty()) {
                if (const auto closed = std::exchange(side->events, {}).closed)
                    closed();
            }
        });
    }

    Scheduler& m_scheduler;
    std::shared_ptr<Side> m_own;
    std::shared_ptr<Side> m_other;
};

}  // namespace

FileResult<void> FakeLocalServer::open(Accepted accepted) {
    if (failure)
        return tl::unexpected(*failure);
    m_accepted = std::move(accepted);
    return {};
}

std::unique_ptr<LocalChannel> FakeLocalServer::call() {
    if (!m_accepted)
        return nullptr;
    const auto here = std::make_shared<Side>();
    const auto there = std::make_shared<Side>();
    m_accepted(std::make_unique<FakeLocalChannel>(m_scheduler, there, here));
    return std::make_unique<FakeLocalChannel>(m_scheduler, here, there);
}

}  // namespace wrapio
