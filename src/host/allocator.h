// The allocator of all objects, buffers and nodes. Module and host share it, so that a block made on one side
// can be freed on the other. Beside the three operations stands a hook with which a test makes allocations
// fail, to show that every caller survives a null.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

/// Gives a block of `size` bytes, not cleared, aligned for any type; the caller frees it with `_sfree`. A
/// size of 0 gives a block too. Null when there is no memory.
void* _smalloc(std::size_t size);

/// Gives a block of `size` bytes that starts with the content of `block` and takes the place of it; a null
/// `block` makes it `_smalloc`. On failure the result is null and the old block stays valid and in the
/// caller's hands.
void* _srealloc(void* block, std::size_t size);

/// Frees a block of the two operations above. Null is allowed.
void _sfree(void* block);

}  // extern "C"

namespace quorvelin {

/// How long a planned failure lasts.
enum class AllocationFailure {
    once,    ///< the one allocation fails, those after it succeed
    onwards  ///< it and all after it fail, until `cancelAllocationFailure`
};

/// Makes the `count`-th allocation of the calling thread from now on fail, counted from 1; `_smalloc` and
/// `_srealloc` count alike. Replaces an earlier plan of the same thread. Other threads are not touched.
void failAllocation(std::uint64_t count, AllocationFailure duration = AllocationFailure::once);

/// Ends the plan of the calling thread, if it has one.
void cancelAllocationFailure();

/// Tells whether the plan of the calling thread has made an allocation fail; stays true until the next plan.
/// A test that tries the first, second, third ... allocation of an operation ends when this gives false.
bool allocationHasFailed();

}  // namespace quorvelin
