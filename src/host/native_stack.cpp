#include "host/native_stack.h"

#include <pthread.h>

#include <cstddef>

namespace quorvelin {
namespace {

// Any stack that scripts are run on can be trusted to have this much left.
constexpr std::uintptr_t kGuessedSize = 128 * 1024;

struct StackRange {
    std::uintptr_t lowest = 0;
    std::uintptr_t end = 0;

    bool holds(std::uintptr_t address) const { return address >= lowest && address < end; }
};

StackRange askSystem() {
    StackRange range;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        void* start = nullptr;
        std::size_t size = 0;
        if (pthread_attr_getstack(&attributes, &start, &size) == 0) {
            range.lowest = reinterpret_cast<std::uintptr_t>(start);
            range.end = range.lowest + size;
        }
        pthread_attr_destroy(&attributes);
    }
    return range;
}

thread_local StackRange threadRange;

}  // namespace

std::uintptr_t hostStackLimit() {
    // The frame address and not that of a local: sanitizers keep locals elsewhere.
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (!threadRange.holds(here)) {
        const StackRange range = askSystem();
        if (!range.holds(here)) {
            return here > kGuessedSize ? here - kGuessedSize : 0;
        }
        threadRange = range;
    }
    return threadRange.lowest;
}

}  // namespace quorvelin
