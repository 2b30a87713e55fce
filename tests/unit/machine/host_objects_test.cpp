// Objects of a host as globals: what they are asked, in which order, and what scripts see of them.
#include <gtest/gtest.h>

#include <map>

#include "objects/member_request.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;

// Answers the members that it was given, and keeps every request as a word and the name: "get x; set x=5; ".
class HostObject final : public JSObject {
  public:
    explicit HostObject(support::Transcript& transcript) : transcript_(transcript) {}

    bool dispatchMember(JSMemberRequest& request) override {
        static const char* const kOps[] = {"exists", "type", "get", "set", "call"};
        const std::string name = ascii(*request.name);
        std::string entry = std::string(kOps[static_cast<uint32_t>(request.op)]) + " " + name;
        const bool isMine = members_.count(name) != 0;
        if (request.op == JSRequestOp::set || request.op == JSRequestOp::call) {
            entry += "=" + (request.argument == nullptr ? "nothing"
                                                        : support::asString(request.argument, request.ctx));
        }
        transcript_.printed.push_back(entry);
        if (!isMine) return fallsToBase ? JSObject::dispatchMember(request) : false;
        Value& value = members_[name];
        switch (request.op) {
            case JSRequestOp::exists:
                return true;
            case JSRequestOp::type:
                request.type = value ? value->valueType(nullptr, nullptr) : JSValueType::undefined;
                return true;
            case JSRequestOp::get:
                request.result = Value::share(value.get()).take();
                return true;
            case JSRequestOp::set:
                value = Value::share(request.argument);
                if (request.argument != nullptr) {
                    value = Value(request.argument->asObject(request.ctx, request.receiver));
                }
                request.result = Value::share(request.argument).take();
                return true;
            case JSRequestOp::call:
                request.result = request.ctx->makeString(BString(u"called"), request.receiver);
                return true;
        }
        return false;
    }

    void give(const std::string& name, const Value& value) { members_[name] = Value::share(value.get()); }

    bool fallsToBase = true;

  private:
    support::Transcript& transcript_;
    std::map<std::string, Value> members_;
};

class HostObjects : public support::ScriptTest {
  protected:
    HostObjects() {
        host->give("x", number(5));
        host->give("nothing", Value());
        setGlobal(u"host", host.get());
        printed();
    }

    // The requests that a script leads to.
    std::string requests(std::u16string_view script) {
        printed();
        run(script);
        return printed();
    }

    Owned<HostObject> host{new HostObject(*transcript)};
};

// ---- What is asked ----

TEST_F(HostObjects, ReadingAMemberAsksForItsTypeAndThenForTheMember) {
    EXPECT_EQ(run(u"host.x"), "number 5");
    EXPECT_EQ(printed(), "type x; get x");
}

TEST_F(HostObjects, NothingIsAskedUntilAReferenceIsUsed) {
    const Value reference = evaluate(u"host.x");
    EXPECT_EQ(printed(), "");
    reference->asBoolean(ctx(), nullptr);
    EXPECT_EQ(printed(), "get x");
}

TEST_F(HostObjects, WritingAMemberAsksOnce) {
    EXPECT_EQ(requests(u"host.x = 6"), "set x=6");
    run(u"host.x = 'text'");
    EXPECT_EQ(printed(), "set x=text");
    EXPECT_EQ(run(u"host.x"), "string text");
    printed();
}

TEST_F(HostObjects, CallingAMemberAsksOnceAndHandsTheArgumentsOver) {
    EXPECT_EQ(run(u"host.x(1, 'two')"), "string called");
    EXPECT_EQ(printed(), "call x=1,two");
    run(u"host.x()");
    EXPECT_EQ(printed(), "call x=");
}

TEST_F(HostObjects, OperatorAsksForTheOverloadThenTypeThenValue) {
    EXPECT_EQ(run(u"host.x + 1"), "number 6");
    // The member, to ask it for an operator of its own; its type; its value.
    EXPECT_EQ(printed(), "get x; type x; get x");
}

TEST_F(HostObjects, OperatorOnTheObjectItselfAsksForItsOverload) {
    host->give("operator$*", number(0));
    EXPECT_EQ(run(u"host * 'right'"), "string called");
    EXPECT_EQ(printed(), "exists operator$*; call operator$*=right");
    EXPECT_EQ(run(u"host - 1"), "number -1");
    EXPECT_EQ(printed(), "exists operator$-");
}

TEST_F(HostObjects, StepReadsTypeAndValueAndWrites) {
    EXPECT_EQ(run(u"host.x++"), "number 5");
    EXPECT_EQ(printed(), "type x; get x; set x=6");
    EXPECT_EQ(run(u"--host.x"), "number 5");
    EXPECT_EQ(printed(), "type x; get x; set x=5");
}

TEST_F(HostObjects, CompoundAssignmentReadsAndWrites) {
    EXPECT_EQ(run(u"host.x += 2"), "number 7");
    EXPECT_EQ(printed(), "get x; type x; get x; set x=7");
}

TEST_F(HostObjects, TypeofAsksForTheTypeAlone) {
    EXPECT_EQ(run(u"typeof host.x"), "string number");
    EXPECT_EQ(printed(), "type x");
    EXPECT_EQ(run(u"typeof host.unknown"), "string undefined");
    EXPECT_EQ(printed(), "type unknown");
}

TEST_F(HostObjects, ConditionAsksForTheMemberAlone) {
    EXPECT_EQ(run(u"if (host.x) 'yes'; else 'no';"), "string yes");
    EXPECT_EQ(printed(), "get x");
}

TEST_F(HostObjects, DeletingNeverReachesTheDispatch) {
    EXPECT_EQ(run(u"delete host.x; typeof host.x"), "string number");
    EXPECT_EQ(printed(), "type x");
}

TEST_F(HostObjects, WritingThroughAMissingMemberMakesAPlainObjectThere) {
    EXPECT_EQ(requests(u"host.nothing.y = 1; 2"), "get nothing; set nothing=[object Array]; get nothing");
    EXPECT_EQ(run(u"host.nothing.y"), "number 1");
    printed();
}

TEST_F(HostObjects, OwnPropertyIsFoundBeforeTheDispatchIsAsked) {
    const Value stored(host->JSObject::setMember(BString(u"own"), number(1).get(), ctx(), nullptr));
    printed();
    EXPECT_EQ(run(u"host.own"), "number 1");
    EXPECT_EQ(run(u"host.own = 2; host.own"), "number 2");
    EXPECT_EQ(printed(), "");
}

TEST_F(HostObjects, ANameThatTheObjectDoesNotAnswerBecomesAProperty) {
    EXPECT_EQ(requests(u"host.fresh = 3; 1"), "set fresh=3");
    EXPECT_EQ(run(u"host.fresh"), "number 3");
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(host->memberCount(ctx(), nullptr), 1);
}

TEST_F(HostObjects, NamesOfTheRootClassComeFromTheBase) {
    EXPECT_EQ(run(u"host.length"), "number 0");
    EXPECT_EQ(printed(), "type length; get length");
    host->fallsToBase = false;
    EXPECT_EQ(run(u"host.length"), "undefined");
    printed();
}

TEST_F(HostObjects, WithAsksWhetherTheNameExistsBeforeEachOperation) {
    EXPECT_EQ(requests(u"with (host) { x = 1; }"), "exists x; set x=1");
    EXPECT_EQ(requests(u"with (host) { free = 1; } 2"), "exists free");
    EXPECT_EQ(globalText(u"free"), "number 1");
    printed();
}

TEST_F(HostObjects, MethodCallPutsTheObjectBehindTheChain) {
    run(u"host.ask = Function('return x;')");
    printed();
    EXPECT_EQ(run(u"host.ask()"), "number 5");
    const std::string asked = printed();
    EXPECT_NE(asked.find("exists x; get x"), std::string::npos) << asked;
}

TEST_F(HostObjects, EachConstructAsksNoMoreThanItNeeds) {
    host->give("s", string(u"text"));
    host->give("o", plainObject());
    run(u"a = [1, 2, 3, 4, 5, 6]; known = 1; f = Function('p', 'return p;');");
    const std::pair<const char16_t*, const char*> rows[] = {
        // Reading into a new name, into an existing one, into a new and an existing element.
        {u"fresh = host.x; 1", "get x"},
        {u"known = host.x; 1", "type x; get x"},
        {u"known = host.s; 1", "type s; get s"},
        {u"known = host.o; 1", "type o; get o"},
        {u"var declared = host.x;", "type x; get x"},
        {u"a[6] = host.x; 1", "get x"},
        {u"a[0] = host.x; 1", "type x; get x"},
        // Arguments, lists, results.
        {u"f(host.x)", "get x"},
        {u"[host.x, host.s]", "get x; get s"},
        {u"host.x(host.x)", "get x; call x=5"},
        {u"Number(host.x)", "get x"},
        {u"new host.Make()", "call Make="},
        {u"host.x.toString()", "get x"},
        {u"host.s.length", "get s; get s"},
        {u"host.o.y = 1; 1", "get o"},
        // Operators.
        {u"host.x == 1", "get x; type x; type x; get x"},
        {u"1 < host.x", "type x; type x; get x"},
        {u"5 === host.x", "type x; get x"},
        {u"'a' + host.x", "type x; get x"},
        {u"host + 1", "exists operator$+"},
        {u"-host.x", "type x; get x"},
        {u"~host.x", "type x; get x"},
        {u"!host.x", "get x"},
        {u"host.x || 0", "get x"},
        {u"host.x && 0", "get x"},
        {u"0 || host.nothing", "get nothing"},
        {u"host.x ? 1 : 2", "get x"},
        {u"a[host.x]", "type x; get x"},
        {u"host[host.s]", "type s; get s; type text; get text"},
        {u"host.x, 1", ""},
        {u"void host.x", ""},
        {u"delete host.x", ""},
        // Statements.
        {u"while (host.nothing) ;", "get nothing"},
        {u"do 1; while (host.nothing);", "get nothing"},
        {u"for (; host.nothing;) ;", "get nothing"},
        {u"switch (host.x) { case 5: }", "get x"},
        {u"switch (5) { case host.x: }", "type x; get x"},
        {u"switch (host.s) { case 'a': case 'text': }", "get s; get s"},
        {u"with (host) { x; 1 }", ""},
        {u"with (host) x;", "exists x; type x; exists x; get x"},
    };
    host->give("text", Value());
    for (const auto& [script, expected] : rows) {
        EXPECT_EQ(requests(script), expected) << ascii(std::u16string_view(script));
    }
    messages();
}

TEST_F(HostObjects, ReturnAsksForTheMemberOnce) {
    run(u"f = Function('return host.x;')");
    EXPECT_EQ(requests(u"f()"), "get x");
}

TEST_F(HostObjects, ZeroOfTheHostIsHandedBackAsUndefined) {
    host->give("zero", number(0));
    run(u"f = Function('return host.zero;')");
    EXPECT_EQ(run(u"f()"), "null");
    EXPECT_EQ(printed(), "get zero");
}

TEST_F(HostObjects, CallOfABareNameInWithDoesNotAskTheObject) {
    run(u"x = 0");
    EXPECT_EQ(requests(u"with (host) { x(); free(); }"), "");
}

TEST_F(HostObjects, MethodAsksWhetherANameExistsOnThisBeforeEachOperation) {
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"return x;", "exists x; get x"},
        {u"x = 7;", "exists x; set x=7"},
        {u"typeof x;", "exists x; type x"},
        {u"return x(1);", "exists x; call x=1"},
        {u"delete x;", "exists x"},
        {u"return free;", "exists free"},
        {u"known = 1;", ""},
        {u"return this.x;", "get x"},
    };
    run(u"known = 0");
    for (const auto& [body, expected] : rows) {
        const Value stored(host->JSObject::setMember(BString(u"ask"), function(body).get(), ctx(), nullptr));
        EXPECT_EQ(requests(u"host.ask()"), expected) << ascii(std::u16string_view(body));
        host->clearMembers(ctx(), nullptr);
    }
}

TEST_F(HostObjects, RequestCarriesContextAndReceiver) {
    struct Witness final : JSObject {
        bool dispatchMember(JSMemberRequest& request) override {
            context = request.ctx;
            receiver = request.receiver;
            return false;
        }
        JSContext* context = nullptr;
        JSObject* receiver = nullptr;
    };
    const Owned<Witness> witness(new Witness());
    setGlobal(u"witness", witness.get());
    run(u"witness.call()");
    EXPECT_EQ(witness->context, ctx());
    EXPECT_EQ(witness->receiver, nullptr);
    run(u"new witness.Make()");
    EXPECT_NE(witness->receiver, nullptr) << "the cell of the new";
}

// ---- Objects that override whole operations ----

// A counter of the host: a number for scripts, that can be called and assigned to.
class HostCounter final : public JSObject {
  public:
    JSValueType valueType(JSContext*, JSObject*) override { return JSValueType::number; }
    void asNumber(JSNumberValue& out, JSContext*, JSObject*) override { out = JSNumberValue::of(count); }
    JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override {
        JSNumberValue number;
        value->asNumber(number, ctx, receiver);
        count = number.value;
        return shared();
    }
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override {
        count += args != nullptr ? args->memberCount(ctx, receiver) : 0;
        return shared();
    }
    double count = 1;
};

TEST_F(HostObjects, ObjectThatIsANumberTakesPartInArithmetic) {
    const Owned<HostCounter> counter(new HostCounter());
    host->give("counter", Value::share(counter.get()));
    EXPECT_EQ(run(u"host.counter + 1"), "number 2");
    EXPECT_EQ(run(u"typeof host.counter"), "string number");
    EXPECT_EQ(run(u"'' + host.counter"), "string 1");
    EXPECT_EQ(run(u"host.counter == 1"), "boolean true");
    EXPECT_EQ(run(u"host.counter ? 1 : 2"), "number 1");
    EXPECT_EQ(run(u"-host.counter"), "number -1");
    printed();
}

TEST_F(HostObjects, GlobalThatIsANumberIsCopiedAtTheFirstAssignment) {
    const Owned<HostCounter> counter(new HostCounter());
    setGlobal(u"counter", counter.get());
    EXPECT_EQ(counter->refCount(), 1) << "a new global holds the object itself";
    run(u"counter = 7");
    EXPECT_EQ(counter->count, 1);
    EXPECT_EQ(counter->refCount(), 0);
}

TEST_F(HostObjects, ObjectThatCanBeCalledIsCalledByItsName) {
    const Owned<HostCounter> counter(new HostCounter());
    setGlobal(u"count", counter.get());
    run(u"count(); count(1, 2, 3)");
    EXPECT_EQ(counter->count, 4);
}

// A cell-like object: the receiver of a `new` is one, and a host can hand its own to an evaluation.
TEST_F(HostObjects, ReceiverOfAnEvaluationIsWhatConstructorsFill) {
    const Owned<HostCounter> counter(new HostCounter());
    const Value value(machine->evaluateText(BString(u"Number(12)"), counter.get()));
    EXPECT_EQ(describe(value.get()), "number 12");
    EXPECT_EQ(counter->count, 12);
}

// A list of the host whose elements are made when they are asked for.
class HostList final : public JSObject {
  public:
    JSObject* getItem(int32_t index, JSContext* ctx, JSObject* receiver) override {
        return index < 0 || index > 4 ? nullptr : ctx->makeNumber(JSNumberValue::of(index * index), receiver);
    }
    int32_t memberCount(JSContext*, JSObject*) override { return 5; }
    JSObject* memberAt(int32_t index, JSContext* ctx, JSObject* receiver) override {
        return getItem(index, ctx, receiver);
    }
    int32_t getLength(JSObject*) override { return 5; }
};

TEST_F(HostObjects, ListOfTheHostIsIndexedLikeAnArray) {
    setGlobal(u"squares", Value(new HostList()).get());
    EXPECT_EQ(run(u"squares[3]"), "number 9");
    EXPECT_EQ(run(u"squares.length"), "number 5");
    EXPECT_EQ(run(u"typeof squares[9]"), "string undefined");
    EXPECT_EQ(run(u"s = 0; for (i = 0; i < squares.length; i++) s += squares[i]; s"), "number 30");
}

TEST_F(HostObjects, ListOfTheHostCanBeTheArguments) {
    const Value squares(new HostList());
    const Value sum = function(u"return a + b * arguments.length;", u"a", u"b");
    EXPECT_EQ(describe(Value(sum->call(squares.get(), ctx(), nullptr)).get()), "number 5");
}

// Runs a text when it goes.
class LastWill final : public JSObject {
  public:
    LastWill(JSContext* ctx, std::u16string_view will) : ctx_(ctx), will_(will) {}
    ~LastWill() override { const Value value(ctx_->evaluateText(support::textOf(will_), nullptr)); }

  private:
    JSContext* ctx_;
    std::u16string will_;
};

TEST_F(HostObjects, EndOfAHostObjectMayTakeThePlaceAlongThatItStoodIn) {
    for (const char16_t* script : {u"x = 5;", u"x = 'a' + 'b';", u"x = void 0;", u"x = [1];", u"x = x;",
                                   u"x -= 0;", u"delete x;", u"var x = 1;", u"with (x) x = 1;"}) {
        setGlobal(u"x", Value(new LastWill(ctx(), u"delete x; gone = 1;")).get());
        run(u"gone = 0");
        run(script);
        EXPECT_EQ(globalText(u"gone"), "number 1") << ascii(std::u16string_view(script));
        run(u"delete x");
    }
    for (const char16_t* script : {u"a[1] = 5;", u"a[1] = 'text';", u"a.length = 0;", u"delete a[1];",
                                   u"delete a;", u"a = 0;", u"a[1] = a[0];", u"a.reverse(); a = 0;"}) {
        run(u"gone = 0; a = [1]");
        const Value array(global(u"a")->asObject(ctx(), nullptr));
        const Value stored(array->setItem(
            1, Value(new LastWill(ctx(), u"a.length = 0; delete a; gone = 1;")).get(), ctx(), nullptr));
        run(script);
    }
    run(u"f = Function('p', 'p = 1; return p;'); o = new Object();");
    setGlobal(u"x", Value(new LastWill(ctx(), u"gone = 2;")).get());
    EXPECT_EQ(run(u"y = f(x); delete x; y"), "number 1");
    EXPECT_EQ(globalText(u"gone"), "number 2");
    messages();
}

TEST_F(HostObjects, HostObjectIsReleasedWithItsMember) {
    EXPECT_EQ(host->refCount(), 1);
    run(u"o = new Object(); o.h = host; a = [host, host]");
    EXPECT_EQ(host->refCount(), 4);
    run(u"delete o; a = 0; delete host");
    EXPECT_EQ(host->refCount(), 0);
    printed();
}

}  // namespace
}  // namespace quorvelin
