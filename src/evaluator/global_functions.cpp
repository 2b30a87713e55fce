// The five functions that every context answers: _eval, parseInt, parseFloat, escape and unescape.
#include "foundation/character.h"
#include "foundation/number_text.h"
#include "foundation/text_builder.h"
#include "objects/js_context.h"
#include "objects/member_request.h"

namespace quorvelin {

namespace {

JSObject* callEval(JSContext& self, JSMemberRequest& request) {
    return self.evalArguments(request.argument, request.ctx, request.receiver);
}

JSObject* callParseInt(JSContext& self, JSMemberRequest& request) {
    const int32_t number = self.parseIntArguments(request.argument, request.ctx, request.receiver);
    if (request.ctx->isStopped()) return nullptr;
    return self.makeNumber(JSNumberValue::of(number), request.receiver);
}

JSObject* callParseFloat(JSContext& self, JSMemberRequest& request) {
    const double number = self.parseFloatArguments(request.argument, request.ctx, request.receiver);
    if (request.ctx->isStopped()) return nullptr;
    return self.makeNumber(JSNumberValue::of(number), request.receiver);
}

JSObject* callEscape(JSContext& self, JSMemberRequest& request) {
    BString text;
    self.escapeArguments(text, request.argument, request.ctx, request.receiver);
    return request.ctx->isStopped() ? nullptr : self.makeString(text, request.receiver);
}

JSObject* callUnescape(JSContext& self, JSMemberRequest& request) {
    BString text;
    self.unescapeArguments(text, request.argument, request.ctx, request.receiver);
    return request.ctx->isStopped() ? nullptr : self.makeString(text, request.receiver);
}

// Quirk: the function that runs a text has this name alone; `eval` does not exist.
constexpr NativeMember<JSContext> kFunctions[] = {
    {WellKnownName::evalName, JSValueType::function, nullptr, nullptr, callEval},
    {WellKnownName::parseInt, JSValueType::function, nullptr, nullptr, callParseInt},
    {WellKnownName::parseFloat, JSValueType::function, nullptr, nullptr, callParseFloat},
    {WellKnownName::escape, JSValueType::function, nullptr, nullptr, callEscape},
    {WellKnownName::unescape, JSValueType::function, nullptr, nullptr, callUnescape},
};

}  // namespace

bool JSContext::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kFunctions, *this, request) || JSParentedObject::dispatchMember(request);
}

JSObject* JSContext::evalArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (!argString(args, 0, text, ctx, receiver)) return nullptr;
    Value value(evaluateText(text, receiver));
    return ctx->isStopped() ? nullptr : value.take();
}

int32_t JSContext::parseIntArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (!argString(args, 0, text, ctx, receiver)) return 0;
    int32_t radix = 10;
    if (!argInteger(args, 1, radix, ctx, receiver) && ctx->isStopped()) return 0;
    return parseIntText(text, radix);
}

// Quirk: whether all of the text was a number does not matter, so NaN is never the result; and radix 10 reads
// a number with fraction and exponent and cuts it afterwards, so "1e3" is 1000.
int32_t JSContext::parseIntText(const BString& text, int32_t radix) {
    return truncateToInt32(JSNumberValue::fromText(text, radix).value);
}

double JSContext::parseFloatArguments(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (!argString(args, 0, text, ctx, receiver)) return 0.0;
    return parseFloatText(text);
}

double JSContext::parseFloatText(const BString& text) {
    return JSNumberValue::fromText(text, 10).value;
}

void JSContext::escapeArguments(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    argString(args, 0, text, ctx, receiver);
    escapeText(out, text.data());
}

// Quirk: the code of a character is written in decimal, without leading zeros.
void JSContext::escapeText(BString& out, const char16_t* text) {
    TextBuilder builder;
    for (; *text != 0; ++text) {
        if (isAlphabetic(*text) || isDecimalDigit(*text)) {
            builder.append(*text);
        } else if (isSpace(*text)) {
            builder.append(u'+');
        } else {
            builder.append(u'%');
            builder.appendDecimal(*text);
        }
    }
    out = builder.text();
}

void JSContext::unescapeArguments(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    argString(args, 0, text, ctx, receiver);
    unescapeText(out, text);
}

// Quirk: the positions are counted from different places in the text before and behind a "%", so this undoes
// what `escapeText` does only for texts without one.
void JSContext::unescapeText(BString& out, const BString& text) {
    TextBuilder result;
    // 1. What is left of the text, as a range of a copy: the part in front is what has been deleted from it.
    BString plain(text);
    for (int32_t k = 0; k < plain.length(); ++k) {
        if (plain[k] == u'+') plain.buffer()[k] = u' ';
    }
    int32_t start = 0;
    const auto left = [&] { return plain.length() - start; };
    const auto unit = [&](int32_t index) { return plain[start + index]; };
    int32_t i = 0;
    while (left() > 0) {
        // 2. The next "%", unless a zero comes first.
        int32_t p = i;
        while (p < left() && unit(p) != u'%' && unit(p) != 0) ++p;
        if (p >= left() || unit(p) == 0) break;
        // 3. As many units as the position counts, from where the search began.
        if (p > 0) result.append(plain.data() + start + i, p < left() - i ? p : left() - i);
        // 4. The text is shortened by its front, and the position counts on in what remains.
        const int32_t k = i + p + 1;
        start += p + 1;
        // 5.
        if (k >= left()) break;
        const char16_t c = unit(k);
        i = k + 1;
        const auto atEnd = [&] { return i >= left(); };
        const auto write = [&](int32_t v) { result.append(static_cast<char16_t>(v)); };
        if (c == u'x' || c == u'X') {
            // 6.
            if (atEnd()) break;
            int32_t v = hexadecimalDigitValue(unit(i++));
            if (v >= 0) {
                if (!atEnd()) {
                    const int32_t second = hexadecimalDigitValue(unit(i++));
                    if (second >= 0) v = v * 16 + second;
                }
                write(v);
            }
        } else if (isDecimalDigit(c)) {
            // 7.
            int32_t v = c - u'0';
            for (int32_t digits = 1; digits < 3 && !atEnd(); ++digits) {
                const char16_t next = unit(i++);
                if (!isDecimalDigit(next)) break;
                v = v * 10 + (next - u'0');
            }
            write(v);
        }
        // 8.
        if (atEnd()) break;
    }
    // 9.
    result.append(plain.data() + start, left());
    out = result.text();
}

}  // namespace quorvelin
