#include "Design/Animations.h"

namespace wrapio {

const Spring& Animations::snappy() {
    static const Spring spring(0.3, 0.7, 0);
    return spring;
}

const Spring& Animations::slowSpring() {
    static const Spring spring(0.6, 0.9, 0);
    return spring;
}

}  // namespace wrapio
