// Contexts: `with`, the scope of a method call, and the operations by which contexts work together.
#include "evaluator/contexts.h"

#include <gtest/gtest.h>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

class Contexts : public support::ScriptTest {
  protected:
    void expectAll(std::initializer_list<std::pair<const char16_t*, const char*>> rows) {
        for (const auto& [script, result] : rows) {
            EXPECT_EQ(run(script), result) << support::ascii(std::u16string_view(script));
        }
    }
    Owned<JSContext> thisContext(JSContext* parent, JSObject* object) {
        return Owned<JSContext>(parent->makeThisContext(object, nullptr, nullptr));
    }
    Owned<JSContext> localContext(JSContext* parent) {
        return Owned<JSContext>(parent->makeLocalContext(nullptr, nullptr));
    }
};

// ---- with ----

TEST_F(Contexts, WithWritesToItsObjectWhenItHasTheName) {
    EXPECT_EQ(run(u"o = new Object(); o.x = 0; with (o) { x = 1; y = 2; } o.x"), "number 1");
    EXPECT_EQ(run(u"y"), "number 2") << "the other name goes up and becomes global";
    EXPECT_EQ(run(u"typeof o.y"), "string undefined");
}

TEST_F(Contexts, WithIsAskedBeforeTheChain) {
    EXPECT_EQ(run(u"x = 'global'; o = new Object(); o.x = 'own'; with (o) x;"), "string own");
    EXPECT_EQ(run(u"with (o) { delete x; } typeof o.x + x"), "string undefinedglobal");
    EXPECT_EQ(run(u"o.n = 1; with (o) typeof n;"), "string number");
}

TEST_F(Contexts, WithIsNotSeenByACallOfABareName) {
    EXPECT_EQ(run(u"o = new Object(); o.m = Function('return 1;'); with (o) { m(); }"), "null");
    EXPECT_EQ(run(u"with (o) { n = m; n() }"), "number 1");
}

TEST_F(Contexts, VarInWithIsDeclaredOutsideAndWrittenToTheObject) {
    EXPECT_EQ(run(u"o = new Object(); o.v = 1; with (o) { var v = 5; } o.v"), "number 5");
    EXPECT_EQ(run(u"typeof v"), "string undefined") << "declared, without a value";
    EXPECT_TRUE(machine->hasMember(BString(u"v"), ctx(), nullptr));
}

TEST_F(Contexts, WithInsideWithAsksTheInnerObjectFirst) {
    EXPECT_EQ(
        run(u"a = new Object(); a.x = 1; a.y = 2; b = new Object(); b.x = 10; with (a) with (b) x + y;"),
        "number 12");
}

// ---- this ----

// Quirk: the chain comes before the this object.
TEST_F(Contexts, BareNameInAMethodIsAGlobalBeforeItIsAMemberOfThis) {
    EXPECT_EQ(run(u"o = new Object(); o.v = 'member'; o.m = Function('return v;'); o.m()"), "string member");
    EXPECT_EQ(run(u"v = 'global'; o.m()"), "string global");
}

TEST_F(Contexts, BareWriteInAMethodGoesToTheMemberOfThisIfNobodyElseHasTheName) {
    EXPECT_EQ(run(u"o = new Object(); o.w = 1; o.m = Function('w = 2;'); o.m(); o.w"), "number 2");
    EXPECT_EQ(run(u"w = 5; o.m(); o.w * 10 + w"), "number 22");
}

// Quirk: writing `this` assigns into the object.
TEST_F(Contexts, WritingThisAssignsIntoTheObject) {
    // A plain object takes no assignment, so nothing happens to it and `this` stays what it is.
    EXPECT_EQ(run(u"o = new Object(); o.v = 3; o.m = Function('this = 5; return this.v;'); o.m()"),
              "number 3");
    const Value holder = string(u"unused");
    struct Assignable final : JSObject {
        JSObject* assign(JSObject* value, JSContext* ctx, JSObject*) override {
            assigned = support::describe(value, ctx);
            return nullptr;
        }
        std::string assigned;
    };
    const Owned<Assignable> object(new Assignable());
    const Value method = function(u"this = 5;");
    const Value result(machine->callWithThis(object.get(), method.get(), nullptr, ctx(), nullptr));
    EXPECT_EQ(object->assigned, "number 5");
}

// Quirk: the message does not end the operation.
TEST_F(Contexts, DeletingThisIsReported) {
    EXPECT_EQ(run(u"o = new Object(); o.m = Function('delete this; return 4;'); o.m()"), "number 4");
    EXPECT_EQ(messages(), "this property is read only");
}

TEST_F(Contexts, CallOfThisCallsTheObject) {
    EXPECT_EQ(run(u"f = Function('return 8;'); f.m = Function('return this();'); f.m()"), "number 8");
}

TEST_F(Contexts, ThisContextWithoutAnObjectTakesTheFirstValueWritten) {
    const Owned<JSContext> context = thisContext(ctx(), nullptr);
    const BString name(u"this");
    EXPECT_TRUE(context->hasMember(name, context.get(), nullptr));
    EXPECT_FALSE(Value(context->getMember(name, context.get(), nullptr)));
    EXPECT_FALSE(Value(context->getThis(context.get(), nullptr)));
    const Value object = plainObject();
    EXPECT_EQ(Value(context->setMember(name, object.get(), context.get(), nullptr)).get(), object.get());
    EXPECT_EQ(Value(context->getMember(name, context.get(), nullptr)).get(), object.get());
    EXPECT_EQ(Value(context->getThis(context.get(), nullptr)).get(), object.get());
    const Value other = plainObject();
    context->setThis(other.get(), context.get(), nullptr);
    EXPECT_EQ(Value(context->getThis(context.get(), nullptr)).get(), other.get());
    EXPECT_EQ(object->refCount(), 0);
}

TEST_F(Contexts, GetThisGivesTheReceiverThenTheNearestObjectThenTheRoot) {
    const Value receiver = plainObject();
    const Value object = plainObject();
    const Owned<JSContext> holder = thisContext(ctx(), object.get());
    const Owned<JSContext> below = localContext(holder.get());
    EXPECT_EQ(Value(below->getThis(below.get(), receiver.get())).get(), receiver.get());
    EXPECT_EQ(Value(below->getThis(below.get(), nullptr)).get(), object.get());
    EXPECT_EQ(Value(machine->getThis(below.get(), nullptr)).get(), object.get())
        << "from the given context up";
    EXPECT_EQ(Value(machine->getThis(ctx(), nullptr)).get(), machine.get());
}

// ---- Declaring ----

TEST_F(Contexts, VariablesAreDeclaredInTheNearestLocalContext) {
    const Owned<JSContext> local = localContext(ctx());
    const Owned<JSContext> scope = thisContext(local.get(), nullptr);
    EXPECT_TRUE(scope->declareVariable(BString(u"v")));
    EXPECT_TRUE(scope->declareVariable(BString(u"v"))) << "once more changes nothing";
    EXPECT_EQ(local->getLength(nullptr), 1);
    EXPECT_EQ(scope->getLength(nullptr), 0);
    EXPECT_FALSE(machine->hasMember(BString(u"v"), ctx(), nullptr));
}

TEST_F(Contexts, DeclaringAFunctionAtTheRootIsAcceptedAndDoesNothing) {
    const int32_t before = machine->getLength(nullptr);
    EXPECT_TRUE(localContext(ctx())->declareFunction(BString(u"f"), nullptr));
    EXPECT_EQ(machine->getLength(nullptr), before);
}

// ---- Completion ----

TEST_F(Contexts, ReportingDoesNotStopAnything) {
    Owned<JSContext> below = localContext(ctx());
    for (int depth = 0; depth < 5; ++depth) below = localContext(below.get());
    below->reportError(BString(u"from below"));
    EXPECT_FALSE(below->isStopped());
    EXPECT_FALSE(machine->isStopped());
    EXPECT_EQ(messages(), "from below");
    below->setCompletion(JSCompletion::breakLoop);
    below->reportError(BString(u"again"));
    EXPECT_TRUE(below->isStopped());
    EXPECT_EQ(messages(), "again");
}

TEST_F(Contexts, ContextBelowAStoppedOneIsStoppedAndTheOneAboveIsNot) {
    const Owned<JSContext> middle = localContext(ctx());
    const Owned<JSContext> below = thisContext(middle.get(), nullptr);
    for (const JSCompletion completion :
         {JSCompletion::breakLoop, JSCompletion::continueLoop, JSCompletion::returned}) {
        EXPECT_EQ(middle->setCompletion(completion), completion);
        EXPECT_EQ(middle->getCompletion(), completion);
        EXPECT_EQ(below->getCompletion(), JSCompletion::normal) << "its own";
        EXPECT_TRUE(below->isStopped());
        EXPECT_TRUE(middle->isStopped());
        EXPECT_FALSE(machine->isStopped());
        middle->setCompletion(JSCompletion::normal);
        EXPECT_FALSE(below->isStopped());
    }
}

TEST_F(Contexts, DestroyedContextLeavesNoPendingJumpBehind) {
    {
        const Owned<JSContext> gone = localContext(ctx());
        gone->setCompletion(JSCompletion::returned);
    }
    EXPECT_FALSE(machine->isStopped());
    EXPECT_EQ(run(u"5"), "number 5");
}

TEST_F(Contexts, BreakStaysInItsContextAndReturnGoesUp) {
    const Owned<JSContext> scope = thisContext(ctx(), nullptr);
    BString label;
    EXPECT_EQ(scope->doBreak(BString(u"out")), 0);
    EXPECT_EQ(scope->getCompletion(), JSCompletion::breakLoop);
    scope->jumpLabel(label);
    EXPECT_EQ(support::ascii(label), "out");
    EXPECT_EQ(machine->getCompletion(), JSCompletion::normal);
    EXPECT_EQ(scope->doContinue(BString()), 0);
    EXPECT_EQ(scope->getCompletion(), JSCompletion::continueLoop);
    scope->jumpLabel(label);
    EXPECT_TRUE(label.isEmpty());
    scope->doReturn(nullptr, nullptr);
    EXPECT_EQ(scope->getCompletion(), JSCompletion::returned);
    EXPECT_EQ(machine->getCompletion(), JSCompletion::returned);
    machine->setCompletion(JSCompletion::normal);
}

// ---- Values and position ----

TEST_F(Contexts, EveryContextMakesUndefinedAndNull) {
    const Owned<JSContext> local = localContext(ctx());
    const Owned<JSContext> scope = thisContext(local.get(), nullptr);
    const Owned<JSContext> alone(new JSContext(nullptr));
    for (JSContext* context : {ctx(), local.get(), scope.get(), alone.get()}) {
        EXPECT_FALSE(Value(context->makeUndefined(nullptr)));
        const Value null(context->makeNull(nullptr));
        ASSERT_TRUE(null);
        EXPECT_EQ(support::asString(null.get(), context), "null");
        const Value object(context->makeObject(nullptr));
        ASSERT_TRUE(object);
        EXPECT_EQ(object->valueType(context, nullptr), JSValueType::object);
    }
}

TEST_F(Contexts, ContextWithoutParentMakesNoOtherValues) {
    const Owned<JSContext> alone(new JSContext(nullptr));
    EXPECT_FALSE(Value(alone->makeString(BString(u"a"), nullptr)));
    EXPECT_FALSE(Value(alone->makeNumber(JSNumberValue::of(1), nullptr)));
    EXPECT_FALSE(Value(alone->makeBoolean(true, nullptr)));
    EXPECT_FALSE(Value(alone->makeArray(nullptr)));
    EXPECT_FALSE(Value(alone->makeRegExp(BString(u"a"), nullptr)));
    EXPECT_FALSE(Value(alone->makeDateNow(nullptr)));
    EXPECT_FALSE(Value(alone->currentFunction()));
    EXPECT_FALSE(alone->declareVariable(BString(u"v")));
    EXPECT_FALSE(alone->declareParameter(BString(u"v")));
    alone->reportError(BString(u"nobody hears"));
    alone->setPosition(1, 2);
    EXPECT_EQ(Value(alone->getThis(alone.get(), nullptr)).get(), alone.get());
}

TEST_F(Contexts, PositionIsKeptAtTheRoot) {
    const Owned<JSContext> below = thisContext(localContext(ctx()).get(), nullptr);
    below->setPosition(12, 34);
    EXPECT_EQ(machine->position(), "12:34");
    int32_t line = 0;
    int32_t column = 0;
    below->getPosition(line, column);
    EXPECT_EQ(line, 12);
    EXPECT_EQ(column, 34);
}

TEST_F(Contexts, ContextIsAnObjectWhoseMembersAreTheNames) {
    const Owned<JSContext> local = localContext(ctx());
    run(u"x = 5");
    const BString name(u"x");
    EXPECT_TRUE(local->hasMember(name, local.get(), nullptr));
    EXPECT_EQ(local->memberType(name, local.get(), nullptr), JSValueType::number);
    local->declareVariable(name);
    EXPECT_EQ(local->memberType(name, local.get(), nullptr), JSValueType::undefined);
    const Value stored(local->setMember(name, string(u"own").get(), local.get(), nullptr));
    EXPECT_EQ(run(u"x"), "number 5");
    local->deleteMember(name, local.get(), nullptr);
    EXPECT_EQ(describe(Value(local->getMember(name, local.get(), nullptr)).get()), "number 5");
    EXPECT_EQ(local->valueType(local.get(), nullptr), JSValueType::object);
}

}  // namespace
}  // namespace quorvelin
