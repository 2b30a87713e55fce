// The characters of a string as its items.
#include <gtest/gtest.h>

#include "stdlib/string_object.h"
#include "support/jumper.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

class StringItems : public support::ScriptTest {
  protected:
    std::string setItem(const Value& text, int32_t index, JSObject* value) {
        return describe(Value(text->setItem(index, value, ctx(), nullptr)).get());
    }
};

TEST_F(StringItems, ItemIsTheCharacterOrTheEmptyText) {
    const Value text = string(u"abc");
    const auto item = [&](int32_t index) {
        return describe(Value(text->getItem(index, ctx(), nullptr)).get());
    };
    EXPECT_EQ(item(0), "string a");
    EXPECT_EQ(item(2), "string c");
    EXPECT_EQ(item(3), "string");
    EXPECT_EQ(item(-1), "string");
    EXPECT_EQ(run(u"s = 'abc'; s[1]"), "string b");
}

// Quirk: the character at index 0 stays and the text goes in front of it.
TEST_F(StringItems, WritingTheFirstCharacterPutsTheTextInFrontOfIt) {
    const Value text = string(u"abc");
    EXPECT_EQ(setItem(text, 0, string(u"XY").get()), "string XYabc");
    EXPECT_EQ(describe(text.get()), "string XYabc");
}

TEST_F(StringItems, WritingAnotherCharacterReplacesIt) {
    const Value text = string(u"abc");
    EXPECT_EQ(setItem(text, 1, string(u"XY").get()), "string aXYc");
    EXPECT_EQ(setItem(text, 3, string(u"!").get()), "string aXY!");
    EXPECT_EQ(setItem(text, 4, string(u"?").get()), "string aXY!?") << "at the end the text is appended";
    EXPECT_EQ(setItem(text, 9, string(u"?").get()), "string aXY!?");
    EXPECT_EQ(setItem(text, -1, string(u"?").get()), "string aXY!?");
}

// Quirk: the first character cannot be deleted.
TEST_F(StringItems, FirstCharacterCannotBeDeleted) {
    const Value text = string(u"abc");
    text->deleteItem(0, ctx(), nullptr);
    EXPECT_EQ(describe(text.get()), "string abc");
    text->deleteItem(1, ctx(), nullptr);
    EXPECT_EQ(describe(text.get()), "string ac");
    text->deleteItem(2, ctx(), nullptr);
    text->deleteItem(-1, ctx(), nullptr);
    EXPECT_EQ(describe(text.get()), "string ac");
}

TEST_F(StringItems, AnAbsentValueIsTheEmptyText) {
    const Value text = string(u"abc");
    EXPECT_EQ(setItem(text, 1, nullptr), "string ac");
    EXPECT_EQ(setItem(text, 0, nullptr), "string ac");
}

TEST_F(StringItems, AValueThatJumpsIsNotWritten) {
    const Value text = string(u"abc");
    EXPECT_EQ(setItem(text, 1, Value(new support::Jumper()).get()), "null");
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(describe(text.get()), "string abc");
}

TEST_F(StringItems, ItsClassIsString) {
    EXPECT_EQ(support::className(string(u"abc").get(), ctx()), "String");
}

TEST_F(StringItems, LengthCannotBeWritten) {
    EXPECT_EQ(run(u"s = 'abc'; s.length = 1; s.length"), "number 3");
    EXPECT_EQ(run(u"s"), "string abc");
}

TEST_F(StringItems, ObjectBehindAStringIsACopy) {
    const Value text = string(u"abc");
    const Value object(text->asObject(ctx(), nullptr));
    EXPECT_NE(object.get(), text.get());
    EXPECT_EQ(describe(object.get()), "string abc");
}

TEST_F(StringItems, ConstructorTakesTheTextOfItsListOfArguments) {
    EXPECT_EQ(run(u"String(1, 2)"), "string 1,2");
    EXPECT_EQ(run(u"String()"), "string");
    EXPECT_EQ(run(u"x = new String('a'); x"), "string a");
}

}  // namespace
}  // namespace quorvelin
