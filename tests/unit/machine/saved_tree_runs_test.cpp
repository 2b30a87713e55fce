// Saved trees that are run: what only a loaded tree can hold.
#include <gtest/gtest.h>

#include <initializer_list>

#include "foundation/stream.h"
#include "frontend/nodes.h"
#include "frontend/token.h"
#include "support/script_machine.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::textOf;

using Node = Owned<JSNode>;

// The first statement of a text.
Node statement(std::u16string_view text) {
    const Node root = support::parse(text);
    return Node::share(const_cast<JSNode*>(support::firstStatement(root.get())));
}

Node program(std::initializer_list<JSNode*> statements) {
    Owned<JSStatementListNode> root(new JSStatementListNode());
    for (JSNode* node : statements) root->append(node);
    return Node(root.take());
}

// An array literal with a hole between two values.
Node arrayWithHole() {
    Owned<JSArrayNode> array(new JSArrayNode());
    array->append(statement(u"1").take());
    array->append(nullptr);
    array->append(statement(u"3").take());
    return Node(array.take());
}

Node assignment(const char16_t* name, const char16_t* op, Node value) {
    return Node(new JSAssignNode(0, 0, Name(op), statement(name).take(), value.take()));
}

class SavedTreeRuns : public support::ScriptTest {
  protected:
    // Saves the tree, and runs the stream of its bytes.
    std::string runTree(const Node& root) {
        const std::vector<uint8_t> bytes = support::saved(root.get());
        const BString units = textOf(std::u16string(bytes.begin(), bytes.end()));
        BStringInputStream stream(&units);
        return describe(Value(machine->evaluateStream(&stream, nullptr)).get());
    }
    std::string runStatements(std::initializer_list<JSNode*> statements) {
        return runTree(program(statements));
    }

    // for (name in collection) body
    static JSNode* forIn(const char16_t* name, std::u16string_view collection, std::u16string_view body) {
        return new JSForInNode(0, 0, Name(name), statement(collection).take(),
                               body.empty() ? nullptr : statement(body).take());
    }
};

TEST_F(SavedTreeRuns, RunAsTheTextTheyWereMadeFrom) {
    const struct {
        std::u16string_view script;
        const char* result;
    } rows[] = {
        {u"1 + 2 * 3", "number 7"},
        {u"", "null"},
        {u"s = 0; for (i = 0; i < 4; i++) { if (i == 2) continue; s += i; } s", "number 4"},
        {u"f = Function('a', 'return a * 2;'); f(21)", "number 42"},
        {u"switch ('b') { case 'a': r = 1; break; case 'b': r = 2; default: r = r * 10; } r", "number 20"},
        {u"o = new Object(); o.x = [1, 'two']; with (o) x[1]", "string two"},
        {u"var a = 1, b; typeof b + a", "string undefined1"},
        {u"i = 5; do i--; while (i > 2); while (i < 9) i++; i", "number 9"},
        {u"'caf\u00e9' + \"\" + 0x10 + .5 + 0 + true + null", "string caf\\u00E9160.50truenull"}};
    for (const auto& row : rows) {
        EXPECT_EQ(runTree(support::parse(row.script)), row.result) << support::ascii(row.script);
        run(u"delete o; r = 1");
    }
}

TEST_F(SavedTreeRuns, PositionsAreNotSaved) {
    EXPECT_EQ(runTree(support::parse(u"\n\n  (void 0).x")), "null");
    EXPECT_EQ(messagesWithPositions(), "0:0 wrong object");
}

// ---- for in ----

// Quirk: the variable gets the member itself, not its name or position.
TEST_F(SavedTreeRuns, ForInGivesTheElementsToItsVariable) {
    run(u"s = ''; a = ['x', 'y', 'z']");
    EXPECT_EQ(runStatements({forIn(u"e", u"a", u"s += e + ';'")}), "null");
    EXPECT_EQ(globalText(u"s"), "string x;y;z;");
    EXPECT_EQ(globalText(u"e"), "string z");
}

TEST_F(SavedTreeRuns, ForInWalksTheMembersOfAnObjectInOrder) {
    run(u"s = ''; o = new Object(); o.first = 1; o.second = 'two'; o[3] = 3");
    runStatements({forIn(u"e", u"o", u"s += typeof e + ';'")});
    EXPECT_EQ(globalText(u"s"), "string number;string;undefined;number;");
}

TEST_F(SavedTreeRuns, ForInShowsTheMembersBehindAnInstance) {
    run(u"n = 0; a = [1]; p = a.prototype; p.shared = 5");
    runStatements({forIn(u"e", u"a", u"n = n * 10 + e")});
    EXPECT_EQ(globalText(u"n"), "number 15") << "own members first";
    run(u"delete p.shared");
}

TEST_F(SavedTreeRuns, ForInOverWhatHasNoMembersSkipsItsBody) {
    run(u"n = 0");
    for (const char16_t* collection : {u"[]", u"5", u"undeclared", u"new Object()", u"null"}) {
        EXPECT_EQ(runStatements({forIn(u"e", collection, u"n = 1")}), "null");
    }
    EXPECT_EQ(runStatements({forIn(u"e", u"void 0", u"n = 1")}), "null");
    EXPECT_EQ(globalText(u"n"), "number 0");
    EXPECT_EQ(messages(), "");
}

TEST_F(SavedTreeRuns, ForInTakesBreakAndContinue) {
    run(u"s = 0; a = [1, 2, 3, 4]");
    runStatements({forIn(u"e", u"a", u"{ if (e == 2) continue; if (e == 4) break; s += e; }")});
    EXPECT_EQ(globalText(u"s"), "number 4");
    EXPECT_EQ(machine->getCompletion(), JSCompletion::normal);
}

TEST_F(SavedTreeRuns, ForInEndsAtAJumpWithALabelWhichStaysPending) {
    run(u"n = 0; a = [1, 2]");
    runStatements({forIn(u"e", u"a", u"{ n++; continue out; }")});
    EXPECT_EQ(machine->getCompletion(), JSCompletion::continueLoop);
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(globalText(u"n"), "number 1");
}

TEST_F(SavedTreeRuns, ForInAsksForTheNumberOfMembersAtEachTurn) {
    run(u"a = [1, 2, 3]; n = 0");
    runStatements({forIn(u"e", u"a", u"{ n++; a.length = 2; }")});
    EXPECT_EQ(globalText(u"n"), "number 2");
    run(u"a = [1]; n = 0");
    runStatements({forIn(u"e", u"a", u"{ n++; if (n < 5) a[n] = n; }")});
    EXPECT_EQ(globalText(u"n"), "number 5");
}

TEST_F(SavedTreeRuns, ForInWithoutABodyRuns) {
    run(u"a = [1, 2]");
    EXPECT_EQ(runStatements({forIn(u"e", u"a", {})}), "null");
    EXPECT_EQ(globalText(u"e"), "number 2");
}

// ---- Holes in lists ----

// Quirk: an entry without a node refuses the whole run without a word.
TEST_F(SavedTreeRuns, ArrayWithAHoleRefusesTheWholeRunSilently) {
    EXPECT_EQ(runStatements({statement(u"early = 1").take(), arrayWithHole().take()}), "null");
    EXPECT_FALSE(machine->hasMember(BString(u"early"), ctx(), nullptr));
    EXPECT_EQ(messages(), "");
}

TEST_F(SavedTreeRuns, ArgumentsWithAHoleRefuseTheRunToo) {
    Owned<JSArgumentsNode> arguments(new JSArgumentsNode());
    arguments->append(nullptr);
    EXPECT_EQ(runStatements({statement(u"var late").take(),
                             new JSCallNode(0, 0, statement(u"parseInt").take(), arguments.take())}),
              "null");
    EXPECT_EQ(messages(), "");
    EXPECT_TRUE(machine->hasMember(BString(u"late"), ctx(), nullptr))
        << "what stood in front had been declared";
}

// Quirk: the subject of a switch and the object of a with are not walked.
TEST_F(SavedTreeRuns, HolesWhereNobodyLooksAreRunAndLeaveAnEmptyEntry) {
    EXPECT_EQ(runStatements({new JSWithNode(0, 0, arrayWithHole().take(), statement(u"length").take())}),
              "number 3");
    EXPECT_EQ(runStatements({new JSWithNode(0, 0, arrayWithHole().take(), statement(u"toString()").take())}),
              "string [object Array]");
    run(u"r = 0");
    Owned<JSSwitchNode> node(new JSSwitchNode(0, 0, arrayWithHole().take()));
    node->appendCase(statement(u"'1,undefined,3'").take());
    node->cases.last->statements = statement(u"r = 1");
    runStatements({node.take()});
    EXPECT_EQ(globalText(u"r"), "number 1");
}

TEST_F(SavedTreeRuns, HoleInAFunctionsBodyRefusesTheCall) {
    Owned<JSFunctionNode> node(new JSFunctionNode(0, 0, Name(u"f"), nullptr, arrayWithHole().take()));
    const Value made(machine->makeFunction(node.get(), nullptr));
    EXPECT_FALSE(Value(made->call(nullptr, ctx(), nullptr)));
    EXPECT_EQ(messages(), "can't init context");
}

TEST_F(SavedTreeRuns, ListOfStatementsMayHaveHoles) {
    EXPECT_EQ(runStatements({nullptr, statement(u"5").take(), nullptr}), "number 5")
        << "the last that is there";
}

// ---- Labels, switches, operators ----

TEST_F(SavedTreeRuns, LabelLosesItsStatement) {
    const Node root = support::parse(u"n = 1; l: n = 2; n");
    EXPECT_EQ(runTree(root), "number 1");
    EXPECT_EQ(runStatements({new JSLabelNode(0, 0, Name(u"l"), nullptr)}), "null");
}

TEST_F(SavedTreeRuns, SwitchAndWithWithoutTheirExpressionAreRefused) {
    EXPECT_EQ(runStatements({statement(u"a = 1").take(), new JSSwitchNode(0, 0, nullptr)}), "null");
    EXPECT_EQ(
        runStatements({statement(u"a = 1").take(), new JSWithNode(0, 0, nullptr, statement(u"1").take())}),
        "null");
    EXPECT_FALSE(machine->hasMember(BString(u"a"), ctx(), nullptr));
    EXPECT_EQ(messages(), "");
}

TEST_F(SavedTreeRuns, OperatorsThatNoTextReaches) {
    run(u"x = 8");
    EXPECT_EQ(
        runStatements({assignment(u"x", u">>>=", statement(u"1")).take(), statement(u"typeof x").take()}),
        "string undefined")
        << "an operator that is not in the table stores undefined";
    for (const auto& [op, result] : {std::pair<const char16_t*, const char*>(u"&=", "number 4"),
                                     {u"|=", "number 14"},
                                     {u"^=", "number 10"},
                                     {u"<<=", "number 768"},
                                     {u">>=", "number 0"}}) {
        run(u"y = 12");
        EXPECT_EQ(runStatements({assignment(u"y", op, statement(u"6")).take(), statement(u"y").take()}),
                  result);
    }
    EXPECT_EQ(
        runStatements({new JSBinaryNode(0, 0, Name(u"<=>"), statement(u"1").take(), statement(u"1").take())}),
        "null");
    EXPECT_EQ(runStatements(
                  {new JSUnaryNode(0, 0, Name(u"not"), statement(u"z = 1").take()), statement(u"z").take()}),
              "number 1")
        << "the operand is evaluated all the same";
}

TEST_F(SavedTreeRuns, UnknownOperatorCanBeTakenOver) {
    run(u"o = new Object(); o['operator$<=>'] = Function('return 9;')");
    EXPECT_EQ(
        runStatements({new JSBinaryNode(0, 0, Name(u"<=>"), statement(u"o").take(), statement(u"1").take())}),
        "number 9");
}

TEST_F(SavedTreeRuns, LiteralOfAnUnknownKindIsUndefined) {
    EXPECT_EQ(runStatements({new JSLiteralNode(0, 0, 99, BString(u"text"))}), "null");
    EXPECT_EQ(runStatements({new JSLiteralNode(0, 0, JSTT_INT, BString(u"12x"))}), "number NaN");
    EXPECT_EQ(runStatements({new JSLiteralNode(0, 0, JSTT_BOOL, BString(u"maybe"))}), "boolean false");
}

// The digits that were read count, as in arithmetic, though the whole is no number.
TEST_F(SavedTreeRuns, LengthOfAnArrayIsTakenAsANumberLikeAnyOther) {
    Owned<JSArgumentsNode> length(new JSArgumentsNode());
    length->append(new JSLiteralNode(0, 0, JSTT_INT, BString(u"3x")));
    Node call(new JSCallNode(0, 0, statement(u"Array").take(), length.take()));
    runStatements({assignment(u"a", u"=", std::move(call)).take()});
    EXPECT_EQ(run(u"a.length"), "number 3");
}

TEST_F(SavedTreeRuns, AbsentChildrenAreUndefined) {
    EXPECT_EQ(runStatements({new JSIfNode(0, 0, nullptr, statement(u"1").take(), statement(u"2").take())}),
              "null");
    EXPECT_EQ(runStatements({new JSBinaryNode(0, 0, Name(u"+"), nullptr, statement(u"2").take())}), "null");
    EXPECT_EQ(
        runStatements({new JSConditionalNode(0, 0, nullptr, statement(u"1").take(), statement(u"2").take())}),
        "number 2");
    EXPECT_EQ(runStatements({new JSUnaryNode(0, 0, Name(u"typeof"), nullptr)}), "string null");
    EXPECT_EQ(runStatements({new JSUnaryNode(0, 0, Name(u"new"), nullptr)}), "undefined undefined");
    EXPECT_EQ(runStatements({new JSReturnNode(0, 0, nullptr)}), "null");
    machine->setCompletion(JSCompletion::normal);
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(runStatements({new JSMemberNode(0, 0, nullptr, Name(u"x"))}), "null");
    EXPECT_EQ(runStatements({new JSMemberCallNode(0, 0, nullptr, nullptr, Name(u"x"))}), "null");
    EXPECT_EQ(runStatements({new JSCallNode(0, 0, nullptr, nullptr)}), "null");
    EXPECT_EQ(runStatements({new JSIndexNode(0, 0, nullptr, nullptr)}), "null");
    EXPECT_EQ(messages(), "wrong object; wrong object; wrong object; wrong object");
    EXPECT_EQ(runStatements({new JSPostfixNode(0, 0, Name(u"++"), nullptr)}), "null");
    EXPECT_EQ(runStatements({new JSAssignNode(0, 0, Name(u"="), nullptr, nullptr)}), "null");
    EXPECT_EQ(messages(), "wrong lvalue; wrong lvalue");
}

TEST_F(SavedTreeRuns, CallWithoutAListOfArgumentsPassesNone) {
    run(u"a = [1, 2]");
    EXPECT_EQ(runStatements({new JSMemberCallNode(0, 0, statement(u"a").take(), nullptr, Name(u"join"))}),
              "string 1,2")
        << "the separator is the default one, which no text can ask for";
    EXPECT_EQ(runStatements({new JSCallNode(0, 0, statement(u"Boolean").take(), nullptr)}), "boolean false");
}

TEST_F(SavedTreeRuns, LoadedFunctionIsAStatementThatBindsNothing) {
    EXPECT_EQ(runTree(support::parse(u"function f(a) { return a; } f(1)")), "null");
}

// Stops the walk when it has asked for long enough.
class ImpatientContext final : public JSContext {
  public:
    explicit ImpatientContext(JSContext* parent) : JSContext(parent) {}
    bool isStopped() override { return --patience < 0 || JSContext::isStopped(); }

  private:
    int patience = 2000;
};

// Whatever bytes stand in a stream, running it does no harm. A loop whose condition was cut off is endless.
TEST_F(SavedTreeRuns, CutOffStreamsDoNoHarm) {
    const std::vector<uint8_t> bytes = support::saved(
        support::parse(u"s = 0; for (i = 0; i < 3; i++) { switch (i) { case 1: s += i; } } f = Function('a', "
                       u"'return a;'); with (f) s = f([1, 'x']); o = new Object(); o.x.y = -s; delete o")
            .get());
    for (size_t length = 1; length < bytes.size(); ++length) {
        const BString units =
            textOf(std::u16string(bytes.begin(), bytes.begin() + static_cast<long>(length)));
        BStringInputStream stream(&units);
        const Owned<ImpatientContext> context(new ImpatientContext(ctx()));
        const Value value(context->evaluateStream(&stream, nullptr));
        machine->setCompletion(JSCompletion::normal);
    }
    messages();
}

}  // namespace
}  // namespace quorvelin
