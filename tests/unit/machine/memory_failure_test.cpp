// Failing memory while scripts run: every allocation in turn, once and from there on. Nothing may crash or
// leak, and the machine works afterwards.
#include <gtest/gtest.h>

#include "evaluator/contexts.h"
#include "host/allocator.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::Transcript;

// One script for every kind of statement and expression. Each sets all that it reads, and ends in a value
// that shows what happened.
const std::u16string_view kScripts[] = {
    u"1; 'a text'; 2.5",
    u"x = 1; y = x; x + y",
    u"var a = 1, b = a + 1, c; b",
    u"o = new Object(); o.a.b = 'deep'; o[2] = 3; o.a.b + o[2]",
    u"i = 5; i++; ++i; i--; --i; -i + ~i",
    u"s = 'a'; s += 'b' + 1; s -= 0; s *= 2; s /= 1; s %= 5; s",
    u"s = ''; if (s) 1; else s ? 2 : 3",
    u"n = 0; for (var i = 0; i < 3; i++) { if (i == 1) continue; n += i; } n",
    u"n = 3; while (n > 0) n = n - 1; do n++; while (n < 2); for (;;) { n++; break; } n",
    u"n = 0; switch ('b') { case 'a': n = 1; break; case 'b': n = 2; case 3: n = n + 1; default: n = n * 10; "
    u"} n",
    u"o = new Object(); o.v = 1; with (o) { v = 2; w = 3; } o.v + w",
    u"l: { x = 4; } x",
    u"f = Function('a', 'b', 'var c = a; return c + b + arguments.length;'); f(1, 2, 3)",
    u"F = Function('v', 'this.v = v; this.get = Function(\\'return this.v;\\');'); p = new F(7); p.get()",
    u"fact = Function('n', 'if (n > 1) return n * fact(n - 1); return 1;'); fact(5)",
    u"f = Function('return typeof caller + typeof this;'); g = Function('return f();'); g()",
    u"f = Function('a', 'return a;'); f.decompile()",
    u"a = [1, 'two', [3]]; a[4] = true; a.join('-') + a.length",
    u"a = new Array(3); a[0] = 2; a[1] = 1; a.sort(); a.reverse(); a.toString()",
    u"a = [3, 1, 2]; a.sort(Function('x', 'y', 'return x - y;')); a.toString()",
    u"o = new Object(); o.x = 1; delete o.x; delete o; typeof o",
    u"_eval('1 + 2') + parseInt('ff', 16) + parseFloat('1.5')",
    u"escape('a b,c') + unescape('a+b')",
    u"new String('a') + new Number(2) + new Boolean(false)",
    u"1 == 1 && 'a' < 'b' || null === 1",
    u"o = new Object(); o['operator$+'] = Function('a', 'return a;'); o + [5]",
    u"m = 'abc'.toString; m() + m",
    u"console.println('line'); (void 0).x; typeof undeclared",
    u"x = 1, y = 2, x | y & 3 ^ 1 << 2 >> 1",
    u")",
    u"return 5;",
};

class MemoryFailureWhileRunning : public testing::TestWithParam<AllocationFailure> {
  protected:
    void TearDown() override { cancelAllocationFailure(); }

    static bool saysOutOfMemory(const Transcript& transcript) {
        for (const Transcript::Message& message : transcript.messages) {
            for (const char* text : {"Out of memory", "Out of Memory", "out of memory"}) {
                if (message.text.find(text) != std::string::npos) return true;
            }
        }
        return false;
    }
};

// Ends a run that goes on and on for want of memory: a loop whose step fails every time never ends by itself.
class ExhaustedMachine final : public support::RecordingMachine {
  public:
    using RecordingMachine::RecordingMachine;
    void reportError(const BString& message) override {
        RecordingMachine::reportError(message);
        if (++messages_ > 100) setCompletion(JSCompletion::returned);
    }

  private:
    int messages_ = 0;
};

TEST_P(MemoryFailureWhileRunning, EveryAllocationOfEveryStatement) {
    for (const std::u16string_view script : kScripts) {
        SCOPED_TRACE(support::ascii(script));
        const BString text = support::textOf(script);
        std::string expected;
        {
            const Owned<JSKernel> machine(new JSKernel());
            expected = support::describe(Value(machine->evaluateText(text, nullptr)).get(), machine.get());
        }
        int reported = 0;
        bool failed = true;
        for (uint64_t count = 1; failed; ++count) {
            const auto transcript = std::make_shared<Transcript>();
            const Owned<ExhaustedMachine> machine(new ExhaustedMachine(transcript));
            failAllocation(count, GetParam());
            Value value(machine->evaluateText(text, nullptr));
            failed = allocationHasFailed();
            cancelAllocationFailure();
            const std::string result = support::describe(value.get(), machine.get());
            reported += saysOutOfMemory(*transcript);
            // A single failure may lose a store or a part of a text silently. When memory stays away, nothing
            // may come out wrong without a word.
            if (GetParam() == AllocationFailure::onwards && result != expected && result != "null") {
                EXPECT_FALSE(transcript->messages.empty()) << result << ", allocation " << count;
            }
            value.reset();
            machine->setCompletion(JSCompletion::normal);
            transcript->messages.clear();
            const Value after(machine->evaluateText(BString(u"z = 20; z = z + 1; z"), nullptr));
            EXPECT_EQ(support::describe(after.get(), machine.get()), "number 21") << "allocation " << count;
            EXPECT_TRUE(transcript->messages.empty());
        }
        EXPECT_GT(reported, 0);
    }
}

TEST_P(MemoryFailureWhileRunning, EveryAllocationOfTheHostsCalls) {
    const auto transcript = std::make_shared<Transcript>();
    const Owned<support::RecordingMachine> machine(new support::RecordingMachine(transcript));
    const BString name(u"a name that nobody has used before");
    bool failed = true;
    for (uint64_t count = 1; failed; ++count) {
        failAllocation(count, GetParam());
        {
            const Value number(machine->makeNumber(JSNumberValue::of(1), nullptr));
            const Value stored(machine->setMember(name, number.get(), machine.get(), nullptr));
            const Value read(machine->getMember(name, machine.get(), nullptr));
            machine->deleteMember(name, machine.get(), nullptr);
            const Value array(machine->makeArraySized(40, nullptr));
            const Value text(machine->makeString(name, nullptr));
            const Value item(array ? array->setItem(50, text.get(), machine.get(), nullptr) : nullptr);
            const Value object(machine->makeObject(nullptr));
            const Value console(machine->getMember(BString(u"console"), machine.get(), nullptr));
            const Owned<JSContext> scope(machine->makeLocalContext(nullptr, nullptr));
            EXPECT_TRUE(!scope || scope->declareVariable(BString(u"another name that is new")));
            const Value arguments(new JSArgumentsObject());
            const Value argument(arguments ? arguments->setMember(BString(u"a third name"), number.get(),
                                                                  machine.get(), nullptr)
                                           : nullptr);
        }
        failed = allocationHasFailed();
        cancelAllocationFailure();
        EXPECT_EQ(machine->getLength(nullptr), 0) << "no cell that has lost its name";
        ASSERT_LT(count, 1000u);
    }
    EXPECT_FALSE(transcript->messages.empty());
    for (const Transcript::Message& message : transcript->messages) EXPECT_EQ(message.text, "Out of memory");
}

TEST_P(MemoryFailureWhileRunning, EveryAllocationOfANewMachine) {
    bool failed = true;
    for (uint64_t count = 1; failed; ++count) {
        failAllocation(count, GetParam());
        const Owned<JSKernel> machine(new JSKernel());
        failed = allocationHasFailed();
        cancelAllocationFailure();
        ASSERT_LT(count, 1000u);
        if (!machine) continue;
        // A part may be missing, but what is there works.
        const Value value(
            machine->evaluateText(BString(u"o = new Object(); a = [1]; o.x = 'a' + 1; Array(2); f = "
                                          u"Function('return 1;'); f(); true; o.x"),
                                  nullptr));
        EXPECT_EQ(support::describe(value.get(), machine.get()), "string a1") << "allocation " << count;
    }
}

INSTANTIATE_TEST_SUITE_P(Machine, MemoryFailureWhileRunning,
                         testing::Values(AllocationFailure::once, AllocationFailure::onwards),
                         [](const testing::TestParamInfo<AllocationFailure>& information) {
                             return information.param == AllocationFailure::once ? "Once" : "Onwards";
                         });

}  // namespace
}  // namespace quorvelin
