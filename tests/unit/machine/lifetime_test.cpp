// Who holds whom, and for how long: reference counts over runs, the end of a machine, machines side by side.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "evaluator/contexts.h"
#include "frontend/nodes.h"
#include "machine/class_factory.h"
#include "machine/module_state.h"
#include "support/leaks_by_design.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::textOf;

class Lifetime : public support::ScriptTest {};

// ---- References ----

TEST_F(Lifetime, ResultHasOneHolderAndBelongsToTheHost) {
    for (const char16_t* script : {u"1 + 2", u"'text' + 1", u"1 < 2", u"[1, 2]", u"null", u"typeof 1", u"x",
                                   u"x = 5", u"new Array(2)", u"-5", u"x++"}) {
        const Value value = evaluate(script);
        if (value) {
            EXPECT_EQ(value->refCount(), std::u16string_view(script) == u"x = 5" ? 1 : 0)
                << support::ascii(std::u16string_view(script));
        }
    }
    messages();
}

TEST_F(Lifetime, RunsLeaveTheMachineWithTheHoldersItHad) {
    run(u"f = Function('n', 'var v = n; if (n > 0) return f(n - 1); return this;'); o = new Object(); o.m = "
        u"f");
    const int32_t holders = machine->refCount();
    for (int i = 0; i < 200; ++i) {
        run(u"f(3); o.m(2); new f(1); with (o) { x = m; } [1, 2, 3].join('-'); _eval('f(1)'); typeof "
            u"parseInt");
        ASSERT_EQ(machine->refCount(), holders);
    }
    EXPECT_EQ(messages(), "");
}

TEST_F(Lifetime, RunsLeaveAHostObjectWithTheHoldersItHad) {
    const Value host = plainObject();
    setGlobal(u"host", host.get());
    run(u"keep = Function('a', 'var b = a; arguments[0]; return a;')");
    const int32_t holders = host->refCount();
    for (int i = 0; i < 200; ++i) {
        run(u"t = host; t.x = host.x; keep(host, host); t = [host]; t = 0; with (host) { x = 1; } switch (1) "
            u"{ case 1: host; }");
        ASSERT_EQ(host->refCount(), holders);
    }
}

TEST_F(Lifetime, GlobalsDoNotGrowOverRuns) {
    run(u"a = 1; var b = 2; f = Function('var c = 3; d = 4;'); f()");
    const int32_t count = machine->getLength(nullptr);
    for (int i = 0; i < 100; ++i) run(u"a = 1; var b = 2; f()");
    EXPECT_EQ(machine->getLength(nullptr), count);
}

TEST_F(Lifetime, FailedRunsLeaveNothingBehind) {
    const int32_t holders = machine->refCount();
    for (const char16_t* script :
         {u")", u"(void 0).x", u"f()()", u"return 1;", u"break;", u"l: for (;;) { break l; }"}) {
        run(script);
        machine->setCompletion(JSCompletion::normal);
        EXPECT_EQ(machine->refCount(), holders);
    }
    messages();
}

// ---- The end ----

class DeathListener final : public BNotifyListener {
  public:
    int32_t notified(BNotifySender* sender) override {
        ++deaths;
        last = sender;
        return kGoOn;
    }
    int deaths = 0;
    BNotifySender* last = nullptr;
};

TEST_F(Lifetime, ListenerHearsOfTheMachinesDeathOnce) {
    DeathListener listener;
    machine->addListener(&listener, 0);
    run(u"a = [1, 2]");
    machine->addRef();
    EXPECT_FALSE(machine->release());
    EXPECT_EQ(listener.deaths, 0);
    BNotifySender* const sender = machine.get();
    EXPECT_TRUE(machine.take()->release());
    EXPECT_EQ(listener.deaths, 1);
    EXPECT_EQ(listener.last, sender);
}

TEST_F(Lifetime, MachineTellsOfItsEndAndThenReleasesItsPartsInTheirOrder) {
    struct Recorder final : BNotifyListener {
        int32_t notified(BNotifySender*) override {
            *order += name + " ";
            return kGoOn;
        }
        std::string name;
        std::string* order = nullptr;
    };
    std::string order;
    std::vector<std::unique_ptr<Recorder>> recorders;
    const auto listenTo = [&](const char* name, JSObject* object) {
        ASSERT_NE(object, nullptr) << name;
        recorders.push_back(std::make_unique<Recorder>());
        recorders.back()->name = name;
        recorders.back()->order = &order;
        object->addListener(recorders.back().get(), 0);
    };
    const auto behind = [&](std::u16string_view value) {
        return Value(evaluate(value)->getMember(BString(u"prototype"), ctx(), nullptr));
    };
    const Owned<JSFunctionNode> node(new JSFunctionNode(0, 0, Name(), nullptr, nullptr));
    listenTo("global", Value(evaluate(u"g = new Object(); g")->asObject(ctx(), nullptr)).get());
    listenTo("util", global(u"util").get());
    listenTo("RegExp", global(u"RegExp").get());
    listenTo("Math", global(u"Math").get());
    listenTo("Date", global(u"Date").get());
    {
        const Value function(machine->makeFunctionPlain(node.get(), nullptr));
        listenTo("Function", Value(function->getMember(BString(u"prototype"), ctx(), nullptr)).get());
    }
    listenTo("Number", behind(u"5").get());
    listenTo("String", behind(u"'text'").get());
    listenTo("Boolean", behind(u"true").get());
    listenTo("Array", behind(u"[]").get());
    listenTo("machine", machine.get());
    machine.reset();
    EXPECT_EQ(order, "machine Array Boolean String Number Function Date Math RegExp util global ");
}

TEST_F(Lifetime, ListenerHearsOfTheEndOfAValueThatAVariableHeld) {
    for (const char16_t* script : {u"x = 2;", u"x++;", u"x += 1;", u"x = 'text';", u"delete x;"}) {
        run(u"x = 1");
        DeathListener listener;
        Value(global(u"x")->asObject(ctx(), nullptr))->addListener(&listener, 0);
        run(script);
        EXPECT_EQ(listener.deaths, 1) << support::ascii(std::u16string_view(script));
    }
}

TEST_F(Lifetime, RemovedListenerHearsNothing) {
    DeathListener listener;
    machine->addListener(&listener, 0);
    machine->removeListener(&listener);
    machine.reset();
    EXPECT_EQ(listener.deaths, 0);
}

TEST_F(Lifetime, MachineReleasesWhatItsGlobalsHold) {
    const Value host(new JSObject());
    setGlobal(u"a", host.get());
    setGlobal(u"b", host.get());
    run(u"c = [host]; c[1] = a");
    EXPECT_EQ(host->refCount(), 3);
    machine.reset();
    EXPECT_EQ(host->refCount(), 0);
}

// Quirk: references are counted and nothing looks for cycles, so objects that hold one another stay for good.
TEST_F(Lifetime, ObjectsThatHoldOneAnotherOutliveTheirMachine) {
    const support::LeakOfACycle leak;
    const Value host = plainObject();
    setGlobal(u"host", host.get());
    run(u"a = new Object(); b = new Object(); a.other = b; b.other = a; b.guest = host; a = 0; b = 0; host = "
        u"0");
    EXPECT_EQ(host->refCount(), 1) << "held by the cycle and by the test";
    machine.reset();
    EXPECT_EQ(host->refCount(), 1);
}

TEST_F(Lifetime, ValuesOutliveTheirMachine) {
    const Value text = evaluate(u"'some' + ' text'");
    const Value array = evaluate(u"[1, 'two', [3]]");
    const Value value = evaluate(u"2.5");
    const Value made = function(u"return 1;");
    run(u"o = new Object(); o.deep = [1, 2]");
    const Value object(global(u"o")->asObject(ctx(), nullptr));
    machine.reset();
    const Owned<JSKernel> other(new JSKernel());
    EXPECT_EQ(support::asString(text.get(), other.get()), "some text");
    EXPECT_EQ(support::asString(value.get(), other.get()), "2.5");
    EXPECT_EQ(array->getLength(nullptr), 3);
    EXPECT_EQ(support::asString(array.get(), other.get()), "1,two,3") << "in another machine's context";
    EXPECT_EQ(object->memberCount(other.get(), nullptr), 1);
    EXPECT_EQ(made->valueType(other.get(), nullptr), JSValueType::function);
    EXPECT_EQ(describe(Value(made->call(nullptr, other.get(), nullptr)).get(), other.get()), "number 1");
    EXPECT_EQ(array->refCount(), 0);
}

TEST_F(Lifetime, ReferenceToAGlobalHoldsTheMachine) {
    run(u"x = 5");
    Value reference = evaluate(u"x");
    JSKernel* const raw = machine.get();
    EXPECT_EQ(raw->refCount(), 1);
    machine.reset();
    EXPECT_EQ(support::describe(reference.get(), raw), "number 5");
    EXPECT_EQ(raw->refCount(), 0);
    reference.reset();
}

// ---- Side by side ----

TEST_F(Lifetime, MachinesHaveGlobalsOfTheirOwn) {
    const auto otherSaid = std::make_shared<support::Transcript>();
    Owned<support::RecordingMachine> other(new support::RecordingMachine(otherSaid));
    const auto runOther = [&](const char16_t* script) {
        return describe(Value(other->evaluateText(BString(script), nullptr)).get(), other.get());
    };
    run(u"x = 1; t = true; t.shared = 1");
    runOther(u"x = 2; console.println(x); (void 0).x");
    EXPECT_EQ(run(u"x"), "number 1");
    EXPECT_EQ(runOther(u"x"), "number 2");
    EXPECT_EQ(runOther(u"t = true; typeof t.shared"), "string undefined") << "constructors are not shared";
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(otherSaid->takePrinted(), "2");
    EXPECT_EQ(otherSaid->takeMessages(), "wrong object");
    run(u"return 1;");
    EXPECT_FALSE(other->isStopped());
    machine->setCompletion(JSCompletion::normal);
}

// Each thread has a machine of its own; what they share is inside the engine. The scripts use the same names
// in scopes and at the root, and make up new names all the time.
TEST_F(Lifetime, MachinesRunSideBySideOnSeveralThreads) {
    const BString script(
        u"f = Function('n', 'var v = n; w = v + 1; return g(n);'); g = Function('return v * 100 + w;');"
        u"o = new Object(); s = 0; v = 7;"
        u"for (i = 0; i < 50; i++) { o['name' + i] = f(i); s += o['name' + i]; if (i % 2) delete o['name' + "
        u"i]; }"
        u"a = [3, 1, 2]; a.sort(); k = 'x'.toString; re = /b+/; s + a.join('') + v + k() + o.length + "
        u"re.test('abb')");
    constexpr const char* kExpected = "string 1237751237x25true";
    const auto work = [&script](std::string& wrong) {
        for (int round = 0; round < 20 && wrong.empty(); ++round) {
            const Owned<JSKernel> other(new JSKernel());
            const std::string result =
                describe(Value(other->evaluateText(script, nullptr)).get(), other.get());
            if (result != kExpected) wrong = result;
        }
    };
    std::string wrong[4];
    {
        std::vector<std::thread> threads;
        for (std::string& mine : wrong) threads.emplace_back(work, std::ref(mine));
        for (std::thread& thread : threads) thread.join();
    }
    for (const std::string& mine : wrong) EXPECT_EQ(mine, "");
}

TEST_F(Lifetime, ValueOfOneMachineCanBeAGlobalOfAnother) {
    Owned<JSKernel> other(new JSKernel());
    const Value array = evaluate(u"[1, 2]");
    {
        const Value stored(other->setMember(BString(u"guest"), array.get(), other.get(), nullptr));
        EXPECT_EQ(describe(Value(other->evaluateText(BString(u"guest[1] + 1"), nullptr)).get(), other.get()),
                  "number 3");
    }
    other.reset();
    EXPECT_EQ(array->refCount(), 0);
}

// ---- Through the factory ----

TEST(FactoryLifetime, TwoMachinesAreTwoWorlds) {
    quorvelinfactory* factory = quorvelinfactory::create();
    ASSERT_NE(factory, nullptr);
    const BGuid& id = identityOf(ClassId::JSKernel).guid;
    auto* first = static_cast<JSKernel*>(factory->createInstance(id, 0));
    auto* second = static_cast<JSKernel*>(factory->createInstance(id, 0));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(factory->refCount(), 2);
    {
        const Value one(first->evaluateText(BString(u"x = 1"), nullptr));
        EXPECT_FALSE(second->hasMember(BString(u"x"), second, nullptr));
    }
    first->release();
    EXPECT_EQ(factory->refCount(), 1);
    second->release();
    EXPECT_EQ(factory->refCount(), 0);
    EXPECT_TRUE(factory->release());
}

TEST(FactoryLifetime, FactoryOutlivesItsMachines) {
    BClassFactory* factory = moduleFactory();
    ASSERT_NE(factory, nullptr);
    auto* kernel = static_cast<JSKernel*>(factory->createInstance(identityOf(ClassId::JSKernel).guid, 0));
    ASSERT_NE(kernel, nullptr);
    EXPECT_FALSE(factory->release()) << "the machine still holds it";
    EXPECT_EQ(moduleState().factory, factory);
    {
        const Value value(kernel->evaluateText(BString(u"1 + 1"), nullptr));
        EXPECT_EQ(support::describe(value.get(), kernel), "number 2");
    }
    EXPECT_TRUE(kernel->release());
    EXPECT_EQ(moduleState().factory, nullptr) << "the last machine took the factory along";
}

}  // namespace
}  // namespace quorvelin
