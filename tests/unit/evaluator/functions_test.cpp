// Functions: making them from text, parameters and arguments, dynamic scope, `this`, `new` and `caller`.
#include "evaluator/function_object.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "objects/member_request.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

class Functions : public support::ScriptTest {
  protected:
    void expectAll(std::initializer_list<std::pair<const char16_t*, const char*>> rows) {
        for (const auto& [script, result] : rows) {
            EXPECT_EQ(run(script), result) << support::ascii(std::u16string_view(script));
        }
    }
};

// A host's object whose call with any name shows the test the context that it is called in.
class Probe final : public JSObject {
  public:
    bool dispatchMember(JSMemberRequest& request) override {
        if (request.op == JSRequestOp::call) look(request);
        return request.op == JSRequestOp::call;
    }
    virtual void look(JSMemberRequest& request) {
        ++looks;
        lookInto(request.ctx);
    }
    void lookInto(JSContext* context) {
        if (onLook) onLook(context);
    }
    int looks = 0;
    std::function<void(JSContext*)> onLook;
};

// ---- Making functions ----

TEST_F(Functions, LastArgumentIsTheBodyAndTheOthersAreParameters) {
    expectAll({{u"f = Function('a', 'b', 'return a * 10 + b;'); f(1, 2)", "number 12"},
               {u"g = new Function('return 5;'); g()", "number 5"},
               {u"typeof f", "string function"},
               {u"h = Function(); typeof h()", "string null"},
               {u"Function('')()", "null"},
               {u"Function('x', '7;')(1)", "null"}});
}

// Quirk: "a,b" is one name.
TEST_F(Functions, TextOfAParameterIsNotSplit) {
    EXPECT_EQ(run(u"f = Function('a,b', 'return a;'); f(7, 8)"), "null");
    EXPECT_EQ(run(u"k = 'a,b'; g = Function('a,b', 'return arguments[k];'); g(7, 8)"), "number 7");
}

TEST_F(Functions, BodyThatDoesNotParseReportsAndGivesNothing) {
    EXPECT_EQ(run(u"f = Function('a', 'return ('); typeof f"), "string undefined");
    const std::string message = messages();
    EXPECT_EQ(message.substr(0, 24), "Error compile:Error(Ln 1") << message;
    EXPECT_EQ(run(u"a;\nFunction('return (');\n7"), "number 7");
    const std::string reported = messagesWithPositions();
    EXPECT_EQ(reported.substr(0, 2), "2:") << "where the call stands: " << reported;
    EXPECT_NE(reported.find(" Error compile:Error(Ln 1, Col "), std::string::npos) << reported;
}

TEST_F(Functions, ParametersAreTexts) {
    EXPECT_EQ(run(u"f = Function(1, 'return 2;'); f()"), "number 2");
    EXPECT_EQ(run(u"Function(void 0, 'return 3;')()"), "number 3")
        << "an empty cell is a parameter named undefined";
}

TEST_F(Functions, DecompileGivesTheSourceText) {
    EXPECT_EQ(run(u"f = Function('a', 'b', 'return a + b;'); f.decompile()"),
              "string function (a,b)\n{return (a)+(b)\n;\n;\n}\n");
    EXPECT_EQ(run(u"'' + f"), "string function (a,b)\n{return (a)+(b)\n;\n;\n}\n");
    EXPECT_EQ(run(u"typeof f.decompile"), "string function");
}

TEST_F(Functions, DecompileCannotBeWritten) {
    EXPECT_EQ(run(u"f = Function('return 1;'); f.decompile = 1; typeof f.decompile"), "string function");
    EXPECT_EQ(messages(), "property is read only");
    EXPECT_EQ(run(u"delete f.decompile"), "null");
    EXPECT_EQ(messages(), "property is read only");
}

TEST_F(Functions, FunctionKeepsMembersOfItsOwn) {
    EXPECT_EQ(run(u"f = Function('return 1;'); f.count = 4; f.count"), "number 4");
    EXPECT_EQ(run(u"g = Function('return 1;'); typeof g.count"), "string undefined");
}

// Quirk: members of a function do not travel.
TEST_F(Functions, AssigningAFunctionMakesANewObjectOfTheSameTree) {
    run(u"f = Function('return 6;'); f.count = 1; g = f");
    EXPECT_EQ(run(u"g()"), "number 6");
    EXPECT_EQ(run(u"typeof g.count"), "string undefined");
    EXPECT_NE(Value(global(u"f")->asObject(ctx(), nullptr)).get(),
              Value(global(u"f")->asObject(ctx(), nullptr)).get());
}

// ---- Parameters and arguments ----

TEST_F(Functions, MissingArgumentsAreUndefined) {
    EXPECT_EQ(run(u"f = Function('a', 'b', 'return typeof b;'); f(1)"), "string undefined");
    EXPECT_EQ(run(u"g = Function('a', 'return arguments.length;'); g()"), "number 1");
}

TEST_F(Functions, ExtraArgumentsStandInArguments) {
    expectAll({{u"f = Function('a', 'return arguments[2];'); f(1, 2, 3)", "number 3"},
               {u"g = Function('a', 'return arguments.length;'); g(1, 2, 3)", "number 3"},
               {u"h = Function('a', 'return arguments.a;'); h(1, 2)", "number 1"},
               {u"k = Function('return arguments[0];'); k(9)", "number 9"}});
}

TEST_F(Functions, ArgumentsAndParametersAreTheSameCells) {
    EXPECT_EQ(run(u"f = Function('a', 'arguments[0] = 5; return a;'); f(1)"), "number 5");
    EXPECT_EQ(run(u"g = Function('a', 'a = 6; return arguments[0];'); g(1)"), "number 6");
}

// Quirk: what every object answers is found on the list of arguments.
TEST_F(Functions, LengthByItselfIsTheNumberOfArguments) {
    EXPECT_EQ(run(u"f = Function('a', 'return length;'); f(1, 2)"), "number 2");
}

TEST_F(Functions, ArgumentsAndCallerCannotBeWritten) {
    EXPECT_EQ(
        run(u"f = Function('arguments = 1; caller = 1; delete arguments; delete caller; return 3;'); f()"),
        "number 3");
    EXPECT_EQ(messages(),
              "property arguments is readonly; property caller is readonly; "
              "property arguments is readonly; property caller is readonly");
    EXPECT_EQ(run(u"arguments = 1"), "null");
    EXPECT_EQ(messages(), "property arguments is readonly");
}

TEST_F(Functions, ArgumentsTravelByValueAndObjectsByReference) {
    EXPECT_EQ(run(u"x = 1; f = Function('a', 'a = 2;'); f(x); x"), "number 1");
    EXPECT_EQ(run(u"o = new Object(); g = Function('a', 'a.v = 2;'); g(o); o.v"), "number 2");
}

// Quirk: a parameter cannot be called by its name.
TEST_F(Functions, ParameterCannotBeCalledByItsName) {
    run(u"one = Function('return 1;')");
    EXPECT_EQ(run(u"f = Function('cb', 'return cb();'); f(one)"), "null");
    EXPECT_EQ(run(u"g = Function('cb', 'var h = cb; return h();'); g(one)"), "number 1");
    EXPECT_EQ(run(u"k = Function('cb', 'return arguments[0]();'); k(one)"), "number 1");
}

// Quirk: nor is a member of the this object called then, for the chain has the name.
TEST_F(Functions, ParameterOfAnOuterCallHidesAMethodOfThisFromCalls) {
    run(u"o = new Object(); o.cb = Function('return 2;'); o.ask = Function('return cb();')");
    EXPECT_EQ(run(u"o.ask()"), "number 2");
    EXPECT_EQ(run(u"f = Function('cb', 'return o.ask();'); f(1)"), "null");
    EXPECT_EQ(run(u"w = new Object(); w.cb = 1; with (w) { o.ask(); }"), "null") << "nor behind a with";
    // The method of an outer call is another matter: it stands further up.
    EXPECT_EQ(run(u"p = new Object(); p.cb = Function('return 3;'); p.m = f; p.m(1)"), "number 3");
}

TEST_F(Functions, TheSameParameterTwiceIsTwoCellsOfWhichTheFirstIsSeen) {
    EXPECT_EQ(run(u"f = Function('a', 'a', 'return a * 10 + arguments[1];'); f(1, 2)"), "number 12");
}

// ---- Scope ----

TEST_F(Functions, VariablesOfTheCallerAreSeen) {
    run(u"inner = Function('return secret;'); outer = Function('var secret = 8; return inner();')");
    EXPECT_EQ(run(u"outer()"), "number 8");
    EXPECT_EQ(run(u"inner()"), "null");
    run(u"setter = Function('secret = 9;'); outer2 = Function('var secret = 8; setter(); return secret;')");
    EXPECT_EQ(run(u"outer2()"), "number 9");
    EXPECT_FALSE(machine->hasMember(BString(u"secret"), ctx(), nullptr));
}

TEST_F(Functions, ParameterShadowsAVariableOfTheCaller) {
    run(u"inner = Function('v', 'v = v + 1; return v;'); outer = Function('var v = 10; return inner(1) * 100 "
        u"+ v;')");
    EXPECT_EQ(run(u"outer()"), "number 210");
    EXPECT_EQ(run(u"v = 5; inner(1); v"), "number 5");
}

TEST_F(Functions, VarIsLocalAndAnUndeclaredNameBecomesGlobal) {
    EXPECT_EQ(run(u"f = Function('var local = 1; made = 2;'); f(); typeof local"), "string undefined");
    EXPECT_EQ(run(u"made"), "number 2");
}

TEST_F(Functions, EachCallHasVariablesOfItsOwn) {
    EXPECT_EQ(run(u"f = Function('n', 'if (n < 2) return 1; return n * f(n - 1);'); f(5)"), "number 120");
    EXPECT_EQ(run(u"g = Function('n', 'var own = n; if (n > 0) g(n - 1); return own;'); g(3)"), "number 3");
}

TEST_F(Functions, VarOfAParametersNameReadsAndWritesTheParameter) {
    EXPECT_EQ(run(u"f = Function('a', 'var a = 3; return arguments[0];'); f(1)"), "number 3");
}

// ---- this ----

TEST_F(Functions, MethodSeesItsObjectAsThis) {
    EXPECT_EQ(run(u"o = new Object(); o.v = 3; o.m = Function('return this.v;'); o.m()"), "number 3");
    EXPECT_EQ(run(u"a = [4]; a.m = Function('return this[0];'); a.m()"), "number 4");
}

TEST_F(Functions, FunctionCalledAtTopLevelSeesTheRootAsThis) {
    run(u"f = Function('return this;')");
    EXPECT_EQ(evaluate(u"f()").get(), machine.get());
    run(u"g = Function('this.made = 5;'); g()");
    EXPECT_EQ(globalText(u"made"), "number 5");
}

TEST_F(Functions, PlainCallInheritsTheThisOfItsCaller) {
    run(u"who = Function('return this.name;'); o = new Object(); o.name = 'o'; o.ask = Function('return "
        u"who();')");
    EXPECT_EQ(run(u"o.ask()"), "string o");
}

TEST_F(Functions, ConstructorWritesIntoTheNewObject) {
    run(u"Point = Function('x', 'y', 'this.x = x; this.y = y;'); p = new Point(1, 2); q = new Point(3, 4)");
    EXPECT_EQ(run(u"p.x * 1000 + p.y * 100 + q.x * 10 + q.y"), "number 1234");
}

TEST_F(Functions, ConstructorCanAddMethods) {
    run(u"Counter = Function('this.n = 5; this.next = Function(\\'this.n = this.n + 1; return "
        u"this.n;\\');')");
    EXPECT_EQ(run(u"c = new Counter(); c.next(); c.next()"), "number 7");
}

TEST_F(Functions, CallOfThisUnderNewCallsTheObjectWhoseMethodRuns) {
    run(u"o = Function('return 1;'); o.make = Function('called = this(2);'); new o.make()");
    EXPECT_EQ(run(u"called"), "number 1");
}

TEST_F(Functions, WritingThisUnderNewAssignsToTheCell) {
    EXPECT_EQ(run(u"F = Function('this = 5;'); x = new F(); x"), "number 5");
}

TEST_F(Functions, TypeOfThisUnderNewIsUndefinedUntilItIsWritten) {
    EXPECT_EQ(
        run(u"F = Function('before = typeof this; this.a = 1; after = typeof this;'); x = new F(); before"),
        "string undefined");
    EXPECT_EQ(run(u"after"), "string object");
}

// ---- caller ----

TEST_F(Functions, CallerIsTheFunctionOfTheCallingContext) {
    run(u"f = Function('return typeof caller;'); g = Function('return f();')");
    EXPECT_EQ(run(u"f()"), "string undefined");
    EXPECT_EQ(run(u"g()"), "string function");
    run(u"h = Function('return caller.decompile();'); k = Function('return h();')");
    EXPECT_EQ(run(u"k()"), run(u"k.decompile()"));
}

TEST_F(Functions, CallerIsOneObjectForACallAndAnotherForTheNext) {
    const Owned<Probe> probe(new Probe());
    std::vector<Value> callers;
    probe->onLook = [&](JSContext* context) {
        for (int i = 0; i < 2; ++i)
            callers.emplace_back(context->getMember(BString(u"caller"), context, nullptr));
    };
    setGlobal(u"probe", probe.get());
    run(u"f = Function('probe.look();'); g = Function('f(); f();'); g()");
    ASSERT_EQ(callers.size(), 4u);
    ASSERT_TRUE(callers[0]);
    EXPECT_EQ(callers[0].get(), callers[1].get());
    EXPECT_EQ(callers[2].get(), callers[3].get());
    EXPECT_NE(callers[0].get(), callers[2].get());
}

TEST_F(Functions, ActivationGoesByTheNameOfItsFunctionAndKnowsIt) {
    const Owned<Probe> probe(new Probe());
    probe->onLook = [&](JSContext* context) {
        EXPECT_EQ(support::memberName(context, context), "");
        const Value current(context->currentFunction());
        ASSERT_TRUE(current);
        EXPECT_EQ(current->valueType(context, nullptr), JSValueType::function);
        EXPECT_EQ(context->memberType(BString(u"arguments"), context, nullptr), JSValueType::object);
        EXPECT_TRUE(context->hasMember(BString(u"caller"), context, nullptr));
    };
    setGlobal(u"probe", probe.get());
    run(u"f = Function('probe.look();'); f()");
    EXPECT_EQ(probe->looks, 1);
    EXPECT_FALSE(Value(machine->currentFunction()));
}

// ---- Calling through the host's operations ----

TEST_F(Functions, FunctionIsOfTypeFunction) {
    const Value made = function(u"return 1;");
    EXPECT_EQ(made->valueType(ctx(), nullptr), JSValueType::function);
    EXPECT_EQ(support::className(made.get(), ctx()), "Function");
    EXPECT_TRUE(made->hasMember(BString(u"decompile"), ctx(), nullptr));
    EXPECT_EQ(made->memberType(BString(u"decompile"), ctx(), nullptr), JSValueType::function);
}

TEST_F(Functions, FunctionCanBeCalledWithoutArguments) {
    EXPECT_EQ(describe(Value(function(u"return arguments.length;")->call(nullptr, ctx(), nullptr)).get()),
              "null")
        << "the number 0 is handed back as undefined";
    EXPECT_EQ(describe(Value(function(u"return typeof a;", u"a")->call(nullptr, ctx(), nullptr)).get()),
              "string undefined");
}

TEST_F(Functions, CallInAStoppedContextGivesNothing) {
    run(u"ran = 0");
    const Value made = function(u"ran = 1;");
    machine->setCompletion(JSCompletion::breakLoop);
    EXPECT_FALSE(Value(made->call(nullptr, ctx(), nullptr)));
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(run(u"ran"), "number 0");
}

TEST_F(Functions, FunctionThatReplacesItselfRunsToItsEnd) {
    EXPECT_EQ(run(u"f = Function('f = 0; return 5;'); f()"), "number 5");
    EXPECT_EQ(run(u"f"), "number 0");
}

}  // namespace
}  // namespace quorvelin
