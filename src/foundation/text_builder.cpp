#include "foundation/text_builder.h"

#include <charconv>

namespace quorvelin {

void TextBuilder::appendDecimal(int64_t number) {
    char digits[24];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    for (const char* digit = digits; digit != end.ptr; ++digit) append(static_cast<char16_t>(*digit));
}

}  // namespace quorvelin
