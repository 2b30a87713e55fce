#include "machine/global_context.h"

#include "evaluator/function_object.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "objects/boolean_object.h"
#include "objects/number_object.h"
#include "stdlib/array_object.h"
#include "stdlib/date/date_object.h"
#include "stdlib/date/date_parser.h"
#include "stdlib/math_object.h"
#include "stdlib/regexp/pattern_failure_report.h"
#include "stdlib/regexp/regexp_object.h"
#include "stdlib/string_object.h"
#include "stdlib/util/util_object.h"

namespace quorvelin {

JSGlobalContext::JSGlobalContext()
    : arrayConstructor_(new JSArrayConstructor()),
      booleanConstructor_(new JSBooleanConstructor()),
      stringConstructor_(new JSStringConstructor()),
      numberConstructor_(new JSNumberConstructor()),
      functionConstructor_(new JSFunctionConstructor()),
      dateConstructor_(new JSDateConstructor()),
      mathObject_(new JSMath()),
      regExpConstructor_(new JSRegExpConstructor()),
      utilObject_(new JSUtil()) {}

JSGlobalContext::~JSGlobalContext() {
    for (JSObject* object :
         {arrayConstructor_, booleanConstructor_, stringConstructor_, numberConstructor_,
          functionConstructor_, dateConstructor_, mathObject_, regExpConstructor_, utilObject_}) {
        if (object != nullptr) object->release();
    }
}

// ---- Names ----

// What a name of the global context does. No script can replace one.
struct GlobalName {
    // How a get is answered: by the object, by a value made for the occasion, or by the rules of an
    // activation, which give null unless a script's own cell is in the way.
    enum class Get { object, make, fallThrough };
    enum class Call { object, make, nothing, fallThrough };

    WellKnownName name;
    JSValueType type;
    JSObject* JSGlobalContext::*object;
    Get get;
    Call call;

    static const GlobalName* find(const BString& name);
};

namespace {

constexpr JSValueType kObject = JSValueType::object;

}  // namespace

const GlobalName* GlobalName::find(const BString& name) {
    using G = JSGlobalContext;
    // Quirk: the first five cannot be read, only called, so `String.fromCharCode` finds nothing.
    static constexpr GlobalName kNames[] = {
        {WellKnownName::ArrayClass, kObject, &G::arrayConstructor_, Get::fallThrough, Call::object},
        {WellKnownName::StringClass, kObject, &G::stringConstructor_, Get::fallThrough, Call::object},
        {WellKnownName::NumberClass, kObject, &G::numberConstructor_, Get::fallThrough, Call::object},
        {WellKnownName::BooleanClass, kObject, &G::booleanConstructor_, Get::fallThrough, Call::object},
        {WellKnownName::FunctionClass, kObject, &G::functionConstructor_, Get::fallThrough, Call::object},
        {WellKnownName::Object, kObject, nullptr, Get::make, Call::make},
        {WellKnownName::Date, kObject, &G::dateConstructor_, Get::object, Call::object},
        {WellKnownName::Math, kObject, &G::mathObject_, Get::object, Call::object},
        {WellKnownName::RegExp, kObject, &G::regExpConstructor_, Get::object, Call::object},
        {WellKnownName::println, JSValueType::function, nullptr, Get::make, Call::nothing},
        {WellKnownName::util, kObject, &G::utilObject_, Get::object, Call::fallThrough},
    };
    const NameLookup lookup(name);
    if (lookup.atom() == nullptr || lookup.atom()->wellKnown() < 0) return nullptr;
    for (const GlobalName& candidate : kNames) {
        if (static_cast<int32_t>(candidate.name) == lookup.atom()->wellKnown()) return &candidate;
    }
    return nullptr;
}

bool JSGlobalContext::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    return GlobalName::find(name) != nullptr || JSGlobalBase::hasMember(name, ctx, receiver);
}

JSValueType JSGlobalContext::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    const GlobalName* global = GlobalName::find(name);
    return global != nullptr ? global->type : JSGlobalBase::memberType(name, ctx, receiver);
}

JSObject* JSGlobalContext::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const GlobalName* global = GlobalName::find(name);
    if (global != nullptr && global->get != GlobalName::Get::fallThrough) {
        if (global->get == GlobalName::Get::object) return Value::share(this->*global->object).take();
        // Quirk: each read of `Object` is a new object.
        if (global->name == WellKnownName::Object) return ctx->makeObject(receiver);
        return makeMethodRef(this, name, true, receiver);
    }
    return JSGlobalBase::getMember(name, ctx, receiver);
}

JSObject* JSGlobalContext::setMember(const BString& name, JSObject* value, JSContext* ctx,
                                     JSObject* receiver) {
    if (GlobalName::find(name) != nullptr) {
        ctx->reportError(u"not correct use prototype");
        return nullptr;
    }
    return JSGlobalBase::setMember(name, value, ctx, receiver);
}

bool JSGlobalContext::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    if (GlobalName::find(name) != nullptr) {
        ctx->reportError(u"not correct use prototype");
        return false;
    }
    return JSGlobalBase::deleteMember(name, ctx, receiver);
}

JSObject* JSGlobalContext::callMember(const BString& name, JSObject* args, JSContext* ctx,
                                      JSObject* receiver) {
    const GlobalName* global = GlobalName::find(name);
    if (global == nullptr || global->call == GlobalName::Call::fallThrough) {
        return JSGlobalBase::callMember(name, args, ctx, receiver);
    }
    switch (global->call) {
        case GlobalName::Call::object: {
            JSObject* constructor = this->*global->object;
            return constructor != nullptr ? constructor->call(args, ctx, receiver) : nullptr;
        }
        case GlobalName::Call::make: {
            Value object(ctx->makeObject(receiver));
            if (object && receiver != nullptr)
                const Value stored(receiver->assign(object.get(), ctx, nullptr));
            return object.take();
        }
        default:
            return nullptr;  // Quirk: println prints nothing.
    }
}

// ---- Values ----

JSObject* JSGlobalContext::orOutOfMemory(JSObject* made) {
    if (made == nullptr) reportError(nameText(WellKnownName::outOfMemory));
    return made;
}

JSObject* JSGlobalContext::makeString(const BString& text, JSObject*) {
    Owned<JSStringObject> made(new JSStringObject(stringConstructor_, stringConstructor_, text));
    // A text that could not be copied is not to come out as the empty one.
    if (made && made->value().length() != text.length()) made.reset();
    return orOutOfMemory(made.take());
}

JSObject* JSGlobalContext::adoptString(BString&& text, JSObject*) {
    return orOutOfMemory(new JSStringObject(stringConstructor_, stringConstructor_, std::move(text)));
}

JSObject* JSGlobalContext::makeRegExp(const BString& source, JSObject*) {
    const Value inner(currentFunction());
    Owned<JSRegExpObject> expression(
        new JSRegExpObject(static_cast<JSRegExpConstructor*>(regExpConstructor_), inner.get()));
    if (expression) reportPatternFailure(expression->setPattern(source, BString()), this);
    return expression.take();
}

JSObject* JSGlobalContext::makeBoolean(bool value, JSObject*) {
    return orOutOfMemory(new JSBooleanInstance(booleanConstructor_, booleanConstructor_, value));
}

JSObject* JSGlobalContext::makeNumberText(const BString& text, int32_t radix, JSObject* receiver) {
    return makeNumber(JSNumberValue::fromText(text, radix), receiver);
}

JSObject* JSGlobalContext::makeNumber(const JSNumberValue& value, JSObject*) {
    return orOutOfMemory(new JSNumberInstance(numberConstructor_, numberConstructor_, value));
}

JSObject* JSGlobalContext::makeArraySized(int32_t count, JSObject* receiver) {
    Value array(orOutOfMemory(new JSArrayObject(arrayConstructor_, arrayConstructor_)));
    if (!array) return nullptr;
    array->setLength(count, receiver);
    if (array->getLength(receiver) < count) {
        reportError(nameText(WellKnownName::outOfMemory));
        return nullptr;
    }
    return array.take();
}

JSObject* JSGlobalContext::makeArray(JSObject* receiver) {
    return makeArraySized(0, receiver);
}

// ---- Dates ----

namespace {

JSObject* makeDate(JSObject* constructor, double milliseconds) {
    Owned<JSDateObject> date(new JSDateObject(constructor, constructor));
    if (date) date->setTimeValue(milliseconds);
    return date.take();
}

}  // namespace

JSObject* JSGlobalContext::makeDateNumber(const JSNumberValue& milliseconds, JSObject*) {
    return orOutOfMemory(makeDate(dateConstructor_, milliseconds.value));
}

JSObject* JSGlobalContext::makeDateFields4(int32_t year, int32_t month, int32_t day, int32_t hours,
                                           JSObject* receiver) {
    return makeDateFields6(year, month, day, hours, 0, 0, receiver);
}

JSObject* JSGlobalContext::makeDateFields5(int32_t year, int32_t month, int32_t day, int32_t hours,
                                           int32_t minutes, JSObject* receiver) {
    return makeDateFields6(year, month, day, hours, minutes, 0, receiver);
}

JSObject* JSGlobalContext::makeDateFields6(int32_t year, int32_t month, int32_t day, int32_t hours,
                                           int32_t minutes, int32_t seconds, JSObject*) {
    return orOutOfMemory(makeDate(dateConstructor_, utcValue(year, month, day, hours, minutes, seconds)));
}

JSObject* JSGlobalContext::makeDateFields3(int32_t year, int32_t month, int32_t day, JSObject* receiver) {
    return makeDateFields6(year, month, day, 0, 0, 0, receiver);
}

JSObject* JSGlobalContext::makeDateValue(JSObject* value, JSObject* receiver) {
    BString text;
    if (value != nullptr) value->asString(text, this, receiver);
    if (isStopped()) return nullptr;
    return orOutOfMemory(makeDate(dateConstructor_, parseDateText(text)));
}

JSObject* JSGlobalContext::makeDateNow(JSObject*) {
    return orOutOfMemory(new JSDateObject(dateConstructor_, dateConstructor_, presentSeconds()));
}

// ---- Functions ----

JSObject* JSGlobalContext::makeFunction(JSFunctionNode* node, JSObject*) {
    // The inner object is the root's running function, of which there is none.
    const Value inner(currentFunction());
    return orOutOfMemory(new JSFunction(functionConstructor_, inner.get(), node));
}

JSObject* JSGlobalContext::makeFunctionPlain(JSFunctionNode* node, JSObject*) {
    return orOutOfMemory(new JSFunction(functionConstructor_, functionConstructor_, node));
}

}  // namespace quorvelin
