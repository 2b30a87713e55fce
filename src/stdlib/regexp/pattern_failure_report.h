// What a script is told when a regular expression could not be compiled or run for want of room.
#pragma once

#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "stdlib/regexp/regexp_matcher.h"

namespace quorvelin {

// Reports the failure. True when there was one, and the operation is to give null.
inline bool reportPatternFailure(PatternFailure failure, JSContext* ctx) {
    switch (failure) {
        case PatternFailure::none:
            return false;
        case PatternFailure::stackOverflow:
            ctx->reportError(u"stack overflow");
            return true;
        case PatternFailure::outOfMemory:
            ctx->reportError(nameText(WellKnownName::outOfMemory));
            return true;
        case PatternFailure::interrupted:
            return true;
    }
    return true;
}

}  // namespace quorvelin
