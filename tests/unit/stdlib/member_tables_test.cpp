// The members of the standard objects as tables: one table an object, one row a name.
#include "support/member_tables.h"

#include "host/clock.h"

namespace quorvelin {
namespace {

using support::MethodRow;
using support::ValueRow;

constexpr JSValueType kString = JSValueType::string;
constexpr JSValueType kNumber = JSValueType::number;
constexpr JSValueType kBoolean = JSValueType::boolean;

constexpr int64_t kMoment = 1794646773;  // Saturday 14 November 2026, 08:59:33

// ---- The constructors, called by their global names ----

class ConstructorCalls : public support::MemberTableTest {
  protected:
    void SetUp() override { stopClock(kMoment); }
    void TearDown() override {
        startClock();
        MemberTableTest::TearDown();
    }
    Value subject() override { return Value::share(machine.get()); }
};

TEST_F(ConstructorCalls, Table) {
    constexpr MethodRow kRows[] = {
        {u"Array", "object", "object", "object undefined", u"[1, 'x', true]", "object 1,x,true"},
        {u"String", "string", "string", "string undefined", u"[1, 'x']", "string 1,x"},
        {u"RegExp", "expression undefined", "expression undefined", "expression undefined", u"['a', 'g', 1]",
         "expression undefined"},
        {u"Date", "object Sat Nove 14 8:59:33 2026", "object Thu Janu 1 0:00:00 1976", "null",
         u"[2026, 10, 14, 8, 59, 33, 0, 7, 1]", "object Sat Nove 14 8:59:33 2026"},
    };
    expectCalls(kRows);
}

// ---- Array ----

class ArrayMembers : public support::MemberTableTest {
  protected:
    Value subject() override { return evaluate(u"[3, 1, 2]"); }
    std::string trace(JSObject& array) override { return support::asString(&array, ctx()); }
};

TEST_F(ArrayMembers, Methods) {
    constexpr MethodRow kRows[] = {
        {u"join", "string 3,1,2 / 3,1,2", "string 312 / 3,1,2", "string 3undefined1undefined2 / 3,1,2",
         u"['-', '+']", "string 3-,+1-,+2 / 3,1,2"},
        {u"reverse", "object 2,1,2 / 2,1,2", "object 2,1,2 / 2,1,2", "object 2,1,2 / 2,1,2", u"[1, 2]",
         "object 2,1,2 / 2,1,2"},
        {u"sort", "null / 1,2,3", "null / 1,2,3", "null / 1,2,3", u"[Function('a', 'b', 'return b - a;'), 9]",
         "null / 3,2,1"},
        {u"toString", "string 3,1,2 / 3,1,2", "string 3,1,2 / 3,1,2", "string 3,1,2 / 3,1,2", u"[1, 2]",
         "string 3,1,2 / 3,1,2"},
        {u"valueOf", "object 3,1,2 / 3,1,2", "object 3,1,2 / 3,1,2", "object 3,1,2 / 3,1,2", u"[1, 2]",
         "object 3,1,2 / 3,1,2"},
    };
    expectMethods(kRows);
}

TEST_F(ArrayMembers, Values) {
    constexpr ValueRow kRows[] = {
        {u"length", kNumber, "number 3", u"'1.9'", "string 1.9", "number 1"},
        {u"length", kNumber, "number 3", u"5", "number 5", "number 5"},
        {u"length", kNumber, "number 3", u"0 - 1", "number -1", "number 3"},
        {u"length", kNumber, "number 3", nullptr, "null", "number 0"},
    };
    expectValues(kRows);
}

TEST_F(ArrayMembers, Others) {
    constexpr const char16_t* kNames[] = {u"push",   u"pop",    u"shift", u"unshift", u"slice",
                                          u"splice", u"concat", u"0",     u"Join"};
    expectNothing(kNames);
}

// ---- String ----

class StringMembers : public support::MemberTableTest {
  protected:
    Value subject() override { return string(u"abCabC"); }
};

TEST_F(StringMembers, Methods) {
    constexpr MethodRow kRows[] = {
        {u"charAt", "string", "string", "string", u"[1, 9]", "string b"},
        {u"charCodeAt", "number 97", "number 97", "number 97", u"[1, 9]", "number 98"},
        {u"concat", "string abCabC", "string abCabC", "string abCabC", u"['x', 1, true]",
         "string abCabCx1true"},
        {u"indexOf", "number -1", "number -1", "number -1", u"['Ca', 1, 5]", "number 2"},
        {u"lastIndexOf", "number -1", "number -1", "number -1", u"['C', 1, 5]", "number -1"},
        {u"match", "string", "string", "string", u"['b', 1]", "string"},
        {u"replace", "string", "string", "string", u"['b', 'x', 1]", "string"},
        {u"search", "string", "string", "string", u"['b', 1]", "string"},
        {u"slice", "string", "string", "string", u"[1, 3, 1]", "string"},
        {u"split", "object undefined,abCabC", "object undefined,abCabC", "object undefined,abCabC",
         u"['b', 1, 2]", "object a,undefined,CabC"},
        {u"substr", "string", "string", "string", u"[1, 3, 1]", "string"},
        {u"substring", "string", "string", "string", u"[1, 3, 9]", "string bC"},
        {u"toLowerCase", "string abcabc", "string abcabc", "string abcabc", u"[1]", "string abcabc"},
        {u"toUpperCase", "string ABCABC", "string ABCABC", "string ABCABC", u"[1]", "string ABCABC"},
        {u"toString", "string abCabC", "string abCabC", "string abCabC", u"[1]", "string abCabC"},
        {u"valueOf", "string abCabC", "string abCabC", "string abCabC", u"[1]", "string abCabC"},
    };
    expectMethods(kRows);
}

TEST_F(StringMembers, Values) {
    constexpr ValueRow kRows[] = {
        {u"length", kNumber, "number 6", u"2", "null", "number 6"},
        {u"length", kNumber, "number 6", nullptr, "null", "number 6"},
    };
    expectValues(kRows);
}

TEST_F(StringMembers, Others) {
    constexpr const char16_t* kNames[] = {u"trim", u"repeat", u"charat", u"0"};
    expectNothing(kNames);
}

class StringConstructorMembers : public support::MemberTableTest {
  protected:
    Value subject() override { return evaluate(u"''.prototype"); }
};

TEST_F(StringConstructorMembers, Methods) {
    constexpr MethodRow kRows[] = {
        {u"fromCharCode", "string", "string", "string", u"[72.9, '105', 65601, 0, 66]", "string HiA"},
    };
    expectMethods(kRows);
}

TEST_F(StringConstructorMembers, Others) {
    constexpr const char16_t* kNames[] = {u"charAt", u"fromCodePoint"};
    expectNothing(kNames);
}

// ---- RegExp ----

class RegExpConstructorMembers : public support::MemberTableTest {
  protected:
    void SetUp() override { run(u"(new RegExp('(b)')).test('abc')"); }
    Value subject() override { return global(u"RegExp"); }
};

TEST_F(RegExpConstructorMembers, Values) {
    constexpr ValueRow kRows[] = {
        {u"input", kString, "string abc", u"'x'", "null", "string abc"},
        {u"lastMatch", kString, "string b", u"'x'", "null", "string b"},
        {u"lastParen", kString, "string b", u"'x'", "null", "string b"},
        {u"leftContext", kString, "string a", u"'x'", "null", "string a"},
        {u"rightContext", kString, "string c", u"'x'", "null", "string c"},
        {u"rightContext", kString, "string c", nullptr, "null", "string c"},
        {u"multiline", kBoolean, "boolean false", u"'yes'", "string yes", "boolean true"},
        {u"multiline", kBoolean, "boolean true", nullptr, "null", "boolean false"},
    };
    expectValues(kRows);
}

TEST_F(RegExpConstructorMembers, Others) {
    constexpr const char16_t* kNames[] = {u"$1", u"$2", u"$9", u"global", u"lastIndex", u"test", u"exec"};
    expectNothing(kNames);
}

class RegExpMembers : public support::MemberTableTest {
  protected:
    Value subject() override { return evaluate(u"RegExp('(b)', 'gi')"); }
    // What `compile` changes.
    std::string trace(JSObject& expression) override {
        std::string text;
        for (const char16_t* name : {u"source", u"global", u"ignoreCase"}) {
            const Value value(expression.getMember(BString(name), ctx(), nullptr));
            text += (text.empty() ? "<" : ",") + support::asString(value.get(), ctx());
        }
        return text == "<(b),true,true" ? std::string() : text + ">";
    }
};

TEST_F(RegExpMembers, Methods) {
    constexpr MethodRow kRows[] = {
        // The text of the last run is still empty, and nothing is found in that.
        {u"exec", "null", "null", "null", u"['aBc', 1]", "object [object Array]"},
        {u"test", "boolean false", "boolean false", "boolean false", u"['aBc', 1]", "boolean true"},
        {u"compile", "null / <,false,false>", "null / <,false,false>", "null / <,false,false>",
         u"['c', 'qg', 'i']", "null / <c,true,false>"},
    };
    expectMethods(kRows);
}

TEST_F(RegExpMembers, Values) {
    constexpr ValueRow kRows[] = {
        {u"global", kBoolean, "boolean true", u"false", "null", "boolean true"},
        {u"ignoreCase", kBoolean, "boolean true", u"false", "null", "boolean true"},
        {u"source", kString, "string (b)", u"'x'", "null", "string (b)"},
        {u"lastIndex", kNumber, "number 0", u"'2.9'", "string 2.9", "number 2"},
        {u"lastIndex", kNumber, "number 0", u"0 - 2.9", "number -2.8999999999999999", "number -2"},
        {u"lastIndex", kNumber, "number 0", nullptr, "null", "number 0"},
    };
    expectValues(kRows);
}

TEST_F(RegExpMembers, Others) {
    constexpr const char16_t* kNames[] = {u"multiline", u"lastMatch", u"input", u"flags", u"match"};
    expectNothing(kNames);
}

// ---- Date ----

class DateMembers : public support::MemberTableTest {
  protected:
    void SetUp() override {
        stopClock(kMoment);
        TIME_ZONE_INFORMATION zone{};
        zone.Bias = -90;
        replaceTimeZone(&zone);
    }
    void TearDown() override {
        startClock();
        replaceTimeZone(nullptr);
        MemberTableTest::TearDown();
    }
    Value subject() override { return evaluate(u"Date(2026, 10, 14, 8, 59, 33, 0, 7)"); }
    // The milliseconds, when they are others than at first.
    std::string trace(JSObject& date) override {
        const std::string milliseconds = support::asNumber(&date, ctx());
        return milliseconds == "1794646773007" ? std::string() : milliseconds;
    }
};

TEST_F(DateMembers, Methods) {
    constexpr MethodRow kRows[] = {
        {u"setDate", "null", "null", "null", u"[20, 1]", "null / 1795165173007"},
        {u"setHours", "null", "null", "null", u"[9, 1]", "null / 1794650373007"},
        {u"setMinutes", "null", "null", "null", u"[0, 1]", "null / 1794643233007"},
        {u"setMonth", "null", "null", "null", u"[9, 1]", "null / 1791968373007"},
        {u"setSeconds", "null", "null", "null", u"['0', 1]", "null / 1794646740007"},
        {u"setMilliseconds", "null", "null", "null", u"[5000, 1]", "null / 1794646778000"},
        {u"setTime", "null", "null", "null", u"[1500, 1]", "null / 1501"},
        {u"setYear", "null", "null", "null", u"[126, 1]", "null / 61752790773007"},
        {u"setFullYear", "null", "null", "null", u"[2027, 0, 1, 5]", "null / 1798793973007"},
        {u"toGMTString", "string Sat 14 Nov 2026 08:59.33 GMT", "string Sat 14 Nov 2026 08:59.33 GMT",
         "string Sat 14 Nov 2026 08:59.33 GMT", u"[1]", "string Sat 14 Nov 2026 08:59.33 GMT"},
        {u"toLocaleString", "string Sat 14 Nov 2026 10:29.33", "string Sat 14 Nov 2026 10:29.33",
         "string Sat 14 Nov 2026 10:29.33", u"[1]", "string Sat 14 Nov 2026 10:29.33"},
        {u"getDate", "number 14", "number 14", "number 14", u"[1]", "number 14"},
        {u"getDay", "number 6", "number 6", "number 6", u"[1]", "number 6"},
        {u"getFullYear", "number 2026", "number 2026", "number 2026", u"[1]", "number 2026"},
        {u"getHours", "number 8", "number 8", "number 8", u"[1]", "number 8"},
        {u"getMilliseconds", "number 7", "number 7", "number 7", u"[1]", "number 7"},
        {u"getMinutes", "number 59", "number 59", "number 59", u"[1]", "number 59"},
        {u"getMonth", "number 10", "number 10", "number 10", u"[1]", "number 10"},
        {u"getSeconds", "number 33", "number 33", "number 33", u"[1]", "number 33"},
        {u"getTime", "number 1794646773007", "number 1794646773007", "number 1794646773007", u"[1]",
         "number 1794646773007"},
        {u"getYear", "number -1774", "number -1774", "number -1774", u"[1]", "number -1774"},
        {u"toString", "string Sat Nove 14 8:59:33 2026", "string Sat Nove 14 8:59:33 2026",
         "string Sat Nove 14 8:59:33 2026", u"[1]", "string Sat Nove 14 8:59:33 2026"},
        {u"valueOf", "object Sat Nove 14 8:59:33 2026", "object Sat Nove 14 8:59:33 2026",
         "object Sat Nove 14 8:59:33 2026", u"[1]", "object Sat Nove 14 8:59:33 2026"},
    };
    expectMethods(kRows);
}

TEST_F(DateMembers, Others) {
    constexpr const char16_t* kNames[] = {u"getUTCHours", u"setUTCHours", u"toISOString",
                                          u"getTimezoneOffset", u"toUTCString"};
    expectNothing(kNames);
}

class DateConstructorMembers : public DateMembers {
  protected:
    Value subject() override { return global(u"Date"); }
    std::string trace(JSObject&) override { return std::string(); }
};

TEST_F(DateConstructorMembers, Methods) {
    constexpr MethodRow kRows[] = {
        // Without a list 0; with one, six times -1.
        {u"UTC", "number 0", "number -2240787661000", "number -2240787661000",
         u"[2026, 10, 14, 8, 59, 33, 5]", "number 1794646773000"},
        // The empty text is the present moment of the local clock.
        {u"parse", "number 1794652173000", "number 1794652173000", "number 1794652173000",
         u"['Jan 2 1970', 5]", "number 86400000"},
    };
    expectMethods(kRows);
}

TEST_F(DateConstructorMembers, Others) {
    constexpr const char16_t* kNames[] = {u"now", u"getTime", u"utc"};
    expectNothing(kNames);
}

// ---- Math ----

class MathMembers : public support::MemberTableTest {
  protected:
    Value subject() override { return global(u"Math"); }
};

TEST_F(MathMembers, Methods) {
    constexpr MethodRow kRows[] = {
        {u"abs", "number 0", "number 0", "number 0", u"[0 - 3, 1]", "number 3"},
        {u"acos", "number 0", "number 0", "number 0", u"[1, 5]", "number 0"},
        {u"asin", "number 0", "number 0", "number 0", u"[1, 5]", "number 1.5707963267948966"},
        {u"atan", "number 0", "number 0", "number 0", u"[1, 5]", "number 0.7853981633974483"},
        {u"atan2", "number 0", "number 0", "number 0", u"[2, 0, 3]", "number 0"},
        {u"ceil", "number 0", "number 0", "number 0", u"[1.5, 9]", "number 2"},
        {u"cos", "number 0", "number 0", "number 0", u"[0, 9]", "number 1"},
        {u"exp", "number 0", "number 0", "number 0", u"[0, 9]", "number 1"},
        {u"floor", "number 0", "number 0", "number 0", u"[1.5, 9]", "number 1"},
        {u"log", "number 0", "number 0", "number 0", u"[Math.E, 9]", "number 1"},
        {u"max", "number 0", "number 0", "number 0", u"[1, 2, 3]", "number 2"},
        {u"min", "number 0", "number 0", "number 0", u"[2, 1, 0]", "number 1"},
        {u"pow", "number 0", "number 0", "number 0", u"[2, 3, 4]", "number 8"},
        {u"round", "number 0", "number 0", "number 0", u"[1.5, 9]", "number 2"},
        {u"sin", "number 0", "number 0", "number 0", u"[0, 9]", "number 0"},
        {u"sqrt", "number 0", "number 0", "number 0", u"[16, 9]", "number 4"},
        {u"tan", "number 0", "number 0", "number 0", u"[0, 9]", "number 0"},
    };
    expectMethods(kRows);
}

TEST_F(MathMembers, FunctionsOfTwoGiveZeroForOne) {
    constexpr const char16_t* kNames[] = {u"atan2", u"max", u"min", u"pow"};
    const Value math = subject();
    const Value one = list({number(2).get()});
    for (const char16_t* name : kNames) {
        EXPECT_EQ(describe(Value(math->callMember(BString(name), one.get(), ctx(), nullptr)).get()),
                  "number 0");
    }
}

TEST_F(MathMembers, Values) {
    constexpr ValueRow kRows[] = {
        {u"E", kNumber, "number 2.7182818284590451", u"3", "null", "number 2.7182818284590451"},
        {u"LN2", kNumber, "number 0.6931471805599453", u"3", "null", "number 0.6931471805599453"},
        {u"LN10", kNumber, "number 2.3025850929940459", u"3", "null", "number 2.3025850929940459"},
        {u"LOG2E", kNumber, "number 1.4426950408889634", u"3", "null", "number 1.4426950408889634"},
        {u"LOG10E", kNumber, "number 0.4342944819032518", u"3", "null", "number 0.4342944819032518"},
        {u"PI", kNumber, "number 3.1415926535897931", u"3", "null", "number 3.1415926535897931"},
        {u"SQRT1_2", kNumber, "number 0.7071067811865475", u"3", "null", "number 0.7071067811865475"},
        {u"SQRT2", kNumber, "number 1.4142135623730951", nullptr, "null", "number 1.4142135623730951"},
    };
    expectValues(kRows);
}

// `random` reads no arguments; what it gives, with any list, lies from 0 to 1.
TEST_F(MathMembers, Random) {
    const Value math = subject();
    EXPECT_EQ(math->memberType(BString(u"random"), ctx(), nullptr), JSValueType::function);
    const Value empty = list({});
    const Value many = list({number(7).get(), number(8).get()});
    for (JSObject* arguments : {static_cast<JSObject*>(nullptr), empty.get(), many.get()}) {
        const Value result(math->callMember(BString(u"random"), arguments, ctx(), nullptr));
        ASSERT_TRUE(result);
        JSNumberValue value;
        result->asNumber(value, ctx(), nullptr);
        EXPECT_GE(value.value, 0.0);
        EXPECT_LE(value.value, 1.0);
    }
}

TEST_F(MathMembers, Others) {
    constexpr const char16_t* kNames[] = {u"LN", u"Abs", u"sinh", u"trunc"};
    expectNothing(kNames);
}

// ---- util ----

class UtilMembers : public support::MemberTableTest {
  protected:
    Value subject() override { return global(u"util"); }
};

TEST_F(UtilMembers, Methods) {
    constexpr MethodRow kRows[] = {
        {u"printf", "string", "string", "string", u"['%d', 5, 6]", "string 5"},
        {u"printx", "string", "string", "string", u"['9-9', 'a1b2', 3]", "string 1-2"},
        {u"printd", "string", "string", "string", u"['yyyy', 0, 5]", "string 1970"},
    };
    expectMethods(kRows);
}

TEST_F(UtilMembers, FormattersGiveTheEmptyTextWithOneArgument) {
    const Value util = subject();
    const Value one = list({string(u"a9y").get()});
    for (const char16_t* name : {u"printx", u"printd"}) {
        EXPECT_EQ(describe(Value(util->callMember(BString(name), one.get(), ctx(), nullptr)).get()),
                  "string");
    }
    EXPECT_EQ(describe(Value(util->callMember(BString(u"printf"), one.get(), ctx(), nullptr)).get()),
              "string a9y");
}

TEST_F(UtilMembers, Others) {
    constexpr const char16_t* kNames[] = {u"sprintf", u"print", u"printX"};
    expectNothing(kNames);
}

}  // namespace
}  // namespace quorvelin
