#include "frontend/token.h"

namespace quorvelin {

const char* tokenKindName(int32_t kind) {
    switch (kind) {
#define QUORVELIN_TOKEN_KIND(number, name) \
    case number:                           \
        return #name;
        QUORVELIN_TOKEN_KINDS(QUORVELIN_TOKEN_KIND)
#undef QUORVELIN_TOKEN_KIND
        default:
            return "";
    }
}

}  // namespace quorvelin
