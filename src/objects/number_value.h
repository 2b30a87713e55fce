// JSNumberValue, the record that carries every number: a double and a kind. Infinities and NaN are kinds, not
// values; arithmetic on them follows tables of its own, comparing is relative with a tolerance, and the text
// of a number never has an exponent.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"

namespace quorvelin {

enum class JSNumberKind : uint32_t { notANumber = 0, finite = 1, plusInfinity = 2, minusInfinity = 3 };

struct JSNumberValue {
    double value = 0.0;
    JSNumberKind kind = JSNumberKind::finite;

    // A record of kind finite, normalised: what is not finite becomes an infinity by its sign.
    // Quirk: a NaN that arises here counts as less than 0, so it becomes minus infinity and prints
    // "-Infinity".
    static JSNumberValue of(double number) {
        if (number - number == 0.0) [[likely]]
            return {number, JSNumberKind::finite};
        return {number, number > 0.0 ? JSNumberKind::plusInfinity : JSNumberKind::minusInfinity};
    }
    static JSNumberValue notANumber() { return {0.0, JSNumberKind::notANumber}; }

    // The text read by `radix`: NaN unless all of it was a number. A radix outside 1 to 36 gives NaN.
    static JSNumberValue fromText(const BString& text, int32_t radix);

    bool isFinite() const { return kind == JSNumberKind::finite; }

    JSNumberValue add(const JSNumberValue& right) const;
    JSNumberValue subtract(const JSNumberValue& right) const;
    JSNumberValue multiply(const JSNumberValue& right) const;
    JSNumberValue divide(const JSNumberValue& right) const;
    // The remainder of both sides cut to 32-bit integers, with the sign of the left.
    JSNumberValue modulo(const JSNumberValue& right) const;
    JSNumberValue bitOr(const JSNumberValue& right) const;
    JSNumberValue bitAnd(const JSNumberValue& right) const;
    JSNumberValue bitXor(const JSNumberValue& right) const;
    JSNumberValue shiftLeft(const JSNumberValue& right) const;
    JSNumberValue shiftRight(const JSNumberValue& right) const;
    JSNumberValue negate() const;
    // The bits of the value as a 32-bit integer, inverted; NaN for what is not finite.
    JSNumberValue complement() const;
    bool less(const JSNumberValue& right) const;

    // Finite and equal to 0 within the tolerance.
    bool isZero() const { return isFinite() && compareValues(value, 0.0) == 0; }

    // Compares with a relative tolerance, absolute near 0: -1, 0 or 1.
    static int32_t compareValues(double a, double b);

    // The number as text, without an exponent, with at most sixteen decimals.
    BString toText() const;
};

// The number that a text stands for in a conversion: 0 for an empty text and for one that is not a number
// through to its end, so that no conversion of a text gives NaN.
JSNumberValue numberOfText(const BString& text);

}  // namespace quorvelin
