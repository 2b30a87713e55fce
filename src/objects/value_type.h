// The types of script values, as `valueType` and `memberType` answer them.
#pragma once

#include <cstdint>

namespace quorvelin {

enum class JSValueType : uint32_t {
    undefined = 0,
    string = 1,
    number = 2,
    boolean = 3,
    object = 4,
    function = 5,
    expression = 6,  // a regular expression
};

}  // namespace quorvelin
