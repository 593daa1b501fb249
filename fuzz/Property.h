// What must hold for every input.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace wrapio {

/// Ends the program, which the fuzzer takes for a finding, when `holds` is false.
inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "property does not hold: %s\n", what);
    std::abort();
}

}  // namespace wrapio
