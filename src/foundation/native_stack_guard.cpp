#include "foundation/native_stack_guard.h"

#include "host/native_stack.h"

namespace quorvelin {

namespace {

// Room for what runs without asking: a native method, a conversion, a host's own operation.
constexpr uintptr_t kReserve = 128 * 1024 * detail::kFrameFactor;

}  // namespace

uintptr_t detail::findStackFloor() {
    const uintptr_t limit = hostStackLimit();
    // Without an answer there is no guard; 1 stands for "asked".
    stackFloor = limit == 0 ? 1 : limit + kReserve;
    return stackFloor;
}

}  // namespace quorvelin
