// References: what a member or an index evaluates to, and methods as values.
#include "objects/references.h"

#include <gtest/gtest.h>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::asNumber;
using support::asString;
using support::className;
using support::memberName;

class References : public support::ScriptTest {
  protected:
    Value methodRef(JSObject* owner, const char16_t* name, bool native) {
        return Value(machine->makeMethodRef(owner, BString(name), native, nullptr));
    }
};

TEST_F(References, WritingThroughTwoLevelsMakesTheObjectInBetween) {
    EXPECT_EQ(run(u"a = new Object(); a.b.c = 1; a.b.c"), "number 1");
    EXPECT_EQ(run(u"typeof a.b"), "string object");
    EXPECT_EQ(run(u"a.length"), "number 1");
    EXPECT_EQ(run(u"a.p.q.r.s = 'deep'; a.p.q.r.s"), "string deep");
}

TEST_F(References, WritingThroughAnIndexMakesTheObjectInBetween) {
    EXPECT_EQ(run(u"a = []; a[3].x = 1; a[3].x"), "number 1");
    EXPECT_EQ(run(u"a.length"), "number 4");
    EXPECT_EQ(run(u"a[0][1] = 2; a[0][1]"), "number 2");
}

TEST_F(References, ReferenceSeesLaterChanges) {
    run(u"a = new Object(); a.b = 1");
    const Value reference = evaluate(u"a.b");
    EXPECT_EQ(describe(reference.get()), "number 1");
    run(u"a.b = 'two'");
    EXPECT_EQ(describe(reference.get()), "string two");
    run(u"delete a.b");
    EXPECT_EQ(describe(reference.get()), "undefined");
    run(u"a = []; a[0] = 5");
    EXPECT_EQ(describe(reference.get()), "undefined") << "the name a is read afresh as well";
}

TEST_F(References, IndexReferenceSeesLaterChanges) {
    run(u"a = [1, 2]");
    const Value reference = evaluate(u"a[1]");
    run(u"a[1] = 9");
    EXPECT_EQ(describe(reference.get()), "number 9");
    run(u"delete a[0]");
    EXPECT_EQ(describe(reference.get()), "undefined");
}

TEST_F(References, DeleteRemovesTheMemberFromTheTarget) {
    EXPECT_EQ(run(u"a = new Object(); a.b = 1; a.c = 2; delete a.b"), "null");
    EXPECT_EQ(run(u"typeof a.b + a.length"), "string undefined1");
    EXPECT_EQ(run(u"x = [1, 2, 3]; delete x[0]; x[0]"), "number 2");
    EXPECT_EQ(run(u"delete x; typeof x"), "string undefined");
    EXPECT_FALSE(machine->hasMember(BString(u"x"), ctx(), nullptr));
}

TEST_F(References, ReferenceToNothingIsUndefined) {
    for (const char16_t* script : {u"nothing", u"a = new Object(); a.nothing", u"b = []; b[7]"}) {
        const Value reference = evaluate(script);
        ASSERT_TRUE(reference);
        EXPECT_EQ(reference->valueType(ctx(), nullptr), JSValueType::undefined);
        EXPECT_FALSE(reference->hasMember(BString(u"length"), ctx(), nullptr));
        EXPECT_EQ(reference->memberType(BString(u"length"), ctx(), nullptr), JSValueType::undefined);
        EXPECT_FALSE(Value(reference->getMember(BString(u"length"), ctx(), nullptr)));
        EXPECT_FALSE(Value(reference->callMember(BString(u"toString"), nullptr, ctx(), nullptr)));
        EXPECT_FALSE(Value(reference->getItem(0, ctx(), nullptr)));
        EXPECT_FALSE(Value(reference->call(nullptr, ctx(), nullptr)));
        EXPECT_EQ(reference->memberCount(ctx(), nullptr), 0);
        EXPECT_FALSE(Value(reference->memberAt(0, ctx(), nullptr)));
        EXPECT_FALSE(reference->asBoolean(ctx(), nullptr));
        EXPECT_FALSE(Value(reference->asObject(ctx(), nullptr)));
        EXPECT_EQ(asString(reference.get(), ctx()), "");
        EXPECT_EQ(asNumber(reference.get(), ctx()), "0");
        EXPECT_EQ(className(reference.get(), ctx()), "undefined");
        BString expression(u"left over");
        reference->asExpression(expression, ctx(), nullptr);
        EXPECT_TRUE(expression.isEmpty());
    }
}

TEST_F(References, ReferenceActsAsTheValue) {
    run(u"a = new Object(); a.b = [4, 5]");
    const Value reference = evaluate(u"a.b");
    EXPECT_EQ(describe(reference.get()), "object 4,5");
    EXPECT_EQ(reference->memberCount(ctx(), nullptr), 2);
    EXPECT_EQ(describe(Value(reference->getItem(1, ctx(), nullptr)).get()), "number 5");
    EXPECT_EQ(className(reference.get(), ctx()), "Array");
    reference->deleteItem(0, ctx(), nullptr);
    EXPECT_EQ(describe(reference.get()), "object 5");
    EXPECT_FALSE(reference->deleteMember(BString(u"none"), ctx(), nullptr));
    EXPECT_EQ(reference->getLength(nullptr), 0) << "not forwarded";
}

TEST_F(References, NameIsThatOfTheReferenceOrOfTheElement) {
    run(u"a = new Object(); a.first = 1; a[1] = 2");
    EXPECT_EQ(memberName(evaluate(u"a.nothing").get(), ctx()), "nothing");
    EXPECT_EQ(memberName(evaluate(u"a[0]").get(), ctx()), "first");
    EXPECT_EQ(memberName(evaluate(u"a[1]").get(), ctx()), "");
    EXPECT_EQ(memberName(evaluate(u"a[9]").get(), ctx()), "");
}

TEST_F(References, PendingJumpMakesAReferenceReadNothing) {
    run(u"a = new Object(); a.b = 'text'");
    const Value reference = evaluate(u"a.b");
    machine->setCompletion(JSCompletion::breakLoop);
    EXPECT_EQ(asString(reference.get(), ctx()), "");
    EXPECT_EQ(className(reference.get(), ctx()), "undefined");
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(asString(reference.get(), ctx()), "text");
}

// ---- Methods as values ----

// Quirk: without the blanks that the text of other native functions has.
TEST_F(References, TextOfANativeMethod) {
    EXPECT_EQ(run(u"x = new Object(); '' + x.toString"), "string function toString(){[native code]}");
    EXPECT_EQ(run(u"x.toString"), "function function toString(){[native code]}");
}

// Quirk: a method that is read but not called is false.
TEST_F(References, MethodReadWithoutCallingIsFalse) {
    EXPECT_EQ(run(u"x = new Object(); if (x.toString) 1; else 2;"), "number 2");
    EXPECT_EQ(run(u"!x.toString"), "boolean true");
    EXPECT_EQ(run(u"x.toString * 1"), "number 0");
}

TEST_F(References, NativeMethodReadIntoAVariableCanBeCalled) {
    EXPECT_EQ(run(u"n = [1, 2]; f = n.join; f()"), "string 12");
    EXPECT_EQ(run(u"typeof f"), "string function");
}

TEST_F(References, NativeMethodIsInertApartFromCalls) {
    const Value owner = plainObject();
    const Value stored(owner->setMember(BString(u"x"), number(1).get(), ctx(), nullptr));
    const Value method = methodRef(owner.get(), u"valueOf", true);
    const BString length(u"length");
    EXPECT_EQ(method->valueType(ctx(), nullptr), JSValueType::function);
    EXPECT_FALSE(method->hasMember(length, ctx(), nullptr));
    EXPECT_EQ(method->memberType(length, ctx(), nullptr), JSValueType::undefined);
    EXPECT_FALSE(Value(method->getMember(length, ctx(), nullptr)));
    EXPECT_FALSE(Value(method->setMember(length, number(5).get(), ctx(), nullptr)));
    EXPECT_FALSE(method->deleteMember(length, ctx(), nullptr));
    EXPECT_FALSE(Value(method->callMember(BString(u"valueOf"), nullptr, ctx(), nullptr)));
    EXPECT_FALSE(Value(method->getItem(0, ctx(), nullptr)));
    EXPECT_FALSE(Value(method->setItem(0, number(5).get(), ctx(), nullptr)));
    EXPECT_FALSE(Value(method->assign(number(5).get(), ctx(), nullptr)));
    EXPECT_EQ(method->memberCount(ctx(), nullptr), 0);
    EXPECT_FALSE(Value(method->memberAt(0, ctx(), nullptr)));
    method->clearMembers(ctx(), nullptr);
    EXPECT_EQ(asNumber(method.get(), ctx()), "0");
    EXPECT_FALSE(method->asBoolean(ctx(), nullptr));
    EXPECT_EQ(className(method.get(), ctx()), "Function");
    EXPECT_EQ(Value(method->asObject(ctx(), nullptr)).get(), method.get());
    EXPECT_EQ(memberName(method.get(), ctx()), "valueOf");
    EXPECT_EQ(owner->memberCount(ctx(), nullptr), 1);
    EXPECT_EQ(Value(method->call(nullptr, ctx(), nullptr)).get(), owner.get());
}

TEST_F(References, MethodThatIsNotNativeActsAsAReference) {
    const Value owner = plainObject();
    const Value stored(owner->setMember(BString(u"x"), string(u"text").get(), ctx(), nullptr));
    const Value method = methodRef(owner.get(), u"x", false);
    EXPECT_EQ(method->valueType(ctx(), nullptr), JSValueType::function) << "the type is always that";
    EXPECT_EQ(asString(method.get(), ctx()), "text");
    EXPECT_EQ(className(method.get(), ctx()), "String");
    EXPECT_EQ(asNumber(method.get(), ctx()), "0");
    EXPECT_FALSE(method->asBoolean(ctx(), nullptr));
    const Value assigned(method->assign(string(u"other").get(), ctx(), nullptr));
    EXPECT_EQ(asString(method.get(), ctx()), "other");
    method->clearMembers(ctx(), nullptr);
    EXPECT_EQ(owner->memberCount(ctx(), nullptr), 0);
}

}  // namespace
}  // namespace quorvelin
