// A native stack of a chosen size. The engine walks trees and calls by recursion and reports "stack overflow"
// before the stack of its thread runs out, so the size of the stack is the depth that scripts can reach.
#pragma once

#include <cstddef>
#include <functional>

namespace quorvelin::tool {

// Enough for tens of thousands of calls within each other. More would not be kinder: a name that is a
// variable of an outer call is looked up through all the calls between, so that an endless recursion over it
// takes four times as long to end on twice the stack.
inline constexpr size_t kUsualStackMegabytes = 64;

// Runs `work` on a thread with a stack of this size, waits for it and gives its answer. Memory is used only
// as far as the work goes down. Where the system refuses such a stack a smaller one is taken, in the end the
// caller's own. `work` must not throw.
int runOnDeepStack(size_t megabytes, const std::function<int()>& work);

}  // namespace quorvelin::tool
