// Taking a text apart at separators.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"

namespace quorvelin {

class JSContext;
class JSObject;

// The first place at or behind `start` (which is not negative) where `text` stands in `whole`, or -1.
int32_t findUnits(const BString& whole, const BString& text, int32_t start);

// What `split` gives: an array of the parts of `text`, with a reference for the caller, or null. The
// arguments are the separator, a text or a regular expression, and a limit.
JSObject* splitText(const BString& text, JSObject* args, JSContext* ctx, JSObject* receiver);

}  // namespace quorvelin
