// The binary operators: one function for all, so that compound assignments share it, and the comparison that
// the comparing operators and the sorting of arrays are made of.
#pragma once

#include "foundation/name.h"
#include "objects/js_object.h"

namespace quorvelin {

// Applies the operator with this text. A null operand, an undefined one and an unknown operator give null,
// silently. The left operand can take the operator over by a member named "operator$" and the operator. The
// operands are borrowed, the result carries a reference.
JSObject* applyBinary(const Name& op, JSObject* left, JSObject* right, JSContext* ctx, JSObject* receiver);

// The operator that a compound assignment applies: its text without the last character.
Name operatorOfAssignment(const Name& op);

// What `compareOperands` answers when a jump became pending.
inline constexpr int32_t kComparisonStopped = -2;

// -1, 0 or 1 as `left` is less than, equal to or greater than `right`.
int32_t compareOperands(JSObject* left, JSObject* right, JSContext* ctx, JSObject* receiver);

}  // namespace quorvelin
