// A manager that nobody sees.
#pragma once

#include "Services/URLRequestRouter.h"
#include "Session/ManagerInterface.h"

namespace wrapio {

/// Shows nothing; requests wait in their slots and are announced.
class WindowlessInterface final : public ManagerInterface {
public:
    /// `notificationCenter` must outlive this.
    explicit WindowlessInterface(NotificationCenter& notificationCenter)
        : m_router(notificationCenter, {[] {}, [] {}}) {}

    void start(bool) override {}
    void activate(const QByteArray&) override {}
    bool edit(const QUuid&, const QByteArray&) override { return false; }
    void open(const QStringList& urls, const QByteArray&) override {
        for (const QString& url : urls)
            m_router.handleIncomingURL(url);
    }

private:
    URLRequestRouter m_router;
};

}  // namespace wrapio
