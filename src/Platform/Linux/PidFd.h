// Handles of processes, which do not move on to another process when a number is used again.
#pragma once

// The C library of Debian 12 declares these for C only.
extern "C" {
#include <sys/pidfd.h>
}
