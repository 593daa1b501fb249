// This program's windows, as the toolkit knows them.
#pragma once

#include "Views/ThisApplication.h"

namespace wrapio {

class QtThisApplication final : public ThisApplication {
public:
    /// Which windows come to the front is up to makeKeyAndOrderFront(): a desktop activates windows, not programs.
    void activate() override {}
    /// Windows that are kept hidden are among them.
    [[nodiscard]] std::vector<ApplicationWindow> windows() const override;
    void makeKeyAndOrderFront(const ApplicationWindow& window) override;
    void terminate() override;
};

}  // namespace wrapio
