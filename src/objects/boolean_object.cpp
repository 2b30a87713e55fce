#include "objects/boolean_object.h"

#include "objects/js_context.h"

namespace quorvelin {

JSValueType JSBooleanInstance::valueType(JSContext*, JSObject*) {
    return JSValueType::boolean;
}

bool JSBooleanInstance::asBoolean(JSContext*, JSObject*) {
    return value_;
}

JSObject* JSBooleanInstance::asObject(JSContext* ctx, JSObject* receiver) {
    return ctx->makeBoolean(value_, receiver);
}

void JSBooleanInstance::className(BString& out, JSContext*, JSObject*) {
    out = nameText(WellKnownName::BooleanClass);
}

JSObject* JSBooleanConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    // Quirk: the truth of the list of arguments counts, not that of the first one, so Boolean(false) is true.
    const bool truth = args != nullptr && args->asBoolean(ctx, receiver);
    return finishConstruction(ctx->makeBoolean(truth, receiver), ctx, receiver);
}

}  // namespace quorvelin
