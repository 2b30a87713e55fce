// How far the native stack reaches. The engine walks trees and objects by recursion; with this it can stop in
// time and report a message instead of crashing.
#pragma once

#include <cstdint>

namespace quorvelin {

/// The lowest usable address of the stack that the caller runs on; the stack grows down to it. The answer is
/// kept per thread, so asking again is cheap. Where the system does not tell, or when the caller runs on a
/// stack that it made itself, the result is a cautious guess: a fixed distance below the caller.
std::uintptr_t hostStackLimit();

}  // namespace quorvelin
