// The program on the session bus.
#pragma once

#include "Platform/ApplicationBus.h"

#include <memory>

namespace wrapio {

/// Owns the name com.wrapio.Wrapio and answers org.freedesktop.Application at /com/wrapio/Wrapio.
class SessionBusApplication final : public ApplicationBus {
public:
    SessionBusApplication();
    ~SessionBusApplication() override;

    [[nodiscard]] bool join(ApplicationCalls calls) override;

private:
    class Object;
    std::unique_ptr<Object> m_object;
};

}  // namespace wrapio
