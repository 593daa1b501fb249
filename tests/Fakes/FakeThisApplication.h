// A program with windows that a test lists.
#pragma once

#include "Views/ThisApplication.h"

#include <QStringList>

namespace wrapio {

class FakeThisApplication final : public ThisApplication {
public:
    void activate() override { log << QStringLiteral("activate"); }
    std::vector<ApplicationWindow> windows() const override { return list; }
    void makeKeyAndOrderFront(const ApplicationWindow& window) override {
        log << QStringLiteral("front %1").arg(window.number);
    }
    void terminate() override { log << QStringLiteral("terminate"); }

    std::vector<ApplicationWindow> list;
    QStringList log;
};

}  // namespace wrapio
