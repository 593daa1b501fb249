// A system whose health a test makes up.
#pragma once

#include "Platform/SystemHealth.h"

#include <QStringList>

#include <map>

namespace wrapio {

class FakeSystemHealth final : public SystemHealth {
public:
    SealReport verifySeal(const QString& bundlePath) const override {
        const auto found = seals.find(bundlePath);
        return found == seals.end() ? SealReport{} : found->second;
    }
    std::vector<Registration> registrations() const override { return registered; }
    FileResult<void> removeRegistration(const QString& identifier) override {
        removed << identifier;
        std::erase_if(registered, [&](const Registration& entry) { return entry.identifier == identifier; });
        return {};
    }
    std::vector<SurroundingsCheck> surroundings() const override { return checks; }

    std::map<QString, SealReport> seals;  ///< bundle → what is wrong with it; others are fine
    std::vector<Registration> registered;
    std::vector<SurroundingsCheck> checks;
    QStringList removed;
};

}  // namespace wrapio
