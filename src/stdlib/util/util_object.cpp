#include "stdlib/util/util_object.h"

#include "foundation/number_text.h"
#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/member_request.h"
#include "stdlib/util/printf_engine.h"
#include "stdlib/util/text_masks.h"

namespace quorvelin {

namespace {

// Takes the arguments of a format from a script's list.
class ScriptPrintfEngine final : public JSPrintfEngine {
  public:
    ScriptPrintfEngine(JSObject* args, JSContext* ctx, JSObject* receiver)
        : args_(args), ctx_(ctx), receiver_(receiver) {}

  protected:
    char16_t nextChar() override { return static_cast<char16_t>(nextInt()); }
    int16_t nextShort() override { return static_cast<int16_t>(nextInt()); }
    int32_t nextInt() override {
        int32_t value = 0;
        JSObject::argInteger(args_, index_++, value, ctx_, receiver_);
        return value;
    }
    int32_t nextLong() override { return nextInt(); }
    int64_t nextInt64() override { return nextInt(); }
    double nextDouble() override {
        double value = 0.0;
        JSObject::argNumber(args_, index_++, value, ctx_, receiver_);
        return value;
    }
    double nextLongDouble() override { return nextDouble(); }
    void* nextPointer() override {
        ++index_;
        return nullptr;
    }
    uint32_t nextPointerValue() override {
        ++index_;
        return 0;
    }
    const BString& nextString() override {
        text_.clear();
        JSObject::argString(args_, index_++, text_, ctx_, receiver_);
        return text_;
    }
    void releaseString() override {}

  private:
    JSObject* args_;
    JSContext* ctx_;
    JSObject* receiver_;
    BString text_;
};

JSObject* textResult(const BString& text, JSMemberRequest& request) {
    return request.ctx->isStopped() ? nullptr : request.ctx->makeString(text, request.receiver);
}

JSObject* callPrintf(JSUtil&, JSMemberRequest& request) {
    BString format;
    BString text;
    if (JSObject::argString(request.argument, 0, format, request.ctx, request.receiver)) {
        text = ScriptPrintfEngine(request.argument, request.ctx, request.receiver).run(format.data());
    }
    return textResult(text, request);
}

template <void (JSUtil::*method)(BString&, JSObject*, JSContext*, JSObject*)>
JSObject* callMethod(JSUtil& self, JSMemberRequest& request) {
    BString text;
    (self.*method)(text, request.argument, request.ctx, request.receiver);
    return textResult(text, request);
}

constexpr NativeMember<JSUtil> kMembers[] = {
    {WellKnownName::printf, JSValueType::function, nullptr, nullptr, callPrintf},
    {WellKnownName::printx, JSValueType::function, nullptr, nullptr, callMethod<&JSUtil::callPrintx>},
    {WellKnownName::printd, JSValueType::function, nullptr, nullptr, callMethod<&JSUtil::callPrintd>},
};

}  // namespace

bool JSUtil::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSObject::dispatchMember(request);
}

void JSUtil::callPrintx(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    out.clear();
    BString mask;
    BString text;
    if (argString(args, 0, mask, ctx, receiver) && argString(args, 1, text, ctx, receiver))
        printx(out, mask, text);
}

void JSUtil::printx(BString& out, const BString& mask, const BString& text) {
    out = fitIntoMask(mask, text);
}

void JSUtil::callPrintd(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver) {
    out.clear();
    BString format;
    double time = 0.0;
    if (argString(args, 0, format, ctx, receiver) && argNumber(args, 1, time, ctx, receiver))
        printd(out, format, time);
}

void JSUtil::printd(BString& out, const BString& format, double time) {
    out = formatDate(format, truncateToInt64(time));
}

}  // namespace quorvelin
