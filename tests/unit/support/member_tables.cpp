#include "support/member_tables.h"

#include "support/script_text.h"

namespace quorvelin::support {

Value MemberTableTest::read(JSObject& object, const char16_t* name) {
    return Value(object.getMember(BString(name), ctx(), nullptr));
}

std::string MemberTableTest::write(JSObject& object, const char16_t* name, JSObject* value) {
    return describe(Value(object.setMember(BString(name), value, ctx(), nullptr)).get());
}

std::string MemberTableTest::callOf(const char16_t* name, JSObject* arguments) {
    const Value object = subject();
    std::string result = describe(Value(object->callMember(BString(name), arguments, ctx(), nullptr)).get());
    const std::string left = trace(*object);
    if (!left.empty()) result += " / " + left;
    return result;
}

void MemberTableTest::expectCalls(std::span<const MethodRow> rows) {
    for (const MethodRow& row : rows) {
        SCOPED_TRACE(ascii(std::u16string_view(row.name)));
        EXPECT_EQ(callOf(row.name, nullptr), row.withoutList) << "without a list";
        EXPECT_EQ(callOf(row.name, list({}).get()), row.withNone) << "without arguments";
        EXPECT_EQ(callOf(row.name, Value(machine->makeArraySized(1, nullptr)).get()), row.withEmpty)
            << "with an entry that holds nothing";
        const Value many = evaluate(row.many);
        ASSERT_TRUE(many);
        EXPECT_EQ(callOf(row.name, many.get()), row.withMany) << "with too many";
    }
}

void MemberTableTest::expectMethods(std::span<const MethodRow> rows) {
    for (const MethodRow& row : rows) {
        const std::string name = ascii(std::u16string_view(row.name));
        SCOPED_TRACE(name);
        const Value object = subject();
        EXPECT_TRUE(object->hasMember(BString(row.name), ctx(), nullptr));
        EXPECT_EQ(object->memberType(BString(row.name), ctx(), nullptr), JSValueType::function);
        EXPECT_EQ(describe(read(*object, row.name).get()), "function function " + name + "(){[native code]}");

        EXPECT_EQ(write(*object, row.name, string(u"own").get()), "string own");
        EXPECT_EQ(describe(read(*object, row.name).get()), "string own");
        EXPECT_EQ(object->memberType(BString(row.name), ctx(), nullptr), JSValueType::string);
        object->deleteMember(BString(row.name), ctx(), nullptr);
        EXPECT_EQ(object->memberType(BString(row.name), ctx(), nullptr), JSValueType::function);
    }
    expectCalls(rows);
}

void MemberTableTest::expectValues(std::span<const ValueRow> rows) {
    for (const ValueRow& row : rows) {
        SCOPED_TRACE(ascii(std::u16string_view(row.name)));
        const Value object = subject();
        EXPECT_TRUE(object->hasMember(BString(row.name), ctx(), nullptr));
        EXPECT_EQ(object->memberType(BString(row.name), ctx(), nullptr), row.type);
        EXPECT_EQ(describe(read(*object, row.name).get()), row.value);
        EXPECT_EQ(describe(Value(object->callMember(BString(row.name), nullptr, ctx(), nullptr)).get()),
                  "null");
        EXPECT_EQ(
            describe(Value(object->callMember(BString(row.name), list({object.get()}).get(), ctx(), nullptr))
                         .get()),
            "null");

        const Value next = row.next != nullptr ? evaluate(row.next) : Value();
        EXPECT_EQ(write(*object, row.name, next.get()), row.written);
        EXPECT_EQ(describe(read(*object, row.name).get()), row.after);
        EXPECT_EQ(object->memberType(BString(row.name), ctx(), nullptr), row.type) << "after the write";
    }
}

void MemberTableTest::expectNothing(std::span<const char16_t* const> names) {
    for (const char16_t* name : names) {
        SCOPED_TRACE(ascii(std::u16string_view(name)));
        const Value object = subject();
        EXPECT_FALSE(object->hasMember(BString(name), ctx(), nullptr));
        EXPECT_EQ(object->memberType(BString(name), ctx(), nullptr), JSValueType::undefined);
        EXPECT_FALSE(read(*object, name));
        EXPECT_FALSE(Value(object->callMember(BString(name), list({}).get(), ctx(), nullptr)));
    }
}

}  // namespace quorvelin::support
