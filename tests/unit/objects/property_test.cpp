// Cells: what they forward, what they store, and how they are found.
#include "objects/js_property.h"

#include <gtest/gtest.h>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::asNumber;
using support::asString;
using support::className;
using support::memberName;
using support::textOf;

class Property : public support::ScriptTest {
  protected:
    Value cell(JSObject* value = nullptr) { return Value(new JSProperty(Name(u"cell"), value)); }
    Value assign(const Value& target, JSObject* value) {
        return Value(target->assign(value, ctx(), nullptr));
    }
};

TEST_F(Property, AssigningATextCopiesIt) {
    EXPECT_EQ(run(u"o = new Object(); o.x = 'a'; y = o.x; o.x = 'b'; y"), "string a");
    EXPECT_EQ(run(u"y = 'c'; o.x"), "string b");
}

TEST_F(Property, AssigningAnObjectSharesIt) {
    run(u"a = new Object(); b = a; b.x = 1");
    EXPECT_EQ(Value(global(u"a")->asObject(ctx(), nullptr)).get(),
              Value(global(u"b")->asObject(ctx(), nullptr)).get());
    EXPECT_EQ(run(u"a.x"), "number 1");
}

TEST_F(Property, AssigningUndefinedKeepsTheMember) {
    run(u"o = new Object(); o.x = 1; o.x = void 0");
    const Value object = global(u"o");
    EXPECT_TRUE(object->hasMember(BString(u"x"), ctx(), nullptr));
    EXPECT_EQ(object->memberType(BString(u"x"), ctx(), nullptr), JSValueType::undefined);
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 1);
}

TEST_F(Property, ReadingAMemberOfAnEmptyCellGivesNothing) {
    EXPECT_EQ(run(u"var x; x.y"), "undefined");
    EXPECT_FALSE(Value(cell()->getMember(BString(u"y"), ctx(), nullptr)));
    EXPECT_EQ(run(u"typeof x"), "string undefined");
}

TEST_F(Property, WritingAMemberOfAnEmptyCellMakesAPlainObject) {
    EXPECT_EQ(run(u"var x; x.y = 5; x.y"), "number 5");
    EXPECT_EQ(run(u"typeof x"), "string object");
    EXPECT_EQ(run(u"var z; z[2] = 5; z.length"), "number 3");
}

TEST_F(Property, DeletingTheFirstMemberMovesTheOthersUp) {
    run(u"o = new Object(); o.a = 1; o.b = 2; o.c = 3; delete o.a");
    EXPECT_EQ(run(u"o[0]"), "number 2");
    EXPECT_EQ(run(u"o[1]"), "number 3");
    EXPECT_EQ(run(u"o.length"), "number 2");
}

TEST_F(Property, CellMadeByIndexIsNamelessAndTheFirstSuchIsFoundByTheEmptyName) {
    run(u"o = new Object(); o.a = 1; o[3] = 'first'; o[4] = 'second'");
    EXPECT_EQ(memberName(Value(global(u"o")->getItem(3, ctx(), nullptr)).get(), ctx()), "");
    EXPECT_EQ(run(u"o['']"), "string first");
}

TEST_F(Property, ReadingAMemberGivesTheCellAndFollowsLaterValues) {
    run(u"o = new Object(); o.x = 1");
    const Value member(global(u"o")->getMember(BString(u"x"), ctx(), nullptr));
    run(u"o.x = 'changed'");
    EXPECT_EQ(describe(member.get()), "string changed");
    EXPECT_EQ(memberName(member.get(), ctx()), "x");
}

// Quirk: the old value goes first.
TEST_F(Property, AssigningACellToItselfLeavesItEmpty) {
    EXPECT_EQ(run(u"x = 5; x = x; typeof x"), "string undefined");
    EXPECT_EQ(run(u"o = new Object(); o.p = o; o.p = o.p; typeof o.p"), "string undefined");
}

TEST_F(Property, AssignStoresByType) {
    const Value target = cell(plainObject().get());
    const Value text = string(u"a");
    const Value storedText = assign(target, text.get());
    EXPECT_EQ(describe(storedText.get()), "string a");
    EXPECT_NE(storedText.get(), text.get());

    const Value value = number(0);
    const Value storedNumber = assign(target, value.get());
    EXPECT_EQ(describe(storedNumber.get()), "number 0");
    EXPECT_NE(storedNumber.get(), value.get());

    const Value truth = boolean(false);
    const Value storedTruth = assign(target, truth.get());
    EXPECT_EQ(describe(storedTruth.get()), "boolean false");
    EXPECT_NE(storedTruth.get(), truth.get());

    const Value object = plainObject();
    EXPECT_EQ(assign(target, object.get()).get(), object.get());

    EXPECT_EQ(describe(assign(target, function(u"return 1;").get()).get()).substr(0, 8), "function");

    EXPECT_FALSE(assign(target, nullptr));
    EXPECT_EQ(target->valueType(ctx(), nullptr), JSValueType::undefined);
}

TEST_F(Property, AssigningARegularExpressionMakesANewOneOfItsSource) {
    const Value expression = evaluate(u"/a+b/");
    const Value target = cell(number(1).get());
    const Value stored = assign(target, expression.get());
    ASSERT_TRUE(stored);
    EXPECT_NE(stored.get(), expression.get());
    EXPECT_EQ(stored->valueType(ctx(), nullptr), JSValueType::expression);
    BString source;
    target->asExpression(source, ctx(), nullptr);
    EXPECT_EQ(support::ascii(source), "a+b");
    EXPECT_EQ(run(u"re = /x/; re = /y/; typeof re"), "string expression");
}

class Typed final : public JSObject {
  public:
    explicit Typed(uint32_t type) : type_(static_cast<JSValueType>(type)) {}
    JSValueType valueType(JSContext*, JSObject*) override { return type_; }

  private:
    JSValueType type_;
};

TEST_F(Property, AssigningAValueOfAnUnknownTypeEmptiesTheCell) {
    for (const uint32_t type : {0u, 7u, 99u}) {
        const Value target = cell(plainObject().get());
        EXPECT_FALSE(assign(target, Value(new Typed(type)).get()));
        EXPECT_EQ(target->valueType(ctx(), nullptr), JSValueType::undefined);
    }
}

TEST_F(Property, AssignThatMeetsAPendingJumpLeavesTheCellEmpty) {
    const Value text = string(u"a");
    const Value target = cell(text.get());
    machine->setCompletion(JSCompletion::continueLoop);
    EXPECT_FALSE(assign(target, text.get()));
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(target->valueType(ctx(), nullptr), JSValueType::undefined);
}

TEST_F(Property, EmptyCellAnswersForNothing) {
    const Value empty = cell();
    const BString length(u"length");
    EXPECT_EQ(empty->valueType(ctx(), nullptr), JSValueType::undefined);
    EXPECT_FALSE(empty->hasMember(length, ctx(), nullptr));
    EXPECT_EQ(empty->memberType(length, ctx(), nullptr), JSValueType::undefined);
    EXPECT_FALSE(Value(empty->getMember(length, ctx(), nullptr)));
    EXPECT_FALSE(Value(empty->callMember(BString(u"toString"), nullptr, ctx(), nullptr)));
    EXPECT_FALSE(Value(empty->getItem(0, ctx(), nullptr)));
    EXPECT_FALSE(Value(empty->call(nullptr, ctx(), nullptr)));
    EXPECT_EQ(empty->memberCount(ctx(), nullptr), 0);
    EXPECT_FALSE(Value(empty->memberAt(0, ctx(), nullptr)));
    EXPECT_FALSE(empty->asBoolean(ctx(), nullptr));
    EXPECT_FALSE(Value(empty->asObject(ctx(), nullptr)));
    EXPECT_FALSE(empty->deleteMember(length, ctx(), nullptr));
    empty->deleteItem(0, ctx(), nullptr);
    EXPECT_EQ(asString(empty.get(), ctx()), "undefined");
    EXPECT_EQ(className(empty.get(), ctx()), "undefined");
    EXPECT_EQ(asNumber(empty.get(), ctx()), "0");
    BString expression(u"left over");
    empty->asExpression(expression, ctx(), nullptr);
    EXPECT_TRUE(expression.isEmpty());
}

TEST_F(Property, CellForwardsToItsValue) {
    const Value object = plainObject();
    const Value filled = cell(object.get());
    const Value stored(filled->setMember(BString(u"x"), number(4).get(), ctx(), nullptr));
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 1);
    EXPECT_EQ(filled->memberCount(ctx(), nullptr), 1);
    EXPECT_TRUE(filled->hasMember(BString(u"x"), ctx(), nullptr));
    EXPECT_EQ(filled->memberType(BString(u"x"), ctx(), nullptr), JSValueType::number);
    EXPECT_EQ(describe(Value(filled->getItem(0, ctx(), nullptr)).get()), "number 4");
    EXPECT_EQ(describe(Value(filled->memberAt(0, ctx(), nullptr)).get()), "number 4");
    EXPECT_TRUE(filled->asBoolean(ctx(), nullptr));
    EXPECT_EQ(Value(filled->asObject(ctx(), nullptr)).get(), object.get());
    EXPECT_TRUE(filled->deleteMember(BString(u"x"), ctx(), nullptr));
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 0);
}

TEST_F(Property, CellAnswersLengthConstructorAndThisForItself) {
    const Value object = plainObject();
    object->setLength(3, nullptr);
    const Value filled = cell(object.get());
    EXPECT_EQ(filled->getLength(nullptr), 0);
    EXPECT_EQ(Value(filled->getThis(ctx(), nullptr)).get(), filled.get());
    EXPECT_EQ(Value(filled->callValueOf(nullptr, ctx(), nullptr)).get(), filled.get());
    EXPECT_FALSE(Value(filled->getConstructor(ctx(), nullptr)));
    // Through getMember, which forwards first, the value answers.
    EXPECT_EQ(describe(Value(filled->getMember(BString(u"length"), ctx(), nullptr)).get()), "number 3");
}

TEST_F(Property, ClearMembersEmptiesTheCellAndLeavesTheValueAlone) {
    const Value object = plainObject();
    const Value stored(object->setMember(BString(u"x"), number(1).get(), ctx(), nullptr));
    const Value filled = cell(object.get());
    filled->clearMembers(ctx(), nullptr);
    EXPECT_EQ(filled->valueType(ctx(), nullptr), JSValueType::undefined);
    EXPECT_EQ(object->memberCount(ctx(), nullptr), 1);
    EXPECT_EQ(object->refCount(), 0);
    filled->clearMembers(ctx(), nullptr);
}

TEST_F(Property, FirstOfTwoCellsWithOneNameWins) {
    EXPECT_EQ(run(u"f = Function('a', 'a', 'return a;'); f(1, 2)"), "number 1");
}

// A cell of a host's class whose name is not stored anywhere.
class ComputedCell final : public JSProperty {
  public:
    ComputedCell(std::u16string name, JSObject* value)
        : JSProperty(ComputedName{}, value), computed_(std::move(name)) {}
    void memberName(BString& out, JSContext*, JSObject*) override { out = textOf(computed_); }
    void rename(std::u16string name) { computed_ = std::move(name); }

  private:
    std::u16string computed_;
};

class CellHolder final : public JSObject {
  public:
    void take(JSProperty* cell) { members().append(cell); }
};

TEST_F(Property, CellOfADerivedClassCanAnswerAComputedName) {
    const Owned<CellHolder> holder(new CellHolder());
    holder->take(new JSProperty(Name(u"plain"), number(1).get()));
    auto* computed = new ComputedCell(u"first", number(2).get());
    holder->take(computed);
    const auto read = [&](const char16_t* name) {
        return describe(Value(holder->getMember(BString(name), ctx(), nullptr)).get());
    };
    EXPECT_EQ(read(u"first"), "number 2");
    computed->rename(u"second");
    EXPECT_EQ(read(u"first"), "null");
    EXPECT_EQ(read(u"second"), "number 2");
    EXPECT_EQ(read(u"plain"), "number 1");
    computed->rename(u"plain");
    EXPECT_EQ(read(u"plain"), "number 1") << "the first one wins";
}

}  // namespace
}  // namespace quorvelin
