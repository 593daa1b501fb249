// Access to the process-wide instance of a service.
#pragma once

#include <cassert>

namespace wrapio {

/// Gives `Service` a `shared()` that answers the instance which the composition root built. Tests build their own
/// instances and never use it.
template <typename Service>
class SharedInstance {
public:
    /// The process-wide instance. The composition root must have set it.
    [[nodiscard]] static Service& shared() {
        assert(s_instance);
        return *s_instance;
    }

    /// For the composition root; null when the instance goes away.
    static void setShared(Service* instance) { s_instance = instance; }

private:
    static inline Service* s_instance = nullptr;
};

}  // namespace wrapio
