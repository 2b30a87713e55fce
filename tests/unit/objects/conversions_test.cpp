// The default conversions: how a value that overrides nothing turns into text, number, truth value and
// object.
#include <gtest/gtest.h>

#include <optional>

#include "objects/js_property.h"
#include "objects/simple_objects.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::asNumber;
using support::asString;
using support::className;
using support::textOf;

// An object that answers what a test wants it to, and leaves the rest to the defaults.
class Conversible final : public JSObject {
  public:
    explicit Conversible(uint32_t type, JSObject* constructor = nullptr)
        : JSObject(constructor), type_(static_cast<JSValueType>(type)) {}

    JSValueType valueType(JSContext*, JSObject*) override { return type_; }
    void asString(BString& out, JSContext* ctx, JSObject* receiver) override {
        if (!text) return JSObject::asString(out, ctx, receiver);
        out = textOf(*text);
    }
    void asExpression(BString& out, JSContext* ctx, JSObject* receiver) override {
        if (!expression) return JSObject::asExpression(out, ctx, receiver);
        out = textOf(*expression);
    }
    void asNumber(JSNumberValue& out, JSContext* ctx, JSObject* receiver) override {
        if (!number) return JSObject::asNumber(out, ctx, receiver);
        out = *number;
    }
    bool asBoolean(JSContext* ctx, JSObject* receiver) override {
        return truth ? *truth : JSObject::asBoolean(ctx, receiver);
    }
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override {
        if (!object) return JSObject::asObject(ctx, receiver);
        return Value::share(object->get()).take();
    }
    void memberName(BString& out, JSContext*, JSObject*) override { out = textOf(name); }

    std::optional<std::u16string> text;
    std::optional<std::u16string> expression;
    std::optional<JSNumberValue> number;
    std::optional<bool> truth;
    std::optional<Value> object;
    std::u16string name;

  private:
    JSValueType type_;
};

Owned<Conversible> ofType(uint32_t type, JSObject* constructor = nullptr) {
    return Owned<Conversible>(new Conversible(type, constructor));
}

class Conversions : public support::ScriptTest {
  protected:
    std::string text(JSObject* object) { return asString(object, ctx()); }
    std::string numberOf(JSObject* object) { return asNumber(object, ctx()); }
    bool truth(JSObject* object) { return object->asBoolean(ctx(), nullptr); }
    Value objectOf(JSObject* object) { return Value(object->asObject(ctx(), nullptr)); }

    // An object of type object behind which stands `other`, which may be null.
    Owned<Conversible> wrapper(const Value& other) {
        Owned<Conversible> wrapping = ofType(4);
        wrapping->object = Value::share(other.get());
        return wrapping;
    }
    // An object with a method that a script defines.
    Value withMethod(std::u16string_view name, std::u16string_view body) {
        Value made = plainObject();
        addMethod(made, name, body);
        return made;
    }
    void addMethod(const Value& target, std::u16string_view name, std::u16string_view body) {
        const Value stored(target->setMember(textOf(name), function(body).get(), ctx(), nullptr));
    }
};

// ---- To text ----

TEST_F(Conversions, TextOfTypesWithoutOneIsTheWordUndefined) {
    for (const uint32_t type : {0u, 1u, 6u, 7u, 1000u}) EXPECT_EQ(text(ofType(type).get()), "undefined");
}

TEST_F(Conversions, TextOfANumberIsThatOfItsRecord) {
    const auto value = ofType(2);
    EXPECT_EQ(text(value.get()), "0");
    value->number = JSNumberValue{0.0, JSNumberKind::minusInfinity};
    EXPECT_EQ(text(value.get()), "-Infinity");
    value->number = JSNumberValue::of(2.5);
    EXPECT_EQ(text(value.get()), "2.5");
}

TEST_F(Conversions, TextOfABooleanIsItsWord) {
    const auto value = ofType(3);
    EXPECT_EQ(text(value.get()), "false");
    value->truth = true;
    EXPECT_EQ(text(value.get()), "true");
}

TEST_F(Conversions, TextOfAnObjectThatIsItsOwnObjectNamesItsClass) {
    EXPECT_EQ(text(ofType(4).get()), "[object Array]");
    const auto maker = ofType(5);
    maker->name = u"Maker";
    EXPECT_EQ(text(ofType(4, maker.get()).get()), "[object Maker]");
}

TEST_F(Conversions, TextOfAnObjectWithoutOneIsTheWordNull) {
    EXPECT_EQ(text(wrapper(Value()).get()), "null");
}

TEST_F(Conversions, TextOfAWrapperAsksToStringThenValueOf) {
    Value inside = withMethod(u"toString", u"return 'by toString';");
    addMethod(inside, u"valueOf", u"return 'by valueOf';");
    EXPECT_EQ(text(wrapper(inside).get()), "by toString");
    addMethod(inside, u"toString", u"return;");
    EXPECT_EQ(text(wrapper(inside).get()), "by valueOf");
    addMethod(inside, u"valueOf", u"return;");
    EXPECT_EQ(text(wrapper(inside).get()), "[object Array]");
}

TEST_F(Conversions, TextOfAWrapperIsUndefinedWhenAJumpIsPending) {
    const Value inside = withMethod(u"toString", u"return 'x';");
    machine->setCompletion(JSCompletion::returned);
    EXPECT_EQ(text(wrapper(inside).get()), "undefined");
    machine->setCompletion(JSCompletion::normal);
}

TEST_F(Conversions, TextOfAFunctionWithoutSourceSaysSo) {
    const auto value = ofType(5);
    value->name = u"f";
    EXPECT_EQ(text(value.get()), "function f(){ [native code] }");
}

TEST_F(Conversions, TextOfAFunctionIsWhatDecompileGives) {
    const auto value = ofType(5);
    const Value stored(
        value->setMember(BString(u"decompile"), function(u"return 'source';").get(), ctx(), nullptr));
    EXPECT_EQ(text(value.get()), "source");
}

TEST_F(Conversions, TextOfAFunctionIsEmptyWhenAJumpIsPending) {
    machine->setCompletion(JSCompletion::returned);
    EXPECT_EQ(text(ofType(5).get()), "");
    machine->setCompletion(JSCompletion::normal);
}

// ---- The name of the class ----

// Quirk: an object without a constructor goes by the word Array.
TEST_F(Conversions, ClassOfAnObjectWithoutConstructorIsTheWordArray) {
    EXPECT_EQ(className(plainObject().get(), ctx()), "Array");
    EXPECT_EQ(run(u"'' + new Object()"), "string [object Array]");
    EXPECT_EQ(className(wrapper(Value()).get(), ctx()), "Array");
}

TEST_F(Conversions, ClassWithoutConstructorGoesByType) {
    const struct {
        uint32_t type;
        const char* word;
    } rows[] = {{0, "undefined"}, {1, "String"},     {2, "Number"}, {3, "Boolean"},
                {5, "Function"},  {6, "Expression"}, {7, "unknow"}, {500, "unknow"}};
    for (const auto& row : rows) EXPECT_EQ(className(ofType(row.type).get(), ctx()), row.word);
}

TEST_F(Conversions, ClassOfAWrapperIsThatOfTheObjectBehind) {
    const auto maker = ofType(5);
    maker->name = u"Maker";
    EXPECT_EQ(className(wrapper(Value(new Conversible(4, maker.get()))).get(), ctx()), "Maker");
}

// ---- To number ----

TEST_F(Conversions, NumberOfATextNeedsAllOfIt) {
    const auto value = ofType(1);
    const struct {
        const char16_t* text;
        const char* number;
    } rows[] = {{u"12.5", "12.5"}, {u"  12", "12"}, {u"12 ", "0"}, {u"abc", "0"}, {u"", "0"},
                {u"1e2", "100"},   {u"0x1F", "31"}, {u"-3", "-3"}, {u"1 2", "0"}, {u"inf", "+Infinity"}};
    for (const auto& row : rows) {
        value->text = row.text;
        EXPECT_EQ(numberOf(value.get()), row.number) << support::ascii(std::u16string_view(row.text));
    }
    // A NUL ends the reading, but not the text.
    value->text = std::u16string(u"12\0", 3);
    EXPECT_EQ(numberOf(value.get()), "0");
    EXPECT_EQ(JSNumberValue::fromText(BString(u"12\0", 3), 10).kind, JSNumberKind::notANumber);
}

TEST_F(Conversions, NumberOfAnExpressionIsThatOfItsSource) {
    const auto value = ofType(6);
    EXPECT_EQ(numberOf(value.get()), "0");
    value->expression = u"42";
    EXPECT_EQ(numberOf(value.get()), "42");
}

TEST_F(Conversions, NumberOfABooleanIsOneOrZero) {
    const auto value = ofType(3);
    EXPECT_EQ(numberOf(value.get()), "0");
    value->truth = true;
    EXPECT_EQ(numberOf(value.get()), "1");
}

TEST_F(Conversions, NumberOfAWrapperIsThatOfItsValue) {
    const Value inside = withMethod(u"valueOf", u"return '7';");
    EXPECT_EQ(numberOf(wrapper(inside).get()), "7");
    EXPECT_EQ(numberOf(inside.get()), "0") << "an object that is its own object is not asked";
    addMethod(inside, u"valueOf", u"return;");
    EXPECT_EQ(numberOf(wrapper(inside).get()), "0");
}

TEST_F(Conversions, NumberOfAnythingElseIsZero) {
    for (const uint32_t type : {0u, 2u, 4u, 5u, 7u}) EXPECT_EQ(numberOf(ofType(type).get()), "0");
    EXPECT_EQ(run(u"'abc' * 1"), "number 0");
    EXPECT_EQ(run(u"'' * 1"), "number 0");
    EXPECT_EQ(run(u"'12 ' * 1"), "number 0");
}

// ---- To truth ----

TEST_F(Conversions, AnyTextThatIsNotEmptyIsTrue) {
    const auto value = ofType(1);
    for (const char16_t* word : {u"false", u"0", u" "}) {
        value->text = word;
        EXPECT_TRUE(truth(value.get()));
    }
    value->text = u"";
    EXPECT_FALSE(truth(value.get()));
    EXPECT_EQ(run(u"if ('0') 1; else 2;"), "number 1");
    EXPECT_EQ(run(u"if ('') 1; else 2;"), "number 2");
}

TEST_F(Conversions, ANumberIsTrueUnlessItIsNaNOrComparesAsZero) {
    const auto value = ofType(2);
    const struct {
        JSNumberValue number;
        bool truth;
    } rows[] = {{{0.0, JSNumberKind::notANumber}, false},   {{0.0, JSNumberKind::plusInfinity}, true},
                {{0.0, JSNumberKind::minusInfinity}, true}, {JSNumberValue::of(0), false},
                {JSNumberValue::of(1e-16), false},          {JSNumberValue::of(-0.5), true}};
    for (const auto& row : rows) {
        value->number = row.number;
        EXPECT_EQ(truth(value.get()), row.truth);
    }
    EXPECT_EQ(run(u"if (1e-20) 1; else 2;"), "number 2");
}

TEST_F(Conversions, AnExpressionIsTrueUnlessItsSourceIsEmpty) {
    const auto value = ofType(6);
    EXPECT_FALSE(truth(value.get()));
    value->expression = u"a";
    EXPECT_TRUE(truth(value.get()));
}

TEST_F(Conversions, AnObjectIsTrueUnlessTheValueBehindItIsFalse) {
    EXPECT_TRUE(truth(ofType(4).get()));
    EXPECT_FALSE(truth(wrapper(Value()).get()));
    const Value inside = withMethod(u"valueOf", u"return '';");
    EXPECT_FALSE(truth(wrapper(inside).get()));
    EXPECT_TRUE(truth(inside.get()));
    addMethod(inside, u"valueOf", u"return 5;");
    EXPECT_TRUE(truth(wrapper(inside).get()));
    addMethod(inside, u"valueOf", u"return;");
    EXPECT_TRUE(truth(wrapper(inside).get()));
}

// Quirk: a function is false.
TEST_F(Conversions, AFunctionIsFalse) {
    EXPECT_FALSE(truth(ofType(5).get()));
    EXPECT_EQ(run(u"f = Function('return 1;'); if (f) 1; else 2;"), "number 2");
    EXPECT_EQ(run(u"!f"), "boolean true");
    EXPECT_FALSE(truth(ofType(0).get()));
    EXPECT_FALSE(truth(ofType(3).get()));
    EXPECT_FALSE(truth(ofType(7).get()));
}

// ---- To object ----

// Quirk: the number 0 has no object, unless its class says otherwise.
TEST_F(Conversions, ANumberThatIsZeroHasNoObject) {
    const auto value = ofType(2);
    EXPECT_FALSE(objectOf(value.get()));
    value->number = JSNumberValue::of(1e-20);
    EXPECT_FALSE(objectOf(value.get()));
    value->number = JSNumberValue::of(1);
    EXPECT_EQ(objectOf(value.get()).get(), value.get());
    value->number = JSNumberValue{0.0, JSNumberKind::notANumber};
    EXPECT_EQ(objectOf(value.get()).get(), value.get());
    // A number object of the engine says otherwise.
    EXPECT_TRUE(objectOf(number(0).get()));
}

TEST_F(Conversions, UndefinedHasNoObjectAndEverythingElseIsItsOwn) {
    EXPECT_FALSE(objectOf(ofType(0).get()));
    for (const uint32_t type : {1u, 3u, 4u, 5u, 6u, 7u}) {
        const auto value = ofType(type);
        EXPECT_EQ(objectOf(value.get()).get(), value.get());
    }
}

// ---- The null object ----

TEST_F(Conversions, NullObjectIsFalseZeroAndAnObject) {
    const Value null(machine->makeNull(nullptr));
    EXPECT_EQ(describe(null.get()), "object null");
    EXPECT_EQ(numberOf(null.get()), "0");
    EXPECT_FALSE(truth(null.get()));
    EXPECT_EQ(objectOf(null.get()).get(), null.get());
    EXPECT_EQ(run(u"typeof null"), "string object");
    EXPECT_EQ(run(u"null ? 1 : 2"), "number 2");
}

TEST_F(Conversions, EachNullLiteralMakesANewObject) {
    run(u"a = null; b = null");
    EXPECT_NE(Value(global(u"a")->asObject(ctx(), nullptr)).get(),
              Value(global(u"b")->asObject(ctx(), nullptr)).get());
}

}  // namespace
}  // namespace quorvelin
