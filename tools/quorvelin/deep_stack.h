// A large native stack. The engine walks trees and calls by recursion and reports "stack overflow" before the
// stack of its thread runs out; on the stack that a process starts with that happens after a few thousand
// calls.
#pragma once

#include <functional>

namespace quorvelin::tool {

// Runs `work` on a thread with a large stack, waits for it and gives its answer. Only the address space is
// reserved: memory is used as far as the work goes down. Where the system refuses such a stack a smaller one
// is taken, in the end the caller's own. `work` must not throw.
int runOnDeepStack(const std::function<int()>& work);

}  // namespace quorvelin::tool
