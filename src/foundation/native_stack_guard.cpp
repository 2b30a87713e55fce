#include "foundation/native_stack_guard.h"

#include "host/native_stack.h"

namespace quorvelin {

namespace {

// Room for what runs without asking: a native method, a conversion, a host's own operation. Sanitizers make
// frames several times as large.
#if defined(__SANITIZE_ADDRESS__)
constexpr uintptr_t kReserve = 768 * 1024;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr uintptr_t kReserve = 768 * 1024;
#else
constexpr uintptr_t kReserve = 128 * 1024;
#endif
#else
constexpr uintptr_t kReserve = 128 * 1024;
#endif

}  // namespace

uintptr_t detail::findStackFloor() {
    const uintptr_t limit = hostStackLimit();
    // Without an answer there is no guard; 1 stands for "asked".
    stackFloor = limit == 0 ? 1 : limit + kReserve;
    return stackFloor;
}

}  // namespace quorvelin
