#include "objects/number_value.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "foundation/number_text.h"

namespace quorvelin {

namespace {

using Kind = JSNumberKind;

// Records that come from the tables. Their double is 0, which is what reading such a number as a number
// gives; an operand that a table hands on as it is keeps its own.
constexpr JSNumberValue kNaN = {0.0, Kind::notANumber};
constexpr JSNumberValue kPlusInfinity = {0.0, Kind::plusInfinity};
constexpr JSNumberValue kMinusInfinity = {0.0, Kind::minusInfinity};

// How far two numbers may lie apart, relative to the right one, and still be equal: ten times the first power
// of ten that is lost when added to 1.
constexpr double computeTolerance() {
    double x = 1.0;
    while (1.0 + x != 1.0) x *= 0.1;
    return 10.0 * x;
}
constexpr double kTolerance = computeTolerance();

// The decimals that are written: how often 1 can be divided by 10 before it is lost when added to 1.
constexpr int computePrecision() {
    int count = 0;
    for (double x = 1.0; 1.0 + x != 1.0; x /= 10.0) ++count;
    return count;
}
constexpr int kPrecision = computePrecision();
static_assert(kPrecision == 16);

}  // namespace

JSNumberValue JSNumberValue::fromText(const BString& text, int32_t radix) {
    if (radix < 1 || radix > 36) return notANumber();
    int32_t consumed = 0;
    const double parsed = radix == 10 ? parseDouble(text.data(), &consumed)
                                      : static_cast<double>(parseInteger32(text.data(), radix, &consumed));
    if (consumed == text.length()) return of(parsed);
    return {parsed, Kind::notANumber};
}

JSNumberValue numberOfText(const BString& text) {
    int32_t consumed = 0;
    const double number = parseDouble(text.data(), &consumed);
    return JSNumberValue::of(!text.isEmpty() && consumed == text.length() ? number : 0.0);
}

JSNumberValue JSNumberValue::add(const JSNumberValue& right) const {
    if (isFinite() && right.isFinite()) [[likely]]
        return of(value + right.value);
    switch (kind) {
        case Kind::finite:
            return right;
        case Kind::plusInfinity:
        case Kind::minusInfinity:
            // Quirk: adding minus infinity to either infinity gives NaN, adding plus infinity keeps the left
            // one.
            return right.kind == Kind::notANumber || right.kind == Kind::minusInfinity ? kNaN : *this;
        default:
            return *this;
    }
}

JSNumberValue JSNumberValue::subtract(const JSNumberValue& right) const {
    if (isFinite() && right.isFinite()) [[likely]]
        return of(value - right.value);
    switch (kind) {
        case Kind::finite:
            return right;  // Quirk: 1 minus infinity is plus infinity; the sign stays.
        case Kind::plusInfinity:
            if (right.kind == Kind::finite) return *this;
            return right.kind == Kind::minusInfinity ? kPlusInfinity : kNaN;
        case Kind::minusInfinity:
            if (right.kind == Kind::finite) return *this;
            return right.kind == Kind::plusInfinity ? kMinusInfinity : kNaN;
        default:
            return *this;
    }
}

JSNumberValue JSNumberValue::multiply(const JSNumberValue& right) const {
    if (isFinite() && right.isFinite()) [[likely]]
        return of(value * right.value);
    if (kind == Kind::notANumber) return *this;
    if (right.kind == Kind::notANumber) return kNaN;
    // Quirk: a negative number times an infinity keeps the infinity's sign; an infinity times a negative
    // number changes it.
    if (kind == Kind::finite) return value == 0.0 ? kNaN : right;
    const JSNumberValue same = kind == Kind::plusInfinity ? kPlusInfinity : kMinusInfinity;
    const JSNumberValue opposite = kind == Kind::plusInfinity ? kMinusInfinity : kPlusInfinity;
    if (right.kind == Kind::finite) return right.value == 0.0 ? kNaN : right.value < 0.0 ? opposite : same;
    return right.kind == Kind::plusInfinity ? same : opposite;
}

JSNumberValue JSNumberValue::divide(const JSNumberValue& right) const {
    if (kind == Kind::notANumber) return *this;
    if (right.kind == Kind::notANumber) return kNaN;
    if (kind == Kind::finite) {
        if (right.kind != Kind::finite) return of(0.0);
        return right.value == 0.0 ? kNaN : of(value / right.value);
    }
    if (right.kind == Kind::minusInfinity) return kNaN;
    if (right.kind == Kind::plusInfinity) return *this;  // Quirk: infinity by plus infinity is the left one.
    if (right.value == 0.0) return kNaN;
    return (right.value > 0.0) == (kind == Kind::plusInfinity) ? kPlusInfinity : kMinusInfinity;
}

JSNumberValue JSNumberValue::modulo(const JSNumberValue& right) const {
    if (!isFinite() || !right.isFinite() || right.value == 0.0) return divide(right);
    // Quirk: both sides lose their fraction first.
    const int32_t divisor = truncateToInt32(right.value);
    if (divisor == 0) return kNaN;
    if (divisor == -1) return of(0.0);
    return of(truncateToInt32(value) % divisor);
}

namespace {

template <typename Operation>
JSNumberValue onBits(const JSNumberValue& left, const JSNumberValue& right, Operation operation) {
    if (!left.isFinite() || !right.isFinite()) return kNaN;
    return JSNumberValue::of(operation(truncateToInt32(left.value), truncateToInt32(right.value)));
}

}  // namespace

JSNumberValue JSNumberValue::bitOr(const JSNumberValue& right) const {
    return onBits(*this, right, [](int32_t a, int32_t b) { return a | b; });
}

JSNumberValue JSNumberValue::bitAnd(const JSNumberValue& right) const {
    return onBits(*this, right, [](int32_t a, int32_t b) { return a & b; });
}

JSNumberValue JSNumberValue::bitXor(const JSNumberValue& right) const {
    return onBits(*this, right, [](int32_t a, int32_t b) { return a ^ b; });
}

JSNumberValue JSNumberValue::shiftLeft(const JSNumberValue& right) const {
    return onBits(*this, right, [](int32_t a, int32_t b) {
        return static_cast<int32_t>(static_cast<uint32_t>(a) << (b & 31));
    });
}

JSNumberValue JSNumberValue::shiftRight(const JSNumberValue& right) const {
    return onBits(*this, right, [](int32_t a, int32_t b) { return a >> (b & 31); });
}

JSNumberValue JSNumberValue::negate() const {
    switch (kind) {
        case Kind::finite:
            return of(-value);
        case Kind::plusInfinity:
            return kMinusInfinity;
        case Kind::minusInfinity:
            return kPlusInfinity;
        default:
            return *this;
    }
}

JSNumberValue JSNumberValue::complement() const {
    return isFinite() ? of(~truncateToInt32(value)) : kNaN;
}

bool JSNumberValue::less(const JSNumberValue& right) const {
    if (isFinite() && right.isFinite()) return compareValues(value, right.value) < 0;
    if (kind == Kind::finite) return right.kind == Kind::plusInfinity;
    // Quirk: minus infinity is less than itself.
    return kind == Kind::minusInfinity && right.kind != Kind::notANumber;
}

int32_t JSNumberValue::compareValues(double a, double b) {
    const double magnitude = std::fabs(b);
    const double difference = a - b;
    // Far apart for numbers of this size: the division below could not bring them within the tolerance.
    if (std::fabs(difference) >= 1.0 && magnitude < 1e12) return difference < 0 ? -1 : 1;
    const double distance = magnitude <= kTolerance ? a : difference / magnitude;
    if (distance <= -kTolerance) return -1;
    if (distance >= kTolerance) return 1;
    return 0;
}

BString JSNumberValue::toText() const {
    switch (kind) {
        case Kind::notANumber:
            return BString(u"NaN");
        case Kind::plusInfinity:
            return BString(u"+Infinity");
        case Kind::minusInfinity:
            return BString(u"-Infinity");
        default:
            break;
    }
    // The longest finite number has 309 digits in front of the point.
    char digits[352];
    char* end;
    // Whole numbers are most of what scripts print.
    if (std::fabs(value) < 9e15 && value == static_cast<double>(static_cast<int64_t>(value)) &&
        !(value == 0.0 && std::signbit(value))) {
        end = std::to_chars(digits, digits + sizeof digits, static_cast<int64_t>(value)).ptr;
    } else {
        end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, kPrecision).ptr;
        while (end != digits && end[-1] == '0') --end;
        if (end != digits && end[-1] == '.') --end;
        if (end == digits) *end++ = '0';
    }
    BString text;
    if (text.reserve(static_cast<int32_t>(end - digits))) {
        for (char16_t* unit = text.buffer();
             const char digit : std::string_view(digits, static_cast<size_t>(end - digits))) {
            *unit++ = static_cast<char16_t>(digit);
        }
        text.buffer()[end - digits] = 0;
    }
    return text;
}

}  // namespace quorvelin
