// Numbers and booleans: the value objects and their constructors, and what the name Object is.
#include <gtest/gtest.h>

#include "objects/boolean_object.h"
#include "objects/number_object.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::asNumber;
using support::className;
using support::memberName;

class NumberObject : public support::ScriptTest {
  protected:
    Value numberConstructor() { return Value(number(1)->getMember(BString(u"prototype"), ctx(), nullptr)); }
    Value booleanConstructor() {
        return Value(boolean(true)->getMember(BString(u"prototype"), ctx(), nullptr));
    }
    Value record(const JSNumberValue& value) { return Value(machine->makeNumber(value, nullptr)); }
};

class BooleanObject : public NumberObject {};

// Quirk: three of the four constants are not what their names say.
TEST_F(NumberObject, ConstantsOfTheConstructor) {
    EXPECT_EQ(run(u"n = 5; c = n.prototype; c.POSITIVE_INFINITY"), "number 2");
    EXPECT_EQ(run(u"c.NEGATIVE_INFINITY"), "number 3");
    EXPECT_EQ(run(u"c.NaN"), "number 0");
    EXPECT_EQ(run(u"'' + c.MAX_VALUE").size(), std::string("string ").size() + 309);
    EXPECT_EQ(run(u"typeof c.MIN_VALUE"), "string undefined");
}

// Quirk: a script's own member of the name of a constant is never seen.
TEST_F(NumberObject, WritingAConstantIsSilentAndTheConstantStays) {
    EXPECT_EQ(run(u"n = 5; c = n.prototype; c.NaN = 1; c.NaN"), "number 0");
    EXPECT_EQ(run(u"c[0]"), "number 1") << "the member is there, by position";
    EXPECT_EQ(run(u"delete c.NaN; c.length"), "number 0");
    EXPECT_EQ(run(u"delete c.MAX_VALUE; typeof c.MAX_VALUE"), "string number");
}

// Quirk: only the constructor of numbers is a function.
TEST_F(NumberObject, ConstructorIsAFunctionUnlikeTheOthers) {
    EXPECT_EQ(numberConstructor()->valueType(ctx(), nullptr), JSValueType::function);
    EXPECT_EQ(booleanConstructor()->valueType(ctx(), nullptr), JSValueType::object);
    EXPECT_EQ(className(numberConstructor().get(), ctx()), "Number");
    EXPECT_EQ(memberName(numberConstructor().get(), ctx()), "Number");
    EXPECT_EQ(memberName(booleanConstructor().get(), ctx()), "Boolean");
}

TEST_F(NumberObject, ConstructorIsItsOwnConstructor) {
    const Value constructor = numberConstructor();
    EXPECT_EQ(Value(constructor->getMember(BString(u"constructor"), ctx(), nullptr)).get(),
              constructor.get());
    EXPECT_EQ(constructor->memberType(BString(u"constructor"), ctx(), nullptr), JSValueType::object);
    for (const char16_t* name : {u"MAX_VALUE", u"NaN", u"NEGATIVE_INFINITY", u"POSITIVE_INFINITY"}) {
        EXPECT_TRUE(constructor->hasMember(BString(name), ctx(), nullptr));
        EXPECT_EQ(constructor->memberType(BString(name), ctx(), nullptr), JSValueType::number);
    }
    EXPECT_EQ(constructor->memberCount(ctx(), nullptr), 0);
}

TEST_F(NumberObject, CallOfTheConstructorConverts) {
    EXPECT_EQ(run(u"Number()"), "number 0");
    EXPECT_EQ(run(u"Number('12')"), "number 12");
    EXPECT_EQ(run(u"Number('x')"), "number 0");
    EXPECT_EQ(run(u"Number(true)"), "number 1");
    EXPECT_EQ(run(u"new Number('3', 4)"), "number 3");
    EXPECT_EQ(describe(Value(machine->callMember(BString(u"Number"), nullptr, ctx(), nullptr)).get()),
              "number 0");
}

// Quirk: the receiver is not passed on to its own assignment.
TEST_F(NumberObject, ConstructorStoresIntoTheReceiverWithoutHandingItOn) {
    struct Receiver final : JSObject {
        JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override {
            assigned = Value::share(value);
            context = ctx;
            handedOn = receiver;
            return nullptr;
        }
        Value assigned;
        JSContext* context = nullptr;
        JSObject* handedOn = this;
    };
    for (const char16_t* name : {u"Number", u"Boolean", u"String", u"Array", u"Function"}) {
        const Owned<Receiver> receiver(new Receiver());
        const Value arguments = list({});
        const Value made(machine->callMember(BString(name), arguments.get(), ctx(), receiver.get()));
        ASSERT_TRUE(made);
        EXPECT_EQ(receiver->assigned.get(), made.get());
        EXPECT_EQ(receiver->context, ctx());
        EXPECT_EQ(receiver->handedOn, nullptr);
    }
}

// Quirk: a radix is ignored.
TEST_F(NumberObject, ToStringIgnoresItsArguments) {
    EXPECT_EQ(run(u"(5).toString(2)"), "string 5");
    EXPECT_EQ(run(u"(5).valueOf(7, 8)"), "number 5");
    const Value five = number(5);
    EXPECT_EQ(Value(five->callMember(BString(u"valueOf"), nullptr, ctx(), nullptr)).get(), five.get());
}

TEST_F(NumberObject, WritingToStringOrValueOfIsRefusedAndTheRunGoesOn) {
    EXPECT_EQ(run(u"n = 5; n.toString = 1; n.valueOf = 2; 7"), "number 7");
    EXPECT_EQ(messages(), "this property is read only; this property is read only");
    EXPECT_EQ(run(u"delete n.toString; n.toString()"), "string 5");
    EXPECT_EQ(messages(), "this property is read only");
}

TEST_F(NumberObject, MembersAreLookedForOnTheNumberAlone) {
    EXPECT_EQ(run(u"n = 5; n.own = 'kept'; n.own"), "string kept");
    EXPECT_EQ(run(u"m = 6; typeof m.own"), "string undefined");
    EXPECT_EQ(run(u"c = n.prototype; c.shared = 1; typeof n.shared"), "string undefined");
    run(u"delete c.shared");  // a number on the constructor of numbers is a cycle
    const Value five = number(5);
    for (const char16_t* name : {u"valueOf", u"toString"}) {
        EXPECT_TRUE(five->hasMember(BString(name), ctx(), nullptr));
        EXPECT_EQ(five->memberType(BString(name), ctx(), nullptr), JSValueType::function);
    }
}

// Quirk: a call of any other member only reads it.
TEST_F(NumberObject, CallOfAnyOtherMemberOnlyReadsIt) {
    EXPECT_EQ(run(u"n = 5; n.m = 'text'; n.m(1)"), "string text");
    EXPECT_EQ(run(u"called = 0; n.f = Function('called = 1; return 9;'); x = n.f(); called"), "number 0");
    EXPECT_EQ(run(u"n.nothing()"), "null");
}

// Quirk: a NaN, and an infinity from the tables of arithmetic, reads as 0.
TEST_F(NumberObject, NumberThatIsNotFiniteReadsAsTheDoubleOfItsRecord) {
    const Value nan = record({0.0, JSNumberKind::notANumber});
    EXPECT_EQ(describe(nan.get()), "number NaN");
    EXPECT_EQ(asNumber(nan.get(), ctx()), "0");
    const Value infinity = record({0.0, JSNumberKind::plusInfinity});
    EXPECT_EQ(describe(infinity.get()), "number +Infinity");
    EXPECT_EQ(asNumber(infinity.get(), ctx()), "0");
    EXPECT_EQ(run(u"1/0 + 1"), "number 1");
    // One that came out of the normalising keeps its infinite double.
    EXPECT_EQ(run(u"1e308 * 10 + 1"), "number +Infinity");
    EXPECT_EQ(run(u"x = 1/0; x"), "number NaN");
    EXPECT_EQ(run(u"x = 1/0; x"), "number 0") << "stored into an existing cell";
}

TEST_F(NumberObject, ZeroIsItsOwnObject) {
    const Value zero = number(0);
    EXPECT_EQ(Value(zero->asObject(ctx(), nullptr)).get(), zero.get());
    EXPECT_EQ(zero->refCount(), 0);
}

TEST_F(NumberObject, MakeNumberTextReadsByRadix) {
    EXPECT_EQ(describe(Value(machine->makeNumberText(BString(u"ff"), 16, nullptr)).get()), "number 255");
    EXPECT_EQ(describe(Value(machine->makeNumberText(BString(u"1x"), 10, nullptr)).get()), "number NaN");
}

TEST_F(BooleanObject, ConvertsToTextAndNumber) {
    const Value yes = boolean(true);
    const Value no = boolean(false);
    EXPECT_EQ(describe(yes.get()), "boolean true");
    EXPECT_EQ(describe(no.get()), "boolean false");
    EXPECT_EQ(asNumber(yes.get(), ctx()), "1");
    EXPECT_EQ(asNumber(no.get(), ctx()), "0");
    EXPECT_EQ(className(yes.get(), ctx()), "Boolean");
}

TEST_F(BooleanObject, HandsOutANewObjectOfTheSameValue) {
    const Value yes = boolean(true);
    const Value object(yes->asObject(ctx(), nullptr));
    EXPECT_NE(object.get(), yes.get());
    EXPECT_TRUE(object->asBoolean(ctx(), nullptr));
    EXPECT_FALSE(Value(boolean(false)->asObject(ctx(), nullptr))->asBoolean(ctx(), nullptr));
}

// Quirk: the truth of the list of arguments counts, not that of the first one.
TEST_F(BooleanObject, CallOfTheConstructorAsksTheListOfArguments) {
    EXPECT_EQ(run(u"Boolean(0)"), "boolean true");
    EXPECT_EQ(run(u"Boolean(false)"), "boolean true");
    EXPECT_EQ(run(u"Boolean()"), "boolean true") << "a script passes a list, if an empty one";
    EXPECT_EQ(describe(Value(machine->callMember(BString(u"Boolean"), nullptr, ctx(), nullptr)).get()),
              "boolean false");
    EXPECT_EQ(run(u"x = new Boolean(false); x"), "boolean true");
}

TEST_F(BooleanObject, ConstructorTakesNoAssignment) {
    const Value constructor = booleanConstructor();
    const Value value = number(1);
    EXPECT_EQ(Value(constructor->assign(value.get(), ctx(), nullptr)).get(), value.get());
    EXPECT_EQ(value->refCount(), 0);
    EXPECT_FALSE(Value(constructor->assign(nullptr, ctx(), nullptr)));
}

// ---- Object ----

TEST_F(NumberObject, ObjectIsAFreshPlainObjectAtEachRead) {
    run(u"a = Object; b = Object; c = Object(); d = new Object(); a.x = 1");
    EXPECT_EQ(run(u"typeof b.x"), "string undefined");
    EXPECT_EQ(run(u"typeof c + typeof d"), "string objectobject");
    EXPECT_NE(Value(global(u"a")->asObject(ctx(), nullptr)).get(),
              Value(global(u"b")->asObject(ctx(), nullptr)).get());
}

TEST_F(NumberObject, ObjectMadeAtTopLevelHasNoConstructor) {
    EXPECT_FALSE(Value(plainObject()->getConstructor(ctx(), nullptr)));
}

TEST_F(NumberObject, ObjectMadeInAFunctionBelongsToThatFunction) {
    run(u"f = Function('return new Object();'); o = f()");
    const Value object(global(u"o")->asObject(ctx(), nullptr));
    const Value maker(object->getConstructor(ctx(), nullptr));
    ASSERT_TRUE(maker);
    EXPECT_EQ(maker->valueType(ctx(), nullptr), JSValueType::function);
    EXPECT_EQ(run(u"typeof o.decompile"), "string function")
        << "it asks its function for names it does not have";
    EXPECT_EQ(run(u"o.own = 1; o.length"), "number 1") << "but keeps new names itself";
    EXPECT_EQ(run(u"'' + o"), "string [object ]");
}

}  // namespace
}  // namespace quorvelin
