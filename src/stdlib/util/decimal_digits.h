// The decimal digits of a number as `util.printf` makes them: one at a time, by multiplication.
//
// Quirk: they differ from the exact ones in the last places, and the last is cut, not rounded; scripts see
// exactly these.
#pragma once

#include <cstdint>

namespace quorvelin {

class DecimalDigits {
  public:
    // How many digits are made; all behind them are zeros.
    static constexpr int32_t kCount = 16;

    // The digits of `value`, which is finite and not negative.
    explicit DecimalDigits(double value);

    // The power of ten of the first digit; 0 for the number 0.
    int32_t exponent() const { return exponent_; }

    // The digit at `position`, 0 being the first; a zero where none was made.
    char16_t at(int64_t position) const {
        return position < 0 || position >= kCount ? u'0' : static_cast<char16_t>(u'0' + digits_[position]);
    }

    // The position of the last digit that is not a zero, up to the position `end`; 0 when there is none.
    int32_t lastSignificant(int64_t end) const {
        int32_t position = end < kCount ? static_cast<int32_t>(end) : kCount - 1;
        while (position > 0 && digits_[position] == 0) --position;
        return position;
    }

  private:
    int32_t exponent_ = 0;
    uint8_t digits_[kCount] = {};
};

}  // namespace quorvelin
