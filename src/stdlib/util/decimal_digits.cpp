#include "stdlib/util/decimal_digits.h"

namespace quorvelin {

DecimalDigits::DecimalDigits(double value) {
    if (value == 0) return;
    for (; value >= 10; ++exponent_) value *= 0.1;
    for (; value < 1; --exponent_) value *= 10;
    for (uint8_t& digit : digits_) {
        digit = static_cast<uint8_t>(value);
        value = (value - digit) * 10;
    }
}

}  // namespace quorvelin
