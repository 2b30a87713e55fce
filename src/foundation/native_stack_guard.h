// The guard that keeps deep nesting from running out of native stack: scripts, trees and patterns may nest as
// deeply as they like, and whoever recurses over them asks here before going down.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorvelin {

namespace detail {
// Sanitizers make frames several times as large.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr uintptr_t kFrameFactor = 6;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr uintptr_t kFrameFactor = 6;
#else
inline constexpr uintptr_t kFrameFactor = 1;
#endif
#else
inline constexpr uintptr_t kFrameFactor = 1;
#endif

// Room for what an ordinary function body nests.
inline constexpr uintptr_t kCallMargin = 64 * 1024 * kFrameFactor;

// The address below which the calling thread's stack counts as short; 0 until it was asked for.
inline constinit thread_local uintptr_t stackFloor = 0;
uintptr_t findStackFloor();
}  // namespace detail

// True when less native stack than a fixed reserve is left to the calling thread. What runs between two
// questions must fit into the reserve. A host that runs a machine on a stack that is not its thread's own (a
// fiber) gets no protection from it, and no false alarm either while that stack lies above the thread's.
inline bool nativeStackIsShort(uintptr_t margin = 0) {
    const uintptr_t here = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
    uintptr_t floor = detail::stackFloor;
    if (floor == 0) [[unlikely]]
        floor = detail::findStackFloor();
    return here < floor + margin;
}

// The same for a call, which is refused while its body still has some room: so an endless recursion ends at a
// call, with one message, and not in the midst of some expression whose every part would report.
inline bool nativeStackIsShortForCall() {
    return nativeStackIsShort(detail::kCallMargin);
}

}  // namespace quorvelin
