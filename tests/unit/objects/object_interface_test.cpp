// The operations that every script object has, as the root class defines them, called as a host calls them.
#include <gtest/gtest.h>

#include <cmath>

#include "objects/js_property.h"
#include "objects/member_request.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::asString;
using support::memberName;
using support::textOf;

class ObjectInterface : public support::ScriptTest {
  protected:
    void set(JSObject* target, const char16_t* name, JSObject* value) {
        const Value stored(target->setMember(BString(name), value, ctx(), nullptr));
    }
    Value get(JSObject* target, const char16_t* name) {
        return Value(target->getMember(BString(name), ctx(), nullptr));
    }
    Value item(JSObject* target, int32_t index) { return Value(target->getItem(index, ctx(), nullptr)); }
    bool has(JSObject* target, const char16_t* name) {
        return target->hasMember(BString(name), ctx(), nullptr);
    }

    Value object = plainObject();
};

TEST_F(ObjectInterface, FreshObjectAnswersFiveNamesAndShowsNoMembers) {
    const struct {
        const char16_t* name;
        JSValueType type;
    } expected[] = {{u"length", JSValueType::number},
                    {u"constructor", JSValueType::object},
                    {u"toString", JSValueType::function},
                    {u"this", JSValueType::object},
                    {u"valueOf", JSValueType::function}};
    for (const auto& member : expected) {
        EXPECT_TRUE(has(object.get(), member.name));
        EXPECT_EQ(object->memberType(BString(member.name), ctx(), nullptr), member.type);
    }
    EXPECT_FALSE(has(object.get(), u"other"));
    EXPECT_EQ(object->memberType(BString(u"other"), ctx(), nullptr), JSValueType::undefined);
    EXPECT_FALSE(get(object.get(), u"other"));
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 0);
    EXPECT_EQ(object->valueType(ctx(), nullptr), JSValueType::object);
}

TEST_F(ObjectInterface, LengthGrowsByEmptyEntries) {
    set(object.get(), u"length", number(3).get());
    for (int32_t i = 0; i < 3; ++i) EXPECT_FALSE(item(object.get(), i));
    EXPECT_EQ(describe(get(object.get(), u"length").get()), "number 3");
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 3);
}

TEST_F(ObjectInterface, LengthZeroReleasesNamedMembersToo) {
    const Value held = plainObject();
    set(object.get(), u"name", held.get());
    EXPECT_EQ(held->refCount(), 1);
    set(object.get(), u"length", number(0).get());
    EXPECT_EQ(held->refCount(), 0);
    EXPECT_FALSE(has(object.get(), u"name"));
}

TEST_F(ObjectInterface, LengthTakesTheValueCutToAnIntegerAndGivesTheValueBack) {
    const Value length = number(2.9);
    const Value result(object->setMember(BString(u"length"), length.get(), ctx(), nullptr));
    EXPECT_EQ(result.get(), length.get());
    EXPECT_EQ(object->getLength(nullptr), 2);
}

TEST_F(ObjectInterface, LengthSetToNothingIsZero) {
    set(object.get(), u"a", number(1).get());
    const Value result(object->setMember(BString(u"length"), nullptr, ctx(), nullptr));
    EXPECT_FALSE(result);
    EXPECT_EQ(object->getLength(nullptr), 0);
}

TEST_F(ObjectInterface, NegativeLengthChangesNothing) {
    set(object.get(), u"a", number(1).get());
    set(object.get(), u"length", number(-1).get());
    EXPECT_EQ(object->getLength(nullptr), 1);
    object->setLength(-5, nullptr);
    EXPECT_EQ(object->getLength(nullptr), 1);
}

TEST_F(ObjectInterface, DeletingANameThatOnlyTheClassAnswersChangesNothing) {
    for (const char16_t* name : {u"length", u"constructor", u"toString", u"this", u"valueOf"}) {
        EXPECT_FALSE(object->deleteMember(BString(name), ctx(), nullptr));
        EXPECT_TRUE(has(object.get(), name));
    }
}

TEST_F(ObjectInterface, MemberAndItemAreTheSameCell) {
    set(object.get(), u"first", number(1).get());
    set(object.get(), u"second", number(2).get());
    EXPECT_EQ(get(object.get(), u"second").get(), item(object.get(), 1).get());
    EXPECT_EQ(Value(object->memberAt(0, ctx(), nullptr)).get(), get(object.get(), u"first").get());
    EXPECT_EQ(memberName(item(object.get(), 1).get(), ctx()), "second");
}

TEST_F(ObjectInterface, ItemsOutsideTheRangeAreNull) {
    set(object.get(), u"first", number(1).get());
    EXPECT_FALSE(item(object.get(), -1));
    EXPECT_FALSE(item(object.get(), 1));
}

TEST_F(ObjectInterface, CallOfAnEmptyCellGivesUndefinedWithoutMessage) {
    set(object.get(), u"method", nullptr);
    EXPECT_TRUE(has(object.get(), u"method"));
    EXPECT_FALSE(Value(object->callMember(BString(u"method"), nullptr, ctx(), nullptr)));
    EXPECT_EQ(messages(), "");
}

TEST_F(ObjectInterface, CallOfANameThatNobodyAnswersGivesUndefinedWithoutMessage) {
    EXPECT_FALSE(Value(object->callMember(BString(u"method"), nullptr, ctx(), nullptr)));
    EXPECT_EQ(messages(), "");
}

TEST_F(ObjectInterface, SetItemBehindTheEndMakesEmptyEntriesAndANamelessCell) {
    const Value value = number(7);
    EXPECT_EQ(Value(object->setItem(5, value.get(), ctx(), nullptr)).get(), value.get());
    EXPECT_EQ(object->getLength(nullptr), 6);
    for (int32_t i = 0; i < 5; ++i) EXPECT_FALSE(item(object.get(), i));
    EXPECT_EQ(describe(item(object.get(), 5).get()), "number 7");
    EXPECT_EQ(memberName(item(object.get(), 5).get(), ctx()), "");
}

TEST_F(ObjectInterface, SetItemAtANegativeIndexStoresNothingAndGivesTheValue) {
    const Value value = number(7);
    EXPECT_EQ(Value(object->setItem(-1, value.get(), ctx(), nullptr)).get(), value.get());
    EXPECT_EQ(value->refCount(), 0);
    EXPECT_EQ(object->getLength(nullptr), 0);
    EXPECT_FALSE(Value(object->setItem(-1, nullptr, ctx(), nullptr)));
}

TEST_F(ObjectInterface, SetItemToNothingMakesAnEmptyCell) {
    EXPECT_FALSE(Value(object->setItem(0, nullptr, ctx(), nullptr)));
    const Value cell = item(object.get(), 0);
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->valueType(ctx(), nullptr), JSValueType::undefined);
}

TEST_F(ObjectInterface, NewPropertyKeepsTheObjectAndAnExistingOneCopies) {
    const Value first = number(1);
    EXPECT_EQ(Value(object->setMember(BString(u"x"), first.get(), ctx(), nullptr)).get(), first.get());
    EXPECT_EQ(Value(get(object.get(), u"x")->asObject(ctx(), nullptr)).get(), first.get());
    const Value second = number(2);
    const Value stored(object->setMember(BString(u"x"), second.get(), ctx(), nullptr));
    EXPECT_NE(stored.get(), second.get());
    EXPECT_EQ(Value(get(object.get(), u"x")->asObject(ctx(), nullptr)).get(), stored.get());
    EXPECT_EQ(describe(stored.get()), "number 2");
}

TEST_F(ObjectInterface, DeletingKeepsTheOrderOfTheRest) {
    set(object.get(), u"a", number(1).get());
    set(object.get(), u"b", number(2).get());
    set(object.get(), u"c", number(3).get());
    EXPECT_TRUE(object->deleteMember(BString(u"b"), ctx(), nullptr));
    EXPECT_FALSE(object->deleteMember(BString(u"b"), ctx(), nullptr));
    object->deleteItem(7, ctx(), nullptr);
    object->deleteItem(-1, ctx(), nullptr);
    EXPECT_EQ(object->getLength(nullptr), 2);
    EXPECT_EQ(memberName(item(object.get(), 1).get(), ctx()), "c");
    object->deleteItem(0, ctx(), nullptr);
    EXPECT_EQ(memberName(item(object.get(), 0).get(), ctx()), "c");
}

TEST_F(ObjectInterface, ClearMembersReleasesEverything) {
    const Value held = plainObject();
    set(object.get(), u"a", held.get());
    set(object.get(), u"b", held.get());
    object->clearMembers(ctx(), nullptr);
    EXPECT_EQ(held->refCount(), 0);
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 0);
}

TEST_F(ObjectInterface, AssignAndCallOfAPlainObjectDoNothing) {
    EXPECT_FALSE(Value(object->assign(number(1).get(), ctx(), nullptr)));
    EXPECT_FALSE(Value(object->call(nullptr, ctx(), nullptr)));
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 0);
    BString expression(u"left over");
    object->asExpression(expression, ctx(), nullptr);
    EXPECT_TRUE(expression.isEmpty());
    EXPECT_EQ(memberName(object.get(), ctx()), "");
}

TEST_F(ObjectInterface, ConstructorTakesTheObjectBehindTheValue) {
    EXPECT_FALSE(get(object.get(), u"constructor"));
    const Value maker = plainObject();
    const Value cell(new JSProperty(Name(u"cell"), maker.get()));
    const Value result(object->setMember(BString(u"constructor"), cell.get(), ctx(), nullptr));
    EXPECT_EQ(result.get(), cell.get());
    EXPECT_EQ(get(object.get(), u"constructor").get(), maker.get());
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 0);
    object->setConstructor(nullptr, ctx(), nullptr);
    EXPECT_FALSE(get(object.get(), u"constructor"));
    EXPECT_EQ(maker->refCount(), 1) << "the cell and the test";
}

TEST_F(ObjectInterface, ConstructorIsEmptyWhenAJumpIsPending) {
    object->setConstructor(plainObject().get(), ctx(), nullptr);
    machine->setCompletion(JSCompletion::returned);
    const Value maker = plainObject();
    EXPECT_FALSE(Value(object->setMember(BString(u"constructor"), maker.get(), ctx(), nullptr)));
    machine->setCompletion(JSCompletion::normal);
    EXPECT_FALSE(get(object.get(), u"constructor"));
    EXPECT_EQ(maker->refCount(), 0);
}

TEST_F(ObjectInterface, ThisIsTheObjectItself) {
    EXPECT_EQ(get(object.get(), u"this").get(), object.get());
    const Value other = number(1);
    EXPECT_EQ(Value(object->setMember(BString(u"this"), other.get(), ctx(), nullptr)).get(), other.get());
    EXPECT_EQ(get(object.get(), u"this").get(), object.get());
}

TEST_F(ObjectInterface, ToStringAndValueOfAreMethods) {
    const Value method = get(object.get(), u"toString");
    EXPECT_EQ(describe(method.get()), "function function toString(){[native code]}");
    const Value text(object->callMember(BString(u"toString"), nullptr, ctx(), nullptr));
    EXPECT_EQ(describe(text.get()), "string [object Array]");
    EXPECT_EQ(Value(object->callMember(BString(u"valueOf"), nullptr, ctx(), nullptr)).get(), object.get());
}

TEST_F(ObjectInterface, OwnPropertyShadowsANativeMethod) {
    EXPECT_EQ(run(uR"(o = new Object(); o.toString = Function('return \"mine\";'); o.toString())"),
              "string mine");
}

// ---- Arguments of native methods ----

class Arguments : public ObjectInterface {};

TEST_F(Arguments, AreConvertedByWhatTheMethodAsksFor) {
    const Value arguments = list({string(u"12.9").get()});
    BString text;
    EXPECT_TRUE(JSObject::argString(arguments.get(), 0, text, ctx(), nullptr));
    EXPECT_EQ(support::ascii(text), "12.9");
    int32_t integer = 0;
    EXPECT_TRUE(JSObject::argInteger(arguments.get(), 0, integer, ctx(), nullptr));
    EXPECT_EQ(integer, 12);
    double value = 0;
    EXPECT_TRUE(JSObject::argNumber(arguments.get(), 0, value, ctx(), nullptr));
    EXPECT_EQ(value, 12.9);
    BString expression(u"x");
    EXPECT_TRUE(JSObject::argExpression(arguments.get(), 0, expression, ctx(), nullptr));
}

TEST_F(Arguments, MissingOnesLeaveTheDefault) {
    Value arguments = list({});
    arguments->setLength(1, nullptr);  // present in number, but empty
    for (const auto& [args, position] :
         {std::pair<JSObject*, int32_t>(nullptr, 0), {arguments.get(), 0}, {arguments.get(), 1}}) {
        BString text(u"default");
        EXPECT_FALSE(JSObject::argString(args, position, text, ctx(), nullptr));
        EXPECT_FALSE(JSObject::argExpression(args, position, text, ctx(), nullptr));
        EXPECT_EQ(support::ascii(text), "default");
        int32_t integer = 77;
        EXPECT_FALSE(JSObject::argInteger(args, position, integer, ctx(), nullptr));
        EXPECT_EQ(integer, 77);
        double value = 7.5;
        EXPECT_FALSE(JSObject::argNumber(args, position, value, ctx(), nullptr));
        EXPECT_EQ(value, 7.5);
    }
}

TEST_F(Arguments, ACellWithoutAValueIsPresent) {
    const Value arguments = list({nullptr});
    BString text;
    EXPECT_TRUE(JSObject::argString(arguments.get(), 0, text, ctx(), nullptr));
    EXPECT_EQ(support::ascii(text), "undefined");
}

TEST_F(Arguments, PendingJumpLeavesTheDefault) {
    const Value arguments = list({number(1).get()});
    machine->setCompletion(JSCompletion::breakLoop);
    BString text(u"default");
    EXPECT_FALSE(JSObject::argString(arguments.get(), 0, text, ctx(), nullptr));
    EXPECT_EQ(support::ascii(text), "default");
    machine->setCompletion(JSCompletion::normal);
}

class OddNumber final : public JSObject {
  public:
    explicit OddNumber(const JSNumberValue& number) : number_(number) {}
    void asNumber(JSNumberValue& out, JSContext*, JSObject*) override { out = number_; }

  private:
    JSNumberValue number_;
};

TEST_F(Arguments, NumbersThatAreNotFiniteComeAsTheDoubleOfTheirRecord) {
    const Value odd(new OddNumber({7.5, JSNumberKind::notANumber}));
    const Value arguments = list({odd.get(), number(INFINITY).get()});
    double value = 0;
    EXPECT_TRUE(JSObject::argNumber(arguments.get(), 0, value, ctx(), nullptr));
    EXPECT_EQ(value, 7.5);
    int32_t integer = 0;
    EXPECT_TRUE(JSObject::argInteger(arguments.get(), 0, integer, ctx(), nullptr));
    EXPECT_EQ(integer, 7);
    EXPECT_TRUE(JSObject::argNumber(arguments.get(), 1, value, ctx(), nullptr));
    EXPECT_EQ(value, INFINITY);
}

// ---- The dispatch of the root class ----

TEST_F(ObjectInterface, DispatchServesItsNamesAndNoOthers) {
    for (const char16_t* name : {u"length", u"constructor", u"toString", u"this", u"valueOf"}) {
        const BString text(name);
        JSMemberRequest request(text, JSRequestOp::exists);
        EXPECT_TRUE(object->dispatchMember(request));
    }
    for (const char16_t* name : {u"Length", u"lengt", u"lengths", u"", u"prototype"}) {
        const BString text(name);
        JSMemberRequest request(text, JSRequestOp::exists);
        EXPECT_FALSE(object->dispatchMember(request));
    }
}

TEST_F(ObjectInterface, DispatchLeavesOperationsThatAMemberDoesNotHave) {
    const struct {
        const char16_t* name;
        JSRequestOp op;
    } unserved[] = {{u"length", JSRequestOp::call},
                    {u"constructor", JSRequestOp::call},
                    {u"toString", JSRequestOp::set},
                    {u"this", JSRequestOp::call},
                    {u"valueOf", JSRequestOp::set}};
    for (const auto& [name, op] : unserved) {
        const BString text(name);
        JSMemberRequest request(text, op, nullptr, ctx(), nullptr);
        EXPECT_FALSE(object->dispatchMember(request)) << support::ascii(text);
    }
}

TEST_F(ObjectInterface, DestructionReleasesConstructorFirstAndMembersFromTheLast) {
    static std::string order;
    order.clear();
    class Witness final : public JSObject {
      public:
        explicit Witness(char letter) : letter_(letter) {}
        ~Witness() override { order += letter_; }

      private:
        char letter_;
    };
    Value maker(new Witness('c'));
    Value owner(new JSObject(maker.get()));
    maker.reset();
    set(owner.get(), u"x", Value(new Witness('1')).get());
    set(owner.get(), u"y", Value(new Witness('2')).get());
    set(owner.get(), u"z", Value(new Witness('3')).get());
    EXPECT_EQ(order, "");
    owner.reset();
    EXPECT_EQ(order, "c321");
}

}  // namespace
}  // namespace quorvelin
