// A machine for tests, which keeps what it has to say, and the fixture that runs scripts on it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "machine/kernel.h"
#include "stdlib/console.h"

namespace quorvelin::support {

// What a machine has said: messages with the position at which they were reported, and lines printed.
struct Transcript {
    struct Message {
        std::string text;
        int32_t line;
        int32_t column;
    };
    std::vector<Message> messages;
    std::vector<std::string> printed;

    // Each gives what has come so far, joined by "; ", and forgets it. Positions go in front: "1:5 wrong
    // object".
    std::string takeMessages();
    std::string takeMessagesWithPositions();
    std::string takePrinted();
};

// A console that keeps what is printed on it. Lives as long as scripts hold it, so it shares the transcript.
class RecordingConsole final : public JSConsole {
  public:
    explicit RecordingConsole(std::shared_ptr<Transcript> transcript) : transcript_(std::move(transcript)) {}
    void println(const BString& text) override;

  private:
    std::shared_ptr<Transcript> transcript_;
};

// A machine as a host derives its own: messages and printed lines go into the transcript.
class RecordingMachine : public JSKernel {
  public:
    explicit RecordingMachine(std::shared_ptr<Transcript> transcript) : transcript_(std::move(transcript)) {}

    void reportError(const BString& message) override;
    JSObject* makeConsole(JSContext* ctx, JSObject* receiver) override;

    // For tests: the position reached, as "line:column".
    std::string position();

  private:
    std::shared_ptr<Transcript> transcript_;
};

// The word that the tests use for a type: that of `typeof`, "undefined" for an unknown one.
std::string typeWord(JSValueType type);

// A value as its type word and its text, "number 5" or "string" for the empty text; "null" for the null
// pointer.
std::string describe(JSObject* value, JSContext* ctx);

// One machine for each test, and shortcuts to its operations. At the end of a test nothing may be left over:
// every message and every printed line must have been asked for, and the test must hold the last reference to
// the machine.
class ScriptTest : public testing::Test {
  protected:
    ScriptTest();
    void TearDown() override;

    // Runs a text on the machine. `run` gives the value as `describe` does.
    Value evaluate(std::u16string_view script);
    std::string run(std::u16string_view script);

    // A global as it is stored, and as `describe` shows it.
    Value global(std::u16string_view name);
    std::string globalText(std::u16string_view name) { return describe(global(name).get(), ctx()); }
    void setGlobal(std::u16string_view name, JSObject* value);

    std::string describe(JSObject* value) { return support::describe(value, ctx()); }
    static std::string describe(JSObject* value, JSContext* context) {
        return support::describe(value, context);
    }

    // New values.
    Value number(double value);
    Value string(std::u16string_view text);
    Value boolean(bool value);
    Value plainObject();
    // A function with the body, and up to two parameters.
    Value function(std::u16string_view body, std::u16string_view first = {}, std::u16string_view second = {});
    // A list of arguments.
    Value list(std::initializer_list<JSObject*> values);

    std::string messages() { return transcript->takeMessages(); }
    std::string messagesWithPositions() { return transcript->takeMessagesWithPositions(); }
    std::string printed() { return transcript->takePrinted(); }

    JSContext* ctx() { return machine.get(); }

    std::shared_ptr<Transcript> transcript = std::make_shared<Transcript>();
    Owned<RecordingMachine> machine;
};

// The text of an object's operation that gives one.
std::string asString(JSObject* object, JSContext* ctx);
std::string className(JSObject* object, JSContext* ctx);
std::string memberName(JSObject* object, JSContext* ctx);
// The number that `asNumber` gives, as text.
std::string asNumber(JSObject* object, JSContext* ctx);

}  // namespace quorvelin::support
