// The diagnostic sink. It does nothing: what is handed to it is told to nobody.
#pragma once

#include <cstdint>

namespace quorvelin {

// The code that regular expressions trace under.
inline constexpr uint32_t kTracedByRegExp = 0x1000000;

template <typename... Arguments>
void traceMessage(uint32_t /*code*/, const char16_t* /*format*/, const Arguments&... /*arguments*/) {}

}  // namespace quorvelin
