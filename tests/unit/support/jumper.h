// An object of a host's own whose conversions leave a jump pending, as script code behind a conversion may.
#pragma once

#include "objects/js_context.h"
#include "objects/js_object.h"

namespace quorvelin::support {

class Jumper final : public JSObject {
  public:
    // `calmReads`: how often its object may be taken before that jumps as well; once to store it in a list.
    explicit Jumper(int32_t calmReads = 0) : calmReads_(calmReads) {}

    void asString(BString& out, JSContext* ctx, JSObject*) override {
        out = BString(u"jump");
        jump(ctx);
    }
    void asExpression(BString& out, JSContext* ctx, JSObject* receiver) override {
        asString(out, ctx, receiver);
    }
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject*) override {
        out = JSNumberValue::of(4);
        jump(ctx);
    }
    bool asBoolean(JSContext* ctx, JSObject*) override {
        jump(ctx);
        return true;
    }
    JSObject* asObject(JSContext* ctx, JSObject*) override {
        if (calmReads_-- <= 0) jump(ctx);
        return shared();
    }

  private:
    static void jump(JSContext* ctx) { ctx->setCompletion(JSCompletion::breakLoop); }

    int32_t calmReads_;
};

// An argument list of one jumper. Its entries are handed out as they are, since a cell would take what stands
// behind the jumper and set off the jump when the list is made.
class JumperList final : public JSObject {
  public:
    // `count` entries, the one at `place` a jumper, the others the number 1.
    JumperList(int32_t count, int32_t place) : count_(count), place_(place) {}

    int32_t memberCount(JSContext*, JSObject*) override { return count_; }
    JSObject* memberAt(int32_t index, JSContext* ctx, JSObject* receiver) override {
        if (index < 0 || index >= count_) return nullptr;
        if (index == place_) return new Jumper();
        return ctx->makeNumber(JSNumberValue::of(1), receiver);
    }

  private:
    int32_t count_;
    int32_t place_;
};

}  // namespace quorvelin::support
