// A host that links the engine (the archive quorvelin_engine and the shared library tarvonshell) and derives
// its own machine class, so that it sees what scripts print and what goes wrong in them.
#include <cstdio>
#include <string>
#include <vector>

#include "machine/kernel.h"
#include "objects/member_request.h"
#include "stdlib/console.h"

using namespace quorvelin;

namespace {

// A text for the terminal; characters outside ASCII as question marks.
std::string narrow(const BString& text) {
    std::string result;
    for (int32_t i = 0; i < text.length(); ++i) result += text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
    return result;
}

// What scripts know as `console`.
class Console final : public JSConsole {
  public:
    void println(const BString& text) override { std::printf("script says: %s\n", narrow(text).c_str()); }
};

// The machine of this host. A message changes nothing about the run; it is up to the host to do something
// with it.
class Machine final : public JSKernel {
  public:
    void reportError(const BString& message) override {
        int32_t line = 0;
        int32_t column = 0;
        getPosition(line, column);
        messages.push_back(std::to_string(line) + ":" + std::to_string(column) + ": " + narrow(message));
    }
    JSObject* makeConsole(JSContext*, JSObject*) override { return new Console(); }

    std::vector<std::string> messages;
};

// An object of the host that scripts can use: `thermometer.celsius`, which can be read and written. The class
// answers for its names, and leaves all others to its base class.
class Thermometer final : public JSObject {
  public:
    bool dispatchMember(JSMemberRequest& request) override {
        if (!request.name->equals(u"celsius")) return JSObject::dispatchMember(request);
        switch (request.op) {
            case JSRequestOp::exists:
                return true;
            case JSRequestOp::type:
                request.type = JSValueType::number;
                return true;
            case JSRequestOp::get:
                request.result = request.ctx->makeNumber(JSNumberValue::of(celsius_), request.receiver);
                return true;
            case JSRequestOp::set: {
                JSNumberValue number;
                if (request.argument != nullptr)
                    request.argument->asNumber(number, request.ctx, request.receiver);
                celsius_ = number.value;
                request.result = Value::share(request.argument).take();
                return true;
            }
            default:
                return false;
        }
    }
    double celsius() const { return celsius_; }

  private:
    double celsius_ = 20;
};

}  // namespace

int main() {
    const Owned<Machine> machine(new Machine());
    if (!machine) return 1;
    const Owned<Thermometer> thermometer(new Thermometer());
    Value(machine->setMember(BString(u"thermometer"), thermometer.get(), machine.get(), nullptr)).reset();

    // Results carry a reference, which `Value` lets go.
    const Value result(
        machine->evaluateText(BString(u"console.println('It is ' + thermometer.celsius + ' degrees.');\n"
                                      u"thermometer.celsius = 22.5;\n"
                                      u"unknown = (void 0).x;\n"
                                      u"thermometer.celsius * 9 / 5 + 32"),
                              nullptr));
    if (result) {
        BString text;
        result->asString(text, machine.get(), nullptr);
        std::printf("result: %s\n", narrow(text).c_str());
    }
    std::printf("the thermometer shows %g\n", thermometer->celsius());

    // A syntax error: nothing of the text runs.
    Value(machine->evaluateText(BString(u"console.println('never shown'); 1 )"), nullptr)).reset();

    for (const std::string& message : machine->messages) std::printf("message at %s\n", message.c_str());
    return 0;
}
