#include "stdlib/split_text.h"

#include <cstring>

#include "foundation/number_text.h"
#include "objects/js_context.h"
#include "stdlib/regexp/pattern_failure_report.h"
#include "stdlib/regexp/regexp_matcher.h"

namespace quorvelin {

int32_t findUnits(const BString& whole, const BString& text, int32_t start) {
    const char16_t* units = whole.data();
    const size_t bytes = static_cast<size_t>(text.length()) * sizeof(char16_t);
    for (int32_t i = start; i <= whole.length() - text.length(); ++i) {
        if (units[i] == text[0] && std::memcmp(units + i, text.data(), bytes) == 0) return i;
    }
    return -1;
}

namespace {

// The separators of one `split`: finds them from left to right.
class SeparatorFinder {
  public:
    SeparatorFinder() : text_(u",") {}

    // Takes the separator from a value. False when a jump is pending.
    bool take(JSObject& value, JSContext* ctx, JSObject* receiver) {
        isPattern_ = value.valueType(ctx, receiver) == JSValueType::expression;
        if (isPattern_) {
            // Quirk: only the source of a regular expression is used; its flags do not count.
            value.asExpression(text_, ctx, receiver);
        } else {
            value.asString(text_, ctx, receiver);
        }
        return !ctx->isStopped();
    }

    bool isEmpty() const { return text_.isEmpty(); }

    // The next separator in the rest of `whole` from `from` on: its distance from there and its length. False
    // when there is none.
    bool find(const BString& whole, int32_t from, int32_t& distance, int32_t& length) {
        if (isPattern_) {
            matcher_.matchPatternOnce(whole, text_, distance, length, from);
            return distance >= 0;
        }
        const int32_t place = findUnits(whole, text_, from);
        distance = place - from;
        length = text_.length();
        return place >= 0;
    }

    PatternFailure failure() const { return matcher_.failure(); }

  private:
    BString text_;
    bool isPattern_ = false;
    JSRegExpMatcher matcher_;
};

}  // namespace

JSObject* splitText(const BString& text, JSObject* args, JSContext* ctx, JSObject* receiver) {
    // 1. The array.
    Value array(ctx->makeArray(receiver));
    if (ctx->isStopped() || !array) return nullptr;

    // 2. The separator, and how many of them count: a negative limit is none.
    SeparatorFinder separators;
    int32_t limit = -1;
    const int32_t count = args != nullptr ? args->memberCount(ctx, receiver) : 0;
    if (ctx->isStopped()) return nullptr;
    if (count > 0) {
        const Value separator(args->memberAt(0, ctx, receiver));
        if (ctx->isStopped()) return nullptr;
        if (separator) {
            if (!separators.take(*separator, ctx, receiver)) return nullptr;
            JSObject::argInteger(args, 1, limit, ctx, receiver);
            if (ctx->isStopped()) return nullptr;
        }
    }

    // 3. Quirk: a text is not split into its characters; the empty separator gives undefined.
    if (separators.isEmpty()) return ctx->makeUndefined(receiver);

    // 4., 5. The parts in front of the separators.
    const auto store = [&](int32_t index, int32_t start, int32_t length) {
        const Value part(ctx->makeString(text.substr(start, length), receiver));
        if (ctx->isStopped() || !part) return false;
        const Value stored(array->setItem(index, part.get(), ctx, receiver));
        return !ctx->isStopped() && stored;
    };
    // Quirk: a pattern that matches the empty text does not move on, and without a limit this never ends. It
    // is not to fill the memory, so after many such turns the parts are no longer kept.
    constexpr int32_t kManyStandingTurns = 65536;
    int32_t standingTurns = 0;
    int32_t rest = 0;
    int32_t i = 0;
    // Quirk: the limit says how many separators are used; the rest of the text is kept all the same.
    while (limit < 0 || i < limit) {
        int32_t distance = 0;
        int32_t length = 0;
        if (!separators.find(text, rest, distance, length)) break;
        standingTurns = distance + length == 0 && limit < 0 ? standingTurns + 1 : 0;
        if (standingTurns > kManyStandingTurns) {
            standingTurns = kManyStandingTurns;
            continue;
        }
        if (!store(i, rest, distance)) return nullptr;
        rest += distance + length;
        ++i;
    }
    if (reportPatternFailure(separators.failure(), ctx)) return nullptr;

    // 6. Quirk: what is left goes one place further than the next, and leaves a hole.
    if (rest < text.length() && !store(i + 1, rest, text.length() - rest)) return nullptr;
    return array.take();
}

}  // namespace quorvelin
