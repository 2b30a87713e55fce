// The machine as a host uses it: running texts and streams, globals, completion, position, the console.
#include <gtest/gtest.h>

#include <vector>

#include "foundation/stream.h"
#include "frontend/nodes.h"
#include "support/script_machine.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::textOf;

class Machine : public support::ScriptTest {
  protected:
    std::string runStream(const std::u16string& units) {
        const BString text = textOf(units);
        BStringInputStream stream(&text);
        return describe(Value(machine->evaluateStream(&stream, nullptr)).get());
    }
};

// ---- Runs ----

TEST_F(Machine, EmptyTextGivesNothing) {
    EXPECT_EQ(run(u""), "null");
    EXPECT_EQ(run(u"   \n"), "null");
}

TEST_F(Machine, UnfinishedExpressionGivesNothingAndChangesNothing) {
    const int32_t before = machine->getLength(nullptr);
    EXPECT_EQ(run(u"1+"), "null");
    EXPECT_EQ(machine->getLength(nullptr), before);
}

TEST_F(Machine, SyntaxErrorGivesNothingAndReportsAtItsPosition) {
    EXPECT_EQ(run(u"x = 1;\n)"), "null");
    EXPECT_FALSE(machine->hasMember(BString(u"x"), ctx(), nullptr));
    ASSERT_EQ(transcript->messages.size(), 1u);
    const auto message = transcript->messages[0];
    EXPECT_EQ(message.text.find("Error(Ln " + std::to_string(message.line) + ", Col " +
                                std::to_string(message.column) + "): "),
              0u)
        << message.text;
    messages();
}

TEST_F(Machine, RunGoesOnBehindAMessage) {
    EXPECT_EQ(run(u"undeclared.x; (void 0).y; 5"), "number 5");
    EXPECT_EQ(messages(), "wrong object");
    EXPECT_EQ(machine->getCompletion(), JSCompletion::normal);
}

TEST_F(Machine, RunsShareTheGlobals) {
    run(u"x = 1; var y = 2;");
    EXPECT_EQ(run(u"x + y"), "number 3");
}

TEST_F(Machine, TopLevelReturnGivesNothingAndLeavesTheMachineStopped) {
    EXPECT_EQ(run(u"return 1;"), "null");
    EXPECT_EQ(machine->getCompletion(), JSCompletion::returned);
    EXPECT_TRUE(machine->isStopped());
    EXPECT_EQ(run(u"x = 5; 6"), "null");
    EXPECT_FALSE(machine->hasMember(BString(u"x"), ctx(), nullptr));
    EXPECT_EQ(machine->setCompletion(JSCompletion::normal), JSCompletion::normal);
    EXPECT_EQ(run(u"x = 5; 6"), "number 6");
}

TEST_F(Machine, PositionIsZeroAtFirstAndPutBackAfterARun) {
    EXPECT_EQ(machine->position(), "0:0");
    run(u"a = 1;\n\n b = 2");
    EXPECT_EQ(machine->position(), "0:0");
    machine->setPosition(3, 4);
    run(u"a");
    EXPECT_EQ(machine->position(), "3:4");
}

TEST_F(Machine, TextMayHoldNothingButItsOwnCopyIsRun) {
    BString text(u"t = 5; t + 1");
    const Value value(machine->evaluateText(text, nullptr));
    text = BString(u"changed");
    EXPECT_EQ(describe(value.get()), "number 6");
}

TEST_F(Machine, EngineMachineDropsMessages) {
    const Owned<JSKernel> plain(new JSKernel());
    EXPECT_EQ(describe(Value(plain->evaluateText(BString(u"(void 0).x; 5"), nullptr)).get(), plain.get()),
              "number 5");
    EXPECT_FALSE(Value(plain->evaluateText(BString(u")"), nullptr)));
    EXPECT_EQ(plain->getCompletion(), JSCompletion::normal);
}

// ---- Streams ----

TEST_F(Machine, StreamOfTextIsRunFromItsFirstCharacter) {
    EXPECT_EQ(runStream(u"7"), "number 7");
    EXPECT_EQ(runStream(u"abc = 8; abc"), "number 8");
    EXPECT_EQ(runStream(u""), "null");
}

TEST_F(Machine, StreamThatBeginsWithOneIsNeverParsed) {
    EXPECT_EQ(runStream(u"\u0001x = 5"), "null");
    EXPECT_EQ(runStream(u"\u0001)"), "null");
    EXPECT_EQ(runStream(u"\u0001"), "null");
    EXPECT_EQ(messages(), "");
    EXPECT_FALSE(machine->hasMember(BString(u"x"), ctx(), nullptr));
}

TEST_F(Machine, StreamIsBorrowed) {
    struct Stream final : BStringInputStream {
        Stream(const BString* text, int& deaths) : BStringInputStream(text), deaths_(deaths) {}
        ~Stream() override { ++deaths_; }
        int& deaths_;
    };
    int deaths = 0;
    const BString text(u"1");
    {
        Stream stream(&text, deaths);
        const Value value(machine->evaluateStream(&stream, nullptr));
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

// ---- Globals ----

TEST_F(Machine, HostReadsAndWritesGlobals) {
    const BString name(u"fromHost");
    EXPECT_FALSE(machine->hasMember(name, ctx(), nullptr));
    EXPECT_EQ(machine->memberType(name, ctx(), nullptr), JSValueType::undefined);
    const Value stored(machine->setMember(name, number(4).get(), ctx(), nullptr));
    EXPECT_EQ(run(u"fromHost + 1"), "number 5");
    run(u"fromHost = 'changed'");
    EXPECT_EQ(machine->memberType(name, ctx(), nullptr), JSValueType::string);
    EXPECT_EQ(globalText(u"fromHost"), "string changed");
    EXPECT_TRUE(machine->deleteMember(name, ctx(), nullptr));
    EXPECT_EQ(run(u"typeof fromHost"), "string undefined");
}

TEST_F(Machine, HostCallsGlobalFunctions) {
    run(u"add = Function('a', 'b', 'return a + b;')");
    const Value arguments = list({number(2).get(), string(u"!").get()});
    EXPECT_EQ(describe(Value(machine->callMember(BString(u"add"), arguments.get(), ctx(), nullptr)).get()),
              "string 2!");
    const Value one = list({string(u"2x").get()});
    EXPECT_EQ(describe(Value(machine->callMember(BString(u"parseInt"), one.get(), ctx(), nullptr)).get()),
              "number 2");
    EXPECT_FALSE(Value(machine->callMember(BString(u"nothing"), arguments.get(), ctx(), nullptr)));
}

TEST_F(Machine, HostCallsMethodsOfScriptObjects) {
    run(u"o = new Object(); o.v = 3; o.m = Function('n', 'return this.v * n;')");
    const Value arguments = list({number(5).get()});
    EXPECT_EQ(describe(Value(global(u"o")->callMember(BString(u"m"), arguments.get(), ctx(), nullptr)).get()),
              "number 15");
}

// ---- The console ----

TEST_F(Machine, EachReadOfConsoleIsANewObject) {
    const BString name(u"console");
    EXPECT_TRUE(machine->hasMember(name, ctx(), nullptr));
    EXPECT_EQ(machine->memberType(name, ctx(), nullptr), JSValueType::object);
    const Value first = global(u"console");
    const Value second = global(u"console");
    ASSERT_TRUE(first);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(run(u"console.x = 1; typeof console.x"), "string undefined");
}

TEST_F(Machine, AssigningToConsoleIsAcceptedAndHasNoEffect) {
    EXPECT_EQ(run(u"console = 5"), "null");
    EXPECT_EQ(run(u"typeof console"), "string object");
    run(u"console.println('still here')");
    EXPECT_EQ(printed(), "still here");
    EXPECT_EQ(run(u"delete console; typeof console"), "string object");
}

TEST_F(Machine, ConsoleIsAMemberOfAMachineOnly) {
    const Owned<JSGlobalContext> bare(new JSGlobalContext());
    EXPECT_FALSE(bare->hasMember(BString(u"console"), bare.get(), nullptr));
    EXPECT_EQ(describe(Value(bare->evaluateText(BString(u"typeof console"), nullptr)).get(), bare.get()),
              "string undefined");
    EXPECT_EQ(describe(Value(bare->evaluateText(BString(u"1 + 2"), nullptr)).get(), bare.get()), "number 3");
}

// ---- Identity ----

TEST_F(Machine, AnswersToItsClassesInOrder) {
    struct Visitor final : IBQueryVisitor {
        void enter(const stype_info& identity, void*) override {
            tried += std::string(identity.name()) + " ";
        }
        void leave() override {}
        std::string tried;
    };
    Visitor visitor;
    EXPECT_EQ(machine->query(identityOf(ClassId::IBHibernatable), &visitor), nullptr);
    EXPECT_EQ(
        visitor.tried,
        "JSKernel IQuorvelin BSmartObject IBSmartObject IBRemoteRemovable IBTransportable BNotifySender ");
    for (const ClassId id : {ClassId::JSKernel, ClassId::IQuorvelin, ClassId::BSmartObject,
                             ClassId::IBSmartObject, ClassId::IBRemoteRemovable, ClassId::IBTransportable}) {
        EXPECT_EQ(machine->query(identityOf(id), nullptr), machine.get());
    }
    EXPECT_EQ(machine->query(identityOf(ClassId::BNotifySender), nullptr),
              static_cast<BNotifySender*>(machine.get()));
    EXPECT_STREQ(machine->getClassId().name(), "JSKernel");
}

// ---- Functions of the host ----

class FunctionOfTheHost : public Machine {
  protected:
    static Owned<JSFunctionNode> functionNode(std::u16string_view text) {
        const Owned<JSNode> root = support::parse(text);
        auto* first = const_cast<JSNode*>(support::firstStatement(root.get()));
        EXPECT_EQ(first->kind, kFunctionKind);
        return Owned<JSFunctionNode>::share(static_cast<JSFunctionNode*>(first));
    }
};

TEST_F(FunctionOfTheHost, HoldsTheTreeAndGoesByItsName) {
    const Owned<JSFunctionNode> node = functionNode(u"function twice(a) { return a * 2; }");
    const int32_t before = node->refCount();
    {
        const Value made(machine->makeFunctionPlain(node.get(), nullptr));
        ASSERT_TRUE(made);
        EXPECT_EQ(node->refCount(), before + 1);
        EXPECT_EQ(support::memberName(made.get(), ctx()), "twice");
        const Value arguments = list({number(21).get()});
        EXPECT_EQ(describe(Value(made->call(arguments.get(), ctx(), nullptr)).get()), "number 42");
    }
    EXPECT_EQ(node->refCount(), before);
}

TEST_F(FunctionOfTheHost, HasTheConstructorOfFunctionsBehindIt) {
    const Owned<JSFunctionNode> node = functionNode(u"function f() { return 1; }");
    const Value plain(machine->makeFunctionPlain(node.get(), nullptr));
    const Value other(machine->makeFunction(node.get(), nullptr));
    const BString prototype(u"prototype");
    const Value behind(plain->getMember(prototype, ctx(), nullptr));
    ASSERT_TRUE(behind);
    EXPECT_EQ(support::memberName(behind.get(), ctx()), "Function");
    EXPECT_FALSE(Value(other->getMember(prototype, ctx(), nullptr)));
    // Its constructor, reached through `prototype`, makes functions.
    const Value arguments = list({string(u"return 5;").get()});
    const Value made(plain->callMember(prototype, arguments.get(), ctx(), nullptr));
    EXPECT_EQ(describe(Value(made->call(nullptr, ctx(), nullptr)).get()), "number 5");
}

TEST_F(FunctionOfTheHost, CanBeAGlobal) {
    const Owned<JSFunctionNode> node = functionNode(u"function add(a, b) { return a + b; }");
    setGlobal(u"add", Value(machine->makeFunctionPlain(node.get(), nullptr)).get());
    EXPECT_EQ(run(u"add(2, 3)"), "number 5");
}

}  // namespace
}  // namespace quorvelin
