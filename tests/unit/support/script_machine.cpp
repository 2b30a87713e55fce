#include "support/script_machine.h"

#include "support/script_text.h"

namespace quorvelin::support {

// ---- What a machine says ----

namespace {

void appendTo(std::string& list, const std::string& entry) {
    if (!list.empty()) list += "; ";
    list += entry;
}

std::string positionText(int32_t line, int32_t column) {
    return std::to_string(line) + ":" + std::to_string(column);
}

}  // namespace

std::string Transcript::takeMessages() {
    std::string all;
    for (const Message& message : messages) appendTo(all, message.text);
    messages.clear();
    return all;
}

std::string Transcript::takeMessagesWithPositions() {
    std::string all;
    for (const Message& message : messages) {
        appendTo(all, positionText(message.line, message.column) + " " + message.text);
    }
    messages.clear();
    return all;
}

std::string Transcript::takePrinted() {
    std::string all;
    for (const std::string& line : printed) appendTo(all, line);
    printed.clear();
    return all;
}

void RecordingConsole::println(const BString& text) {
    transcript_->printed.push_back(ascii(text));
}

void RecordingMachine::reportError(const BString& message) {
    int32_t line = 0;
    int32_t column = 0;
    getPosition(line, column);
    transcript_->messages.push_back({ascii(message), line, column});
}

JSObject* RecordingMachine::makeConsole(JSContext*, JSObject*) {
    return new RecordingConsole(transcript_);
}

std::string RecordingMachine::position() {
    int32_t line = 0;
    int32_t column = 0;
    getPosition(line, column);
    return positionText(line, column);
}

// ---- Values as text ----

std::string typeWord(JSValueType type) {
    switch (type) {
        case JSValueType::string:
            return "string";
        case JSValueType::number:
            return "number";
        case JSValueType::boolean:
            return "boolean";
        case JSValueType::object:
            return "object";
        case JSValueType::function:
            return "function";
        case JSValueType::expression:
            return "expression";
        default:
            return "undefined";
    }
}

std::string describe(JSObject* value, JSContext* ctx) {
    if (value == nullptr) return "null";
    std::string description = typeWord(value->valueType(ctx, nullptr));
    const std::string text = asString(value, ctx);
    return text.empty() ? description : description + " " + text;
}

std::string asString(JSObject* object, JSContext* ctx) {
    BString text;
    object->asString(text, ctx, nullptr);
    return ascii(text);
}

std::string className(JSObject* object, JSContext* ctx) {
    BString text;
    object->className(text, ctx, nullptr);
    return ascii(text);
}

std::string memberName(JSObject* object, JSContext* ctx) {
    BString text;
    object->memberName(text, ctx, nullptr);
    return ascii(text);
}

std::string asNumber(JSObject* object, JSContext* ctx) {
    JSNumberValue number;
    object->asNumber(number, ctx, nullptr);
    return ascii(number.toText());
}

// ---- The fixture ----

ScriptTest::ScriptTest() : machine(new RecordingMachine(transcript)) {}

void ScriptTest::TearDown() {
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(printed(), "");
    if (machine) {
        EXPECT_EQ(machine->refCount(), 0) << "somebody still holds the machine";
    }
}

Value ScriptTest::evaluate(std::u16string_view script) {
    return Value(machine->evaluateText(textOf(script), nullptr));
}

std::string ScriptTest::run(std::u16string_view script) {
    return describe(evaluate(script).get());
}

Value ScriptTest::global(std::u16string_view name) {
    return Value(machine->getMember(textOf(name), ctx(), nullptr));
}

void ScriptTest::setGlobal(std::u16string_view name, JSObject* value) {
    const Value stored(machine->setMember(textOf(name), value, ctx(), nullptr));
}

Value ScriptTest::number(double value) {
    return Value(machine->makeNumber(JSNumberValue::of(value), nullptr));
}

Value ScriptTest::string(std::u16string_view text) {
    return Value(machine->makeString(textOf(text), nullptr));
}

Value ScriptTest::boolean(bool value) {
    return Value(machine->makeBoolean(value, nullptr));
}

Value ScriptTest::plainObject() {
    return Value(machine->makeObject(nullptr));
}

Value ScriptTest::function(std::u16string_view body, std::u16string_view first, std::u16string_view second) {
    const Value arguments(machine->makeArray(nullptr));
    int32_t count = 0;
    for (const std::u16string_view text : {first, second, body}) {
        if (text.data() == nullptr) continue;
        const Value stored(arguments->setItem(count++, string(text).get(), ctx(), nullptr));
    }
    return Value(machine->callMember(BString(u"Function"), arguments.get(), ctx(), nullptr));
}

Value ScriptTest::list(std::initializer_list<JSObject*> values) {
    Value array(machine->makeArray(nullptr));
    int32_t position = 0;
    for (JSObject* value : values) {
        const Value stored(array->setItem(position++, value, ctx(), nullptr));
    }
    return array;
}

}  // namespace quorvelin::support
