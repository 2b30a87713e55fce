#include "stdlib/regexp/regexp_object.h"

#include <utility>

#include "foundation/number_text.h"
#include "foundation/well_known_names.h"
#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/member_request.h"
#include "stdlib/regexp/pattern_failure_report.h"
#include "stdlib/trace.h"

namespace quorvelin {

// ---- The constructor ----

JSObject* JSRegExpConstructor::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    const Value inner(ctx->currentFunction());
    if (ctx->isStopped()) return nullptr;
    Owned<JSRegExpObject> instance(new JSRegExpObject(this, inner.get()));
    if (!instance) {
        traceMessage(kTracedByRegExp, u"Out of memory");
        return nullptr;
    }
    instance->compile(args, ctx, receiver);
    if (receiver != nullptr && receiver->engineClass() == EngineClass::property) {
        // The cell of a `new` takes this very instance; an assignment would copy the pattern and lose the
        // flags.
        static_cast<JSProperty*>(receiver)->replaceValue(Value::share(instance.get()));
        return instance.take();
    }
    return finishConstruction(instance.take(), ctx, receiver);
}

void JSRegExpConstructor::getInput(BString& out) {
    out = input_;
}
void JSRegExpConstructor::getLastMatch(BString& out) {
    out = lastMatch_;
}
void JSRegExpConstructor::getLastParen(BString& out) {
    out = lastParen_;
}
void JSRegExpConstructor::getLeftContext(BString& out) {
    out = leftContext_;
}
void JSRegExpConstructor::getRightContext(BString& out) {
    out = rightContext_;
}
bool JSRegExpConstructor::getMultiline() {
    return multiline_;
}
void JSRegExpConstructor::setMultiline(bool value) {
    multiline_ = value;
}

void JSRegExpConstructor::beginRun(const BString& text) {
    input_ = text;
}

void JSRegExpConstructor::endRun(const JSRegExpMatcher& matcher, bool isMatch, uint32_t start,
                                 uint32_t length, const BString& match) {
    // The fields keep their buffers from run to run.
    const auto set = [](BString& field, const char16_t* units, int32_t count) {
        if (!field.assign(units, count)) field.clear();
    };
    const int32_t captures = isMatch ? matcher.captures.count() : 0;
    const BString& paren =
        captures > 0 ? matcher.captures.at(captures - 1)->text : nameText(WellKnownName::empty);
    const int32_t left = isMatch ? static_cast<int32_t>(start) : 0;
    const int32_t end = isMatch ? static_cast<int32_t>(start + length) : input_.length();
    set(lastMatch_, match.data(), isMatch ? match.length() : 0);
    set(lastParen_, paren.data(), paren.length());
    set(leftContext_, input_.data(), left);
    set(rightContext_, input_.data() + end, input_.length() - end);
}

namespace {

using C = JSRegExpConstructor;

template <void (C::*field)(BString&)>
JSObject* getText(C& self, JSMemberRequest& request) {
    BString text;
    (self.*field)(text);
    return request.ctx->makeString(text, request.receiver);
}

// A write to a result is taken and changes nothing.
template <typename Class>
JSObject* ignoreWrite(Class&, JSMemberRequest&) {
    return nullptr;
}

JSObject* sharedArgument(const JSMemberRequest& request) {
    return request.argument != nullptr ? request.argument->shared() : nullptr;
}

JSObject* getMultilineMember(C& self, JSMemberRequest& request) {
    return request.ctx->makeBoolean(self.getMultiline(), request.receiver);
}

JSObject* setMultilineMember(C& self, JSMemberRequest& request) {
    const bool value =
        request.argument != nullptr && request.argument->asBoolean(request.ctx, request.receiver);
    if (request.ctx->isStopped()) return nullptr;
    self.setMultiline(value);
    return sharedArgument(request);
}

constexpr JSValueType kString = JSValueType::string;
constexpr JSValueType kBoolean = JSValueType::boolean;
constexpr JSValueType kFunction = JSValueType::function;

constexpr NativeMember<C> kConstructorMembers[] = {
    {WellKnownName::input, kString, getText<&C::getInput>, ignoreWrite<C>, nullptr},
    {WellKnownName::lastMatch, kString, getText<&C::getLastMatch>, ignoreWrite<C>, nullptr},
    {WellKnownName::lastParen, kString, getText<&C::getLastParen>, ignoreWrite<C>, nullptr},
    {WellKnownName::leftContext, kString, getText<&C::getLeftContext>, ignoreWrite<C>, nullptr},
    {WellKnownName::rightContext, kString, getText<&C::getRightContext>, ignoreWrite<C>, nullptr},
    {WellKnownName::multiline, kBoolean, getMultilineMember, setMultilineMember, nullptr},
};

}  // namespace

bool JSRegExpConstructor::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kConstructorMembers, *this, request) ||
           JSConstructorObject::dispatchMember(request);
}

// ---- The instances ----

JSRegExpObject::~JSRegExpObject() {
    freeTree();
}

void JSRegExpObject::freeTree() {
    destroyPattern(std::exchange(root_, nullptr));
}

JSValueType JSRegExpObject::valueType(JSContext*, JSObject*) {
    return JSValueType::expression;
}

JSObject* JSRegExpObject::call(JSObject* args, JSContext* ctx, JSObject* receiver) {
    return exec(args, ctx, receiver);
}

void JSRegExpObject::asExpression(BString& out, JSContext*, JSObject*) {
    out = source_;
}

bool JSRegExpObject::getGlobal() {
    return global_;
}
bool JSRegExpObject::getIgnoreCase() {
    return ignoreCase_;
}
int32_t JSRegExpObject::getLastIndex() {
    return lastIndex_;
}
void JSRegExpObject::setLastIndex(int32_t value) {
    lastIndex_ = value;
}
void JSRegExpObject::getSource(BString& out) {
    out = source_;
}

void JSRegExpObject::compile(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString pattern;
    BString flags;
    argString(args, 0, pattern, ctx, receiver);
    argString(args, 1, flags, ctx, receiver);
    if (ctx->isStopped()) return;
    reportPatternFailure(setPattern(pattern, flags), ctx);
}

PatternFailure JSRegExpObject::setPattern(const BString& pattern, const BString& flags) {
    source_ = pattern;
    const auto holds = [&flags](char16_t flag) {
        for (int32_t i = 0; i < flags.length(); ++i) {
            if (flags[i] == flag) return true;
        }
        return false;
    };
    global_ = holds(u'g');
    ignoreCase_ = holds(u'i');
    lastIndex_ = 0;
    freeTree();
    root_ = makePatternNode(ReSearch, nullptr);
    if (root_ == nullptr) return PatternFailure::outOfMemory;
    JSRegExpMatcher matcher;
    if (matcher.compilePattern(source_, 0, root_, 0) == -1) {
        // Quirk: nobody is told; the instance matches everything as the empty text from now on.
        traceMessage(kTracedByRegExp, u"Wrong regular expression %s", source_);
        freeTree();
    }
    return matcher.failure();
}

// One run: where it found what.
struct JSRegExpObject::Run {
    JSRegExpMatcher matcher;
    uint32_t start = 0;
    uint32_t length = 0;
    BString match;
};

// False, too, when the run ended for want of room, which is reported.
bool JSRegExpObject::runOn(const BString& text, Run& run, JSContext* ctx) {
    JSRegExpConstructor* results = keeper();
    run.matcher.global = global_;
    run.matcher.ignoreCase = ignoreCase_;
    run.matcher.multiline = results != nullptr && results->getMultiline();
    if (results != nullptr) results->beginRun(text);
    // Quirk: every run begins at the front. `lastIndex` is neither read nor written, `global` or not.
    const bool isMatch = run.matcher.matchNode(text, 0, root_, run.start, run.length, run.match);
    if (results != nullptr) results->endRun(run.matcher, isMatch, run.start, run.length, run.match);
    reportPatternFailure(run.matcher.failure(), ctx);
    return isMatch;
}

JSObject* JSRegExpObject::exec(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    if (JSRegExpConstructor* results = keeper()) results->getInput(text);
    argString(args, 0, text, ctx, receiver);
    return ctx->isStopped() ? nullptr : execText(text, ctx, receiver);
}

JSObject* JSRegExpObject::execText(const BString& text, JSContext* ctx, JSObject* receiver) {
    Run run;
    if (!runOn(text, run, ctx)) return nullptr;

    Value result(ctx->makeObject(receiver));
    if (ctx->isStopped() || !result) return nullptr;
    // Items and named members share one store, and an item takes the place of what stands at its index, so
    // the items come first.
    const auto storeItem = [&](int32_t index, const BString& item) {
        const Value value(ctx->makeString(item, receiver));
        if (ctx->isStopped()) return false;
        const Value stored(result->setItem(index, value.get(), ctx, receiver));
        return !ctx->isStopped();
    };
    const auto storeMember = [&](WellKnownName name, JSObject* made) {
        const Value value(made);
        if (ctx->isStopped()) return false;
        const Value stored(result->setMember(nameText(name), value.get(), ctx, receiver));
        return !ctx->isStopped();
    };
    bool isComplete = storeItem(0, run.match);
    for (int32_t i = 0; isComplete && i < run.matcher.captures.count(); ++i) {
        isComplete = storeItem(i + 1, run.matcher.captures.at(i)->text);
    }
    isComplete = isComplete &&
                 storeMember(WellKnownName::index, ctx->makeNumber(JSNumberValue::of(run.start), receiver)) &&
                 storeMember(WellKnownName::input, ctx->makeString(text, receiver));
    return isComplete ? result.take() : nullptr;
}

bool JSRegExpObject::test(JSObject* args, JSContext* ctx, JSObject* receiver) {
    BString text;
    return argString(args, 0, text, ctx, receiver) && testText(text, ctx);
}

bool JSRegExpObject::testText(const BString& text, JSContext* ctx) {
    Run run;
    return runOn(text, run, ctx);
}

namespace {

using R = JSRegExpObject;

template <bool (R::*flag)()>
JSObject* getFlag(R& self, JSMemberRequest& request) {
    return request.ctx->makeBoolean((self.*flag)(), request.receiver);
}

JSObject* getLastIndexMember(R& self, JSMemberRequest& request) {
    return request.ctx->makeNumber(JSNumberValue::of(self.getLastIndex()), request.receiver);
}

JSObject* setLastIndexMember(R& self, JSMemberRequest& request) {
    JSNumberValue number{0.0};
    if (request.argument != nullptr) request.argument->asNumber(number, request.ctx, request.receiver);
    if (request.ctx->isStopped()) return nullptr;
    self.setLastIndex(truncateToInt32(number.value));
    return sharedArgument(request);
}

JSObject* getSourceMember(R& self, JSMemberRequest& request) {
    BString text;
    self.getSource(text);
    return request.ctx->makeString(text, request.receiver);
}

JSObject* callTest(R& self, JSMemberRequest& request) {
    return request.ctx->makeBoolean(self.test(request.argument, request.ctx, request.receiver),
                                    request.receiver);
}

JSObject* callCompile(R& self, JSMemberRequest& request) {
    self.compile(request.argument, request.ctx, request.receiver);
    return nullptr;
}

JSObject* callExec(R& self, JSMemberRequest& request) {
    return self.exec(request.argument, request.ctx, request.receiver);
}

constexpr NativeMember<R> kMembers[] = {
    {WellKnownName::global, kBoolean, getFlag<&R::getGlobal>, ignoreWrite<R>, nullptr},
    {WellKnownName::ignoreCase, kBoolean, getFlag<&R::getIgnoreCase>, ignoreWrite<R>, nullptr},
    {WellKnownName::lastIndex, JSValueType::number, getLastIndexMember, setLastIndexMember, nullptr},
    {WellKnownName::source, kString, getSourceMember, ignoreWrite<R>, nullptr},
    {WellKnownName::test, kFunction, nullptr, nullptr, callTest},
    {WellKnownName::compile, kFunction, nullptr, nullptr, callCompile},
    {WellKnownName::exec, kFunction, nullptr, nullptr, callExec},
};

}  // namespace

bool JSRegExpObject::dispatchMember(JSMemberRequest& request) {
    return dispatchNative(kMembers, *this, request) || JSInstance::dispatchMember(request);
}

}  // namespace quorvelin
