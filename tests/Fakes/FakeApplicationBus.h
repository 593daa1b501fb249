// A desktop whose calls a test makes.
#pragma once

#include "Platform/ApplicationBus.h"

namespace wrapio {

class FakeApplicationBus final : public ApplicationBus {
public:
    bool join(ApplicationCalls joined) override {
        if (isReachable)
            calls = std::move(joined);
        return isReachable;
    }

    bool isReachable = true;
    ApplicationCalls calls;
};

}  // namespace wrapio
