#include "Platform/Caller.h"

namespace wrapio {

namespace {

thread_local CallerPointer present;

}  // namespace

CallerScope::CallerScope(CallerPointer caller)
    : m_previous(std::exchange(present, std::move(caller))) {}

CallerScope::~CallerScope() {
    present = std::move(m_previous);
}

const CallerPointer& CallerScope::current() {
    return present;
}

}  // namespace wrapio
