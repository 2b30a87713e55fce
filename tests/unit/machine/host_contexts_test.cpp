// Contexts of a host in the chain: everything below them asks them, operation by operation.
#include <gtest/gtest.h>

#include "evaluator/contexts.h"
#include "frontend/nodes.h"
#include "objects/js_context.h"
#include "objects/js_property.h"
#include "objects/member_request.h"
#include "support/script_machine.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::ascii;

// A context of a host: keeps messages, can stop the walk, and counts what it is asked.
class HostContext final : public JSContext {
  public:
    using JSContext::reportError;

    explicit HostContext(JSContext* parent) : JSContext(parent) {}

    void reportError(const BString& message) override {
        messages += ascii(message) + "; ";
        if (passesMessagesOn) JSContext::reportError(message);
    }
    bool isStopped() override {
        ++questions;
        if (patience > 0 && questions >= patience) return true;
        return JSContext::isStopped();
    }
    void setPosition(int32_t line, int32_t column) override {
        lastLine = line;
        JSContext::setPosition(line, column);
    }
    JSObject* makeNumber(const JSNumberValue& value, JSObject* receiver) override {
        ++numbers;
        return JSContext::makeNumber(value, receiver);
    }
    JSObject* makeString(const BString& text, JSObject* receiver) override {
        ++strings;
        return JSContext::makeString(text, receiver);
    }

    std::string messages;
    bool passesMessagesOn = true;
    int64_t questions = 0;
    int64_t patience = 0;  // after so many questions the walk is stopped; 0 for never
    int numbers = 0;
    int strings = 0;
    int32_t lastLine = -1;
};

class HostContexts : public support::ScriptTest {
  protected:
    void TearDown() override {
        context.reset();
        ScriptTest::TearDown();
    }
    std::string call(const Value& made, JSContext* under, JSObject* arguments = nullptr) {
        return describe(Value(made->call(arguments, under, nullptr)).get(), under);
    }
    Owned<HostContext> context{new HostContext(ctx())};
};

TEST_F(HostContexts, FunctionCalledWithAContextSeesItsNames) {
    const Value stored(
        context->JSObject::setMember(BString(u"setting"), number(7).get(), context.get(), nullptr));
    EXPECT_EQ(call(function(u"return setting;"), context.get()), "number 7");
    EXPECT_EQ(call(function(u"return setting;"), ctx()), "null");
}

TEST_F(HostContexts, TextIsRunInTheContext) {
    const Value stored(
        context->JSObject::setMember(BString(u"setting"), number(7).get(), context.get(), nullptr));
    EXPECT_EQ(describe(Value(context->evaluateText(BString(u"setting + 1"), nullptr)).get()), "number 8");
    const Value value(context->evaluateText(BString(u"var made = 3; setting = 9; other = 4"), nullptr));
    EXPECT_EQ(run(u"typeof setting + made + other"), "string undefined34") << "var is declared up the chain";
    EXPECT_EQ(describe(Value(context->getMember(BString(u"setting"), context.get(), nullptr)).get()),
              "number 9");
}

TEST_F(HostContexts, MessagesFromBelowReachTheContextAndThenTheRoot) {
    EXPECT_EQ(call(function(u"(void 0).x; return 5;"), context.get()), "number 5");
    EXPECT_EQ(context->messages, "wrong object; ");
    EXPECT_EQ(messages(), "wrong object");
    context->passesMessagesOn = false;
    call(function(u"o = new Object(); o.m = Function('(void 0)();'); o.m(); delete o;"), context.get());
    EXPECT_EQ(context->messages, "wrong object; wrong object; ");
    EXPECT_EQ(messages(), "");
}

TEST_F(HostContexts, MessagesOfTheMachineItselfDoNotPassThroughTheContext) {
    run(u"(void 0).x");
    EXPECT_EQ(context->messages, "");
    EXPECT_EQ(messages(), "wrong object");
}

TEST_F(HostContexts, IsStoppedIsAskedByEverythingThatRunsBelow) {
    call(function(u"return 1;"), context.get());
    const int64_t onlyReturn = context->questions;
    EXPECT_GT(onlyReturn, 0);
    context->questions = 0;
    call(function(u"a = 1; b = 2; c = a + b; return c;"), context.get());
    EXPECT_GT(context->questions, onlyReturn);
}

TEST_F(HostContexts, HostInterruptsAnEndlessLoop) {
    for (const char16_t* body : {u"for (;;) ;", u"while (1) n = n + 1;", u"do n = n + 1; while (1);",
                                 u"for (;;) { switch (1) { case 1: n = 2; } }"}) {
        run(u"n = 0");
        context->questions = 0;
        context->patience = 1000;
        EXPECT_EQ(call(function(body), context.get()), "null");
        EXPECT_GE(context->questions, 1000);
        context->patience = 0;
    }
    EXPECT_EQ(run(u"5"), "number 5") << "the machine itself was never stopped";
}

TEST_F(HostContexts, EveryMomentOfInterruptionIsSurvived) {
    const char16_t* body =
        u"var o = new Object(); o.v = [1, 'two', 3]; o.m = Function('a', 'b', 'return this.v[a] + b;');"
        u"var s = ''; for (var i = 0; i < 3; i++) { if (i == 1) continue; s += o.m(i, '!'); }"
        u"switch (s) { case '1!3!': s = -1; break; default: s = 2; } with (o) { v = s++; }"
        u"x = new Array(3); x.length = 1; x[0]++; delete x; x = s ? 1 || 0 : 1 && 0; return s + 5;";
    const Value made = function(body);
    context->questions = 0;
    ASSERT_EQ(call(made, context.get()), "number 5");
    const int64_t all = context->questions;
    int64_t interrupted = 0;
    for (context->patience = 1; context->patience <= all; ++context->patience) {
        context->questions = 0;
        const std::string result = call(made, context.get());
        // The last questions come when the value has been handed back already.
        EXPECT_TRUE(result == "null" || result == "number 5") << result << " at " << context->patience;
        interrupted += result == "null";
    }
    EXPECT_GT(interrupted, all * 9 / 10);
    messages();
}

TEST_F(HostContexts, PositionsPassThroughTheContext) {
    call(function(u"\n\n(void 0).x;"), context.get());
    EXPECT_EQ(messagesWithPositions().substr(0, 2), "3:");
    EXPECT_GE(context->lastLine, 0);
}

TEST_F(HostContexts, FactoriesPassThroughTheContext) {
    call(function(u"return 'a' + 1 * 2;"), context.get());
    EXPECT_GT(context->numbers, 0);
    EXPECT_GT(context->strings, 0);
    const int numbers = context->numbers;
    run(u"1 + 1");
    EXPECT_EQ(context->numbers, numbers);
}

TEST_F(HostContexts, ContextCanBeTheThisObjectsHome) {
    const Value object = plainObject();
    const Value stored(object->setMember(BString(u"v"), number(6).get(), ctx(), nullptr));
    const Value method = function(u"return this.v;");
    EXPECT_EQ(
        describe(
            Value(context->callWithThis(object.get(), method.get(), nullptr, context.get(), nullptr)).get()),
        "number 6");
}

TEST_F(HostContexts, ContextIsReleasedAfterTheCall) {
    const Value made = function(u"return 1;");
    const int32_t machineHolders = machine->refCount();
    for (int i = 0; i < 100; ++i) call(made, context.get());
    EXPECT_EQ(context->refCount(), 0);
    EXPECT_EQ(machine->refCount(), machineHolders);
    context.reset();
    EXPECT_EQ(machine->refCount(), machineHolders - 1) << "the context held its parent";
}

// Keeps every value that it is asked to make: "number text 1; boolean; ".
class MakingContext final : public JSContext {
  public:
    explicit MakingContext(JSContext* parent) : JSContext(parent) {}

    JSObject* makeString(const BString& text, JSObject* receiver) override {
        made += "string " + ascii(text) + "; ";
        return JSContext::makeString(text, receiver);
    }
    JSObject* makeRegExp(const BString& source, JSObject* receiver) override {
        made += "expression; ";
        return JSContext::makeRegExp(source, receiver);
    }
    JSObject* makeBoolean(bool value, JSObject* receiver) override {
        made += value ? "true; " : "false; ";
        return JSContext::makeBoolean(value, receiver);
    }
    JSObject* makeNumberText(const BString& text, int32_t radix, JSObject* receiver) override {
        made += "number text " + ascii(text) + "; ";
        return JSContext::makeNumberText(text, radix, receiver);
    }
    JSObject* makeNumber(const JSNumberValue& value, JSObject* receiver) override {
        made += "number " + ascii(value.toText()) + "; ";
        return JSContext::makeNumber(value, receiver);
    }
    JSObject* makeArray(JSObject* receiver) override {
        made += "array; ";
        return JSContext::makeArray(receiver);
    }
    JSObject* makeNull(JSObject* receiver) override {
        made += "null; ";
        return JSContext::makeNull(receiver);
    }
    JSObject* makeObject(JSObject* receiver) override {
        made += "object; ";
        return JSContext::makeObject(receiver);
    }
    JSObject* makeMethodRef(JSObject* owner, const BString& name, bool native, JSObject* receiver) override {
        made += "method " + ascii(name) + "; ";
        return JSContext::makeMethodRef(owner, name, native, receiver);
    }
    JSContext* makeThisContext(JSObject* object, JSObject* inner, JSObject* receiver) override {
        made += "this; ";
        return JSContext::makeThisContext(object, inner, receiver);
    }
    JSObject* makeFunction(JSFunctionNode* node, JSObject* receiver) override {
        made += "function; ";
        return JSContext::makeFunction(node, receiver);
    }

    std::string made;
};

TEST_F(HostContexts, EveryValueOfAScriptIsAskedOfTheContext) {
    const Owned<MakingContext> maker(new MakingContext(ctx()));
    run(u"x = 5; o = new Object(); f = Function('return 1 + 2;')");
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"1 + 2", "number text 1; number text 2; number 3; "},
        {u"0", "number 0; "},
        {u"0x10 < 017", "number text 0x10; number text 017; true; "},
        {u"-7", "number text 7; number -7; "},
        {u"!true", "true; false; "},
        {u"true || 1", "true; true; "},
        {u"0 && 1", "number 0; false; "},
        {u"1 ? 'a' : 'b'", "number text 1; string a; "},
        {u"if (1 == 1) ;", "number text 1; number text 1; true; "},
        {u"while (0) ;", "number 0; "},
        {u"'a' + 'b'", "string a; string b; string ab; "},
        {u"typeof x", "string number; "},
        {u"null", "null; "},
        {u"/a/", "expression; "},
        {u"[1]", "array; number text 1; "},
        {u"x++", "number 6; number 6; number 5; "},
        {u"x = 5", "number text 5; number 5; "},
        {u"x += 1", "number text 1; number 6; number 6; "},
        {u"new Object()", "array; object; "},
        {u"o.p.q = 1", "number text 1; object; "},
        {u"f()", "array; this; number text 1; number text 2; number 3; "},
        {u"g = f", "function; "},
    };
    for (const auto& [script, expected] : rows) {
        maker->made.clear();
        const Value value(maker->evaluateText(BString(script), nullptr));
        EXPECT_EQ(maker->made, expected) << ascii(std::u16string_view(script));
    }
}

TEST_F(HostContexts, CompletionOfASwitchIsAskedOfTheContext) {
    struct Completing final : JSContext {
        explicit Completing(JSContext* parent) : JSContext(parent) {}
        JSCompletion getCompletion() override {
            ++asked;
            return JSContext::getCompletion();
        }
        JSCompletion setCompletion(JSCompletion completion) override {
            ++set;
            return JSContext::setCompletion(completion);
        }
        int asked = 0;
        int set = 0;
    };
    const Owned<Completing> completing(new Completing(ctx()));
    const Value none(completing->evaluateText(BString(u"switch (1) { case 1: 2; }"), nullptr));
    EXPECT_EQ(completing->asked, 1);
    EXPECT_EQ(completing->set, 0);
    const Value broken(completing->evaluateText(BString(u"switch (1) { case 1: break; } n = 3;"), nullptr));
    EXPECT_EQ(completing->set, 1);
    EXPECT_EQ(globalText(u"n"), "number 3");
}

TEST_F(HostContexts, ThisObjectOfTheContextReachesPlainCalls) {
    struct Home final : JSContext {
        Home(JSContext* parent, JSObject* home) : JSContext(parent), home_(Value::share(home)) {}
        JSObject* getThis(JSContext*, JSObject* receiver) override {
            return receiver != nullptr ? receiver->shared() : Value::share(home_.get()).take();
        }
        Value home_;
    };
    run(u"f = Function('return this;'); outer = Function('return f();')");
    const Value object = plainObject();
    const Owned<Home> home(new Home(ctx(), object.get()));
    EXPECT_EQ(Value(home->evaluateText(BString(u"f()"), nullptr)).get(), object.get());
    EXPECT_EQ(Value(home->evaluateText(BString(u"outer()"), nullptr)).get(), object.get());
    const Value called = function(u"return f();");
    EXPECT_EQ(Value(called->call(nullptr, home.get(), nullptr)).get(), object.get()) << "from below";
    EXPECT_EQ(evaluate(u"f()").get(), machine.get());
}

TEST_F(HostContexts, ContextWithoutAThisObjectLeavesItToTheOthers) {
    run(u"f = Function('return this;')");
    EXPECT_EQ(Value(context->evaluateText(BString(u"f()"), nullptr)).get(), machine.get());
    // A call by the name of a variable of an outer call, made in the method of an object.
    run(u"o = new Object(); o.m = Function('return g();')");
    const Value made = function(u"var g = f; return o.m();");
    const Value object(global(u"o")->asObject(ctx(), nullptr));
    EXPECT_EQ(Value(made->call(nullptr, ctx(), nullptr)).get(), object.get());
    EXPECT_EQ(Value(made->call(nullptr, context.get(), nullptr)).get(), object.get());
}

// ---- A context without a machine above it ----

class RootContext final : public JSContext {
  public:
    using JSContext::reportError;

    RootContext() : JSContext(nullptr) {}
    void reportError(const BString& message) override { messages += ascii(message) + "; "; }
    std::string messages;
};

TEST_F(HostContexts, FunctionStatementUnderARootThatIsNoMachineIsRefused) {
    const Owned<RootContext> root(new RootContext());
    EXPECT_FALSE(Value(function(u"function inner() {}")->call(nullptr, root.get(), nullptr)));
    EXPECT_EQ(root->messages, "local function; can't init context; ");
}

TEST_F(HostContexts, VariableUnderARootThatIsNoMachineIsDeclaredInTheCall) {
    const Owned<RootContext> root(new RootContext());
    const Value made = function(u"var o; o.x = 1; return o;");
    const Value object(made->call(nullptr, root.get(), nullptr));
    EXPECT_EQ(root->messages, "");
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->hasMember(BString(u"x"), root.get(), nullptr));
    EXPECT_EQ(object->memberType(BString(u"x"), root.get(), nullptr), JSValueType::undefined)
        << "such a root makes plain objects, but no numbers";
}

TEST_F(HostContexts, TextUnderARootThatIsNoMachineDeclaresNothing) {
    const Owned<RootContext> root(new RootContext());
    EXPECT_FALSE(Value(root->evaluateText(BString(u"var x = 1;"), nullptr)));
    EXPECT_EQ(root->memberCount(root.get(), nullptr), 0);
    EXPECT_EQ(root->messages, "");
}

// ---- A machine class of a host that takes operations over ----

class StrictMachine final : public support::RecordingMachine {
  public:
    explicit StrictMachine(std::shared_ptr<support::Transcript> transcript)
        : RecordingMachine(std::move(transcript)) {
        askEveryContext();
    }
    bool isStopped() override { return stop || RecordingMachine::isStopped(); }
    void reportError(const BString& message) override {
        RecordingMachine::reportError(message);
        stop = true;
    }
    bool stop = false;
};

TEST_F(HostContexts, MachineClassThatStopsAtTheFirstMessage) {
    const auto said = std::make_shared<support::Transcript>();
    const Owned<StrictMachine> strict(new StrictMachine(said));
    const Value value(strict->evaluateText(BString(u"a = 1; (void 0).x; a = 2"), nullptr));
    EXPECT_FALSE(value);
    EXPECT_EQ(said->takeMessages(), "wrong object");
    strict->stop = false;
    EXPECT_EQ(describe(Value(strict->getMember(BString(u"a"), strict.get(), nullptr)).get(), strict.get()),
              "number 1");
    const Value made(
        strict->evaluateText(BString(u"f = Function('(void 0).y; a = 3;'); f(); a = 4"), nullptr));
    EXPECT_EQ(said->takeMessages(), "wrong object");
    strict->stop = false;
    EXPECT_EQ(describe(Value(strict->getMember(BString(u"a"), strict.get(), nullptr)).get(), strict.get()),
              "number 1");
}

TEST_F(HostContexts, MachineClassThatIsAskedForEverythingKeepsThePosition) {
    const auto said = std::make_shared<support::Transcript>();
    const Owned<StrictMachine> strict(new StrictMachine(said));
    const Value value(strict->evaluateText(BString(u"a = 1;\n  (void 0).x;"), nullptr));
    EXPECT_EQ(said->takeMessagesWithPositions().substr(0, 2), "2:");
    EXPECT_EQ(strict->position().substr(0, 2), "2:") << "the run was stopped there";
}

// A scope of the engine's that a host's class gives names of its own.
class NamedScope final : public JSLocalContext {
  public:
    explicit NamedScope(JSContext* parent) : JSLocalContext(parent) { askEveryContext(); }
    bool dispatchMember(JSMemberRequest& request) override {
        if (!request.name->equals(u"answer")) return JSLocalContext::dispatchMember(request);
        if (request.op == JSRequestOp::type) request.type = JSValueType::number;
        if (request.op == JSRequestOp::get)
            request.result = request.ctx->makeNumber(JSNumberValue::of(42), request.receiver);
        return request.op <= JSRequestOp::get;
    }
};

TEST_F(HostContexts, ScopeClassThatAnswersNamesOfItsOwn) {
    const Owned<NamedScope> scope(new NamedScope(ctx()));
    EXPECT_EQ(describe(Value(scope->evaluateText(BString(u"answer + 1"), nullptr)).get(), scope.get()),
              "number 43");
    EXPECT_EQ(call(function(u"var own = 1; return answer + own;"), scope.get()), "number 43");
    run(u"answer = 7");
    EXPECT_EQ(call(function(u"return answer;"), scope.get()), "number 42");
    EXPECT_EQ(run(u"answer"), "number 7");
}

TEST_F(HostContexts, ScopeClassThatPutsCellsIntoItsStoreLeavesOtherScopesAlone) {
    run(u"f = Function('var shelved = 2; return g();'); g = Function('return shelved;'); shelved = 1");
    {
        const Owned<NamedScope> scope(new NamedScope(ctx()));
        const BString name(u"shelved");
        const Value stored(scope->JSObject::setMember(name, number(5).get(), scope.get(), nullptr));
        EXPECT_EQ(call(function(u"return shelved;"), scope.get()), "number 5");
        EXPECT_EQ(call(function(u"return f();"), scope.get()), "number 2");
    }
    EXPECT_EQ(run(u"f()"), "number 2");
    EXPECT_EQ(run(u"g()"), "number 1");
}

}  // namespace
}  // namespace quorvelin
