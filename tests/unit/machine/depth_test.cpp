// Depth: endless recursion ends in a message, and long chains of objects are released without native
// recursion.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

class MachineDepth : public support::ScriptTest {
  protected:
    static bool saysTooDeep(const std::string& message) {
        return message == "stack overflow" ||
               (message.find("Error(Ln ") == 0 && message.find("too deep") != std::string::npos);
    }
    // Runs a script that goes too deep, which is said and nothing else.
    void expectOverflow(std::u16string_view script) {
        SCOPED_TRACE(support::ascii(script));
        run(script);
        ASSERT_FALSE(transcript->messages.empty());
        for (const auto& message : transcript->messages)
            EXPECT_TRUE(saysTooDeep(message.text)) << message.text;
        transcript->messages.clear();
        EXPECT_EQ(machine->getCompletion(), JSCompletion::normal);
        EXPECT_EQ(run(u"5 + 1"), "number 6");
        EXPECT_EQ(run(u"g = Function('n', 'if (n < 1) return 7; return g(n - 1);'); g(20)"), "number 7");
    }
};

TEST_F(MachineDepth, EndlessRecursionIsReportedAndTheMachineGoesOn) {
    expectOverflow(u"f = Function('return f();'); f()");
    expectOverflow(u"f = Function('a', 'var b = a; return f(b + 1);'); f(1)");
    expectOverflow(u"o = new Object(); o.m = Function('return this.m();'); o.m()");
    expectOverflow(u"a = Function('return b();'); b = Function('return a();'); a()");
    expectOverflow(u"F = Function('this.x = new F();'); new F()");
    expectOverflow(u"f = Function('_eval(\\'f()\\');'); f()");
}

TEST_F(MachineDepth, EndlessRecursionEndsAtACallWithOneMessage) {
    for (const std::u16string_view script :
         {u"f = Function('return f();'); f()",
          u"f = Function('a', 'var b = a; return f(b + 1) + typeof a;'); f(1)",
          u"a = Function('return b() + 1;'); b = Function('this.x = [a()];'); a()",
          u"F = Function('this.x = new F();'); new F()",
          u"t = ''; t['operator$+'] = Function('a', 'b', 'return typeof a + typeof b + 1;'); t + t"}) {
        SCOPED_TRACE(support::ascii(script));
        run(script);
        EXPECT_EQ(messages(), "stack overflow");
    }
}

TEST_F(MachineDepth, EndlessConversionIsReportedAndTheMachineGoesOn) {
    // A text that asks for itself, by way of a member of the list.
    expectOverflow(u"a = [1]; a.join = Function('return \\'\\' + this;'); '' + a");
    expectOverflow(u"o = new Object(); o['operator$+'] = Function('return o + 1;'); o + 1");
}

TEST_F(MachineDepth, ListThatHoldsItselfIsReportedWhenItIsMadeAText) {
    expectOverflow(u"a = []; a[0] = a; a.toString()");
    run(u"a[0] = 0");
}

TEST_F(MachineDepth, RecursionGoesDeepBeforeThat) {
    // A few hundred calls are nothing out of the ordinary for a script.
    EXPECT_EQ(run(u"f = Function('n', 'if (n < 1) return 1; return f(n - 1) + 1;'); f(500)"), "number 501");
}

TEST_F(MachineDepth, DeeplyNestedTextIsRunOrRefusedWithAMessage) {
    for (const size_t depth : {100u, 100000u}) {
        std::u16string sums;
        sums.append(depth, u'(').append(u"1").append(depth, u')');
        run(sums);
        std::u16string lists;
        lists.append(depth, u'[').append(depth, u']');
        run(lists);
        if (depth == 100) {
            EXPECT_EQ(messages(), "");
        }
    }
    EXPECT_FALSE(messages().empty());
    EXPECT_EQ(run(u"5"), "number 5");
}

TEST_F(MachineDepth, LongTextOfOperatorsIsRunOrRefusedWithAMessage) {
    std::u16string sum(u"n = 0");
    for (int i = 0; i < 20000; ++i) sum += u" + 1";
    const std::string result = run(sum);
    const std::string said = messages();
    EXPECT_TRUE(result == "number 20000" || !said.empty()) << result;
    EXPECT_EQ(run(u"5"), "number 5");
}

// ---- Releasing ----

constexpr int kChain = 100000;

TEST_F(MachineDepth, LongChainOfObjectsIsReleased) {
    EXPECT_EQ(
        run(u"o = new Object(); for (i = 0; i < 100000; i++) { n = new Object(); n.next = o; o = n; } i"),
        "number 100000");
    EXPECT_EQ(run(u"n = 0; o = 0"), "number 0");
    EXPECT_EQ(run(u"a = []; for (i = 0; i < 100000; i++) { a = [a]; } a.length"), "number 1");
}

TEST_F(MachineDepth, LongChainIsReleasedWithItsMachine) {
    run(u"o = new Object(); for (i = 0; i < 100000; i++) { n = new Object(); n.next = o; o = n; }");
    machine.reset();
}

TEST_F(MachineDepth, LongChainOfHostObjectsIsReleased) {
    static int deaths;
    deaths = 0;
    class Link final : public JSObject {
      public:
        using JSObject::JSObject;
        ~Link() override { ++deaths; }
    };
    Value last(new Link());
    for (int i = 1; i < kChain; ++i) last = Value(new Link(last.get()));
    EXPECT_EQ(deaths, 0);
    last.reset();
    EXPECT_EQ(deaths, kChain);
}

TEST_F(MachineDepth, LongChainOfInnerObjectsIsReleased) {
    Value last(new JSObject());
    for (int i = 0; i < kChain; ++i) last = Value(new JSInstance(nullptr, last.get()));
    last.reset();
}

TEST_F(MachineDepth, LongChainOfContextsIsReleased) {
    Owned<JSContext> last(machine->makeLocalContext(nullptr, nullptr));
    for (int i = 0; i < kChain; ++i) last = Owned<JSContext>(last->makeLocalContext(nullptr, nullptr));
    last.reset();
}

// ---- Threads with a small stack ----

void onSmallStack(size_t bytes, std::function<void()> body) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* argument) -> void* {
                      (*static_cast<std::function<void()>*>(argument))();
                      return nullptr;
                  },
                  &body),
              0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

TEST_F(MachineDepth, EndlessRecursionOnASmallStackIsReportedToo) {
    onSmallStack(2 * 1024 * 1024, [this] { expectOverflow(u"f = Function('return f();'); f()"); });
}

TEST_F(MachineDepth, LongChainIsReleasedOnASmallStack) {
    onSmallStack(1024 * 1024 + 512 * 1024, [this] {
        run(u"o = new Object(); for (i = 0; i < 100000; i++) { n = new Object(); n.next = o; o = n; } o = 0; "
            u"n = 0");
    });
}

}  // namespace
}  // namespace quorvelin
