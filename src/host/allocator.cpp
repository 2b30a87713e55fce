#include "host/allocator.h"

#include <atomic>
#include <cstdlib>

namespace quorvelin {
namespace {

struct FailurePlan {
    bool active = false;
    bool failed = false;
    AllocationFailure duration = AllocationFailure::once;
    std::uint64_t remaining = 0;
};

thread_local FailurePlan plan;

// Number of threads with an active plan. While it is 0, as in all use outside of tests, an allocation costs
// one read of a word that never changes and does not touch the thread's own storage.
std::atomic<int> activePlans{0};

void deactivate() {
    if (plan.active) {
        plan.active = false;
        activePlans.fetch_sub(1, std::memory_order_relaxed);
    }
}

bool mustFail() {
    if (!plan.active) {
        return false;
    }
    if (plan.remaining > 1) {
        --plan.remaining;
        return false;
    }
    plan.failed = true;
    if (plan.duration == AllocationFailure::once) {
        deactivate();
    }
    return true;
}

inline bool mayFail() {
    return __builtin_expect(activePlans.load(std::memory_order_relaxed) != 0, 0);
}

}  // namespace

void failAllocation(std::uint64_t count, AllocationFailure duration) {
    deactivate();
    plan = {true, false, duration, count};
    activePlans.fetch_add(1, std::memory_order_relaxed);
}

void cancelAllocationFailure() {
    deactivate();
}

bool allocationHasFailed() {
    return plan.failed;
}

}  // namespace quorvelin

extern "C" {

void* _smalloc(std::size_t size) {
    if (quorvelin::mayFail() && quorvelin::mustFail()) {
        return nullptr;
    }
    return std::malloc(size != 0 ? size : 1);
}

void* _srealloc(void* block, std::size_t size) {
    if (quorvelin::mayFail() && quorvelin::mustFail()) {
        return nullptr;
    }
    return std::realloc(block, size != 0 ? size : 1);
}

void _sfree(void* block) {
    std::free(block);
}

}  // extern "C"
