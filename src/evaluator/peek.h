// Peeking: most of what scripts compute is numbers in variables, and a number can be read out of a cell, and
// another put in, without making the objects that stand for references and values in between. A peek does
// that where nobody could tell the difference: it looks at cells of the engine's own objects and at nothing
// else, and gives up, having done nothing, when it meets anything that could run a script or ask a host.
#pragma once

#include "frontend/node.h"
#include "objects/js_context.h"

namespace quorvelin {

// The number in the cell, when it holds a finite number object that has no members of its own.
bool peekNumber(const JSProperty* cell, double& number);

// Puts a number into the cell, as `assign` of it would; reuses the number object that only this cell holds.
// What then stands in the cell, with a reference, or null without memory.
JSObject* storeNumber(JSProperty* cell, double number, JSContext* context, JSObject* receiver);

// A string or a finite number of the engine's that only the caller holds, so that nobody could tell it from a
// copy.
bool isFreshValue(const JSObject* value);

// Puts such a value into the cell, as `assign` of it would. What then stands in the cell, with a reference.
JSObject* storeFreshValue(JSProperty* cell, Value value);

// Computes a binary operator on finite numbers: the number or truth value that `applyBinary` would give, or
// false when the result is not finite or the operator is none of these.
bool applyToNumbers(const Name& op, double left, double right, PeekedValue& out);

// The truth value of a condition, by peeking. `node` may be null.
bool peekTruth(JSNode* node, JSContext* context, bool& truth);

}  // namespace quorvelin
