#include "objects/constructor_object.h"

namespace quorvelin {

JSObject* JSConstructorObject::assign(JSObject* value, JSContext*, JSObject*) {
    return value != nullptr ? value->shared() : nullptr;
}

void JSConstructorObject::memberName(BString& out, JSContext*, JSObject*) {
    out = nameText(className_);
}

JSObject* JSConstructorObject::finishConstruction(JSObject* made, JSContext* ctx, JSObject* receiver) {
    if (made != nullptr && receiver != nullptr) {
        // Quirk: the receiver is not passed on to its own assignment.
        const Value stored(receiver->assign(made, ctx, nullptr));
    }
    return made;
}

}  // namespace quorvelin
