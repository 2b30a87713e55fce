// Statements: what is declared before a run, control flow, and what is left of a jump that nobody takes.
#include <gtest/gtest.h>

#include "support/script_machine.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

class Statements : public support::ScriptTest {
  protected:
    void expectAll(std::initializer_list<std::pair<const char16_t*, const char*>> rows) {
        for (const auto& [script, result] : rows) {
            EXPECT_EQ(run(script), result) << support::ascii(std::u16string_view(script));
        }
    }
    bool declared(const char16_t* name) { return machine->hasMember(BString(name), ctx(), nullptr); }
    // The completion that a run left behind, which is then cleared.
    JSCompletion takeCompletion() {
        const JSCompletion completion = machine->getCompletion();
        machine->setCompletion(JSCompletion::normal);
        return completion;
    }
};

// ---- Declaring ----

TEST_F(Statements, VariablesAreDeclaredBeforeTheRun) {
    EXPECT_EQ(run(u"typeof later; var later = 1;"), "null");
    EXPECT_EQ(run(u"if (0) { var inBranch = 1; } typeof inBranch"), "string undefined");
    EXPECT_TRUE(declared(u"inBranch"));
    EXPECT_EQ(run(u"for (;0;) { var inLoop; } while (0) { var inWhile; } do { var inDo; } while (0);"),
              "null");
    for (const char16_t* name : {u"inLoop", u"inWhile", u"inDo"}) EXPECT_TRUE(declared(name));
    EXPECT_EQ(run(u"switch (0) { case 1: var inCase; } with (0) { var inWith; }"), "null");
    for (const char16_t* name : {u"inCase", u"inWith"}) EXPECT_TRUE(declared(name));
}

TEST_F(Statements, VariablesAreDeclaredInTheOrderInWhichTheyAreMet) {
    run(u"var b, a = 1; if (0) { var d; } else { var c; }");
    for (const auto& [index, name] :
         {std::pair<int32_t, const char*>(0, "b"), {1, "a"}, {2, "d"}, {3, "c"}}) {
        const Value cell(machine->getItem(index, ctx(), nullptr));
        ASSERT_TRUE(cell);
        EXPECT_EQ(support::memberName(cell.get(), ctx()), name);
    }
}

TEST_F(Statements, VarGivesNothingAndLeavesAValueWithoutInitialiser) {
    EXPECT_EQ(run(u"var x = 5;"), "null");
    EXPECT_EQ(run(u"var x; x"), "number 5");
    EXPECT_EQ(run(u"var x = 6, y = x + 1; y"), "number 7");
    EXPECT_EQ(run(u"5; var z = 1;"), "null");
}

// Quirk: the statement behind a label is not walked.
TEST_F(Statements, VarBehindALabelIsNotDeclared) {
    EXPECT_EQ(run(u"l: { var hidden; }"), "null");
    EXPECT_FALSE(declared(u"hidden"));
    EXPECT_EQ(run(u"f = Function('l: { var made = 3; } return 0;'); f(); made"), "number 3")
        << "the assignment creates the name at the root";
    EXPECT_EQ(run(u"g = Function('{ var local = 3; } return 0;'); g(); typeof local"), "string undefined");
}

// Quirk: a function statement binds no name.
TEST_F(Statements, FunctionStatementBindsNothing) {
    EXPECT_EQ(run(u"function f() { return 1; } f();"), "null");
    EXPECT_EQ(messages(), "");
    EXPECT_FALSE(declared(u"f"));
}

TEST_F(Statements, SyntaxErrorDeclaresAndRunsNothing) {
    EXPECT_EQ(run(u"var early = 1; early = 2; )"), "null");
    EXPECT_FALSE(declared(u"early"));
    EXPECT_EQ(messages().substr(0, 9), "Error(Ln ");
}

// ---- Lists, if ----

TEST_F(Statements, ListGivesTheValueOfItsLastStatement) {
    expectAll({{u"1; 2; 3", "number 3"},
               {u"1; var x = 2;", "null"},
               {u"", "null"},
               {u";", "null"},
               {u"1; x = 5", "number 5"}});
}

TEST_F(Statements, MessageDoesNotEndTheList) {
    EXPECT_EQ(run(u"(void 0).x; 7"), "number 7");
    EXPECT_EQ(messages(), "wrong object");
}

TEST_F(Statements, IfGivesTheValueOfItsBranch) {
    expectAll({{u"if (1) 'yes'; else 'no';", "string yes"},
               {u"if (0) 'yes'; else 'no';", "string no"},
               {u"if (0) 'yes';", "null"},
               {u"if (undeclared) 'yes'; else 'no';", "string no"},
               {u"if (void 0) 'yes'; else 'no';", "string no"},
               {u"if (1) { 1; 2 }", "number 2"},
               {u"n = 0; if () n = 1; n", "number 0"}});
}

// ---- Loops ----

TEST_F(Statements, LoopsGiveNothing) {
    expectAll({{u"for (i = 0; i < 3; i++) i;", "null"},
               {u"i", "number 3"},
               {u"while (i > 0) i--;", "null"},
               {u"i", "number 0"},
               {u"do i++; while (i < 5);", "null"},
               {u"i", "number 5"},
               {u"do i++; while (0); i", "number 6"}});
}

TEST_F(Statements, UndefinedConditionEndsALoopSilently) {
    expectAll({{u"n = 0; while (undeclared) { n = 1; } n", "number 0"},
               {u"while (void 0) { n = 1; } n", "number 0"},
               {u"for (; undeclared == 1;) n = 1; n", "number 0"},
               {u"do n++; while (undeclared); n", "number 1"}});
    EXPECT_EQ(messages(), "");
}

TEST_F(Statements, ForWithoutPartsRunsUntilBreak) {
    EXPECT_EQ(run(u"n = 0; for (;;) { n++; if (n == 4) break; } n"), "number 4");
}

TEST_F(Statements, BreakAndContinueAreTakenByTheNearestLoop) {
    EXPECT_EQ(
        run(u"n = 0; for (i = 0; i < 3; i++) { for (j = 0; j < 3; j++) { if (j == 1) break; n++; } } n"),
        "number 3");
    EXPECT_EQ(run(u"n = 0; for (i = 0; i < 5; i++) { if (i == 2) continue; n += i; } n"), "number 8");
    EXPECT_EQ(run(u"n = 0; i = 0; while (i < 5) { i++; if (i == 2) continue; n += i; } n"), "number 13");
    EXPECT_EQ(run(u"n = 0; i = 0; do { i++; if (i == 2) continue; n += i; } while (i < 5); n"), "number 13");
    EXPECT_EQ(takeCompletion(), JSCompletion::normal);
}

// Quirk: a break or continue with a label never finds the loop that carries it.
TEST_F(Statements, BreakWithALabelIsTakenByNoLoopAndStaysPending) {
    EXPECT_EQ(run(u"n = 0; outer: while (1) { n = 1; break outer; } n = 2;"), "null");
    EXPECT_EQ(takeCompletion(), JSCompletion::breakLoop);
    EXPECT_EQ(run(u"n"), "number 1");
    EXPECT_EQ(run(u"outer: for (;;) { inner: for (;;) { break inner; } n = 3; } n = 4;"), "null");
    EXPECT_EQ(takeCompletion(), JSCompletion::breakLoop);
    EXPECT_EQ(run(u"n"), "number 1");
}

TEST_F(Statements, ContinueWithALabelIsTakenByNoLoopAndStaysPending) {
    EXPECT_EQ(run(u"i = 0; outer: while (i < 3) { i++; continue outer; } i = 9;"), "null");
    EXPECT_EQ(takeCompletion(), JSCompletion::continueLoop);
    EXPECT_EQ(run(u"i"), "number 1");
}

TEST_F(Statements, JumpWithALabelEndsAtTheFunctionThatMadeIt) {
    EXPECT_EQ(run(u"f = Function('l: while (1) { break l; } n = 5;'); n = 0; f(); n + 1"), "number 1");
    EXPECT_EQ(takeCompletion(), JSCompletion::normal);
}

TEST_F(Statements, PendingJumpRefusesEveryFurtherRun) {
    run(u"break;");
    EXPECT_EQ(run(u"x = 1; 5"), "null");
    EXPECT_EQ(machine->getCompletion(), JSCompletion::breakLoop);
    machine->setCompletion(JSCompletion::normal);
    EXPECT_FALSE(declared(u"x"));
    EXPECT_EQ(run(u"x = 1; 5"), "number 5");
}

TEST_F(Statements, JumpsOutsideALoopStayPending) {
    run(u"break;");
    EXPECT_EQ(takeCompletion(), JSCompletion::breakLoop);
    run(u"continue;");
    EXPECT_EQ(takeCompletion(), JSCompletion::continueLoop);
    EXPECT_EQ(run(u"return 5;"), "null");
    EXPECT_EQ(takeCompletion(), JSCompletion::returned);
}

TEST_F(Statements, LabelOfAnotherStatementGivesItsValue) {
    EXPECT_EQ(run(u"l: 5"), "number 5");
    EXPECT_EQ(run(u"l: { 1; 2 }"), "number 2");
}

TEST_F(Statements, UnlabelledBreakInALabelledLoopIsTaken) {
    EXPECT_EQ(run(u"n = 0; l: while (1) { n++; if (n == 3) break; } n"), "number 3");
    EXPECT_EQ(takeCompletion(), JSCompletion::normal);
}

// ---- with ----

// Quirk: the jump stays in the scope of the with.
TEST_F(Statements, BreakInWithDoesNotEndTheLoop) {
    EXPECT_EQ(
        run(u"o = new Object(); i = 0; after = 0; while (i < 3) { i++; with (o) { break; after = 1; } } i"),
        "number 3");
    EXPECT_EQ(run(u"after"), "number 0") << "but it skips the rest of the body of with";
    EXPECT_EQ(run(u"i = 0; while (i < 3) { i++; with (o) { continue; } after = 1; } after"), "number 1");
    EXPECT_EQ(takeCompletion(), JSCompletion::normal);
}

TEST_F(Statements, ReturnInWithReturnsFromTheFunction) {
    EXPECT_EQ(run(u"f = Function('o', 'with (o) { return x; } return 0;'); o = new Object(); o.x = 7; f(o)"),
              "number 7");
}

TEST_F(Statements, WithGivesTheValueOfItsBody) {
    EXPECT_EQ(run(u"o = new Object(); o.x = 7; with (o) x;"), "number 7");
}

TEST_F(Statements, WithOnNothingDoesNothing) {
    EXPECT_EQ(run(u"n = 0; with (void 0) { n = 1; } n"), "number 0");
    EXPECT_EQ(run(u"with (void 0) 5;"), "null");
}

// ---- switch ----

TEST_F(Statements, SwitchRunsFromTheMatchingCaseThroughTheFollowing) {
    run(u"f = Function('v', 'n = 0; switch (v) { case 1: n += 1; case 2: n += 10; break; case 3: n += 100; "
        u"default: n += 1000; } return n;')");
    expectAll(
        {{u"f(1)", "number 11"}, {u"f(2)", "number 10"}, {u"f(3)", "number 1100"}, {u"f(4)", "number 1000"}});
}

TEST_F(Statements, SwitchWithoutMatchAndDefaultRunsNothing) {
    EXPECT_EQ(run(u"n = 0; switch (5) { case 1: n = 1; case 2: n = 2; }"), "null");
    EXPECT_EQ(run(u"n"), "number 0");
    EXPECT_EQ(run(u"switch (5) { case 5: 'value' }"), "null");
}

TEST_F(Statements, DefaultInTheMiddleIsTakenLastAndFallsThrough) {
    EXPECT_EQ(run(u"n = 0; switch (9) { case 1: n += 1; default: n += 10; case 2: n += 100; } n"),
              "number 110");
    EXPECT_EQ(run(u"n = 0; switch (2) { case 1: n += 1; default: n += 10; case 2: n += 100; } n"),
              "number 100");
}

// Quirk: a number that is not finite, on either side, matches.
TEST_F(Statements, CaseWithANumberThatIsNotFiniteMatchesAnything) {
    EXPECT_EQ(run(u"n = 0; switch (1) { case 0/0: n = 1; } n"), "number 1");
    EXPECT_EQ(run(u"n = 0; switch ('x') { case 1e308 * 10: n = 1; } n"), "number 1");
    EXPECT_EQ(run(u"n = 0; switch (0/0) { case 7: n = 1; } n"), "number 1");
}

TEST_F(Statements, CaseComparesByTheTypeOfItsLabel) {
    expectAll({{u"n = 0; switch (1) { case '1': n = 1; } n", "number 1"},
               {u"n = 0; switch ('1') { case 1: n = 1; } n", "number 1"},
               {u"n = 0; switch ('text') { case 0: n = 1; } n", "number 1"},
               {u"n = 0; switch (5) { case true: n = 1; } n", "number 1"},
               {u"n = 0; switch ('') { case false: n = 1; } n", "number 1"},
               {u"n = 0; switch ([1, 2]) { case '1,2': n = 1; } n", "number 1"},
               {u"n = 0; switch (0.1 + 0.2) { case 0.3: n = 1; } n", "number 1"},
               {u"n = 0; switch (undeclared) { case 0: n = 1; } n", "number 1"},
               {u"n = 0; switch (1) { case undeclared: n = 1; case void 0: n = 2; } n", "number 0"}});
}

TEST_F(Statements, CaseWithAnObjectReportsWrongObjectAndEndsTheSwitch) {
    EXPECT_EQ(run(u"n = 0; o = new Object(); switch (1) { case o: n = 1; case 1: n = 2; } n"), "number 0");
    EXPECT_EQ(messages(), "wrong object");
    EXPECT_EQ(run(u"f = Function('return 1;'); switch (1) { case f: n = 1; default: n = 2; } n"), "number 0");
    EXPECT_EQ(messages(), "wrong object");
    EXPECT_EQ(run(u"switch (1) { case null: n = 1; } n"), "number 0");
    EXPECT_EQ(messages(), "wrong object");
}

// Quirk: a regular expression as a label always matches.
TEST_F(Statements, CaseWithARegularExpressionAlwaysMatches) {
    EXPECT_EQ(run(u"n = 0; switch ('abc') { case /nothing like it/: n = 1; break; default: n = 2; } n"),
              "number 1");
    EXPECT_EQ(run(u"n = 0; switch (new Object()) { case /x/: n = 1; } n"), "number 1");
}

TEST_F(Statements, SwitchOnNothingIsSkipped) {
    EXPECT_EQ(run(u"n = 0; switch (void 0) { default: n = 1; } n"), "number 0");
}

// The parser refuses a second default, so the switch is put together by hand.
class SecondDefault : public Statements {
  protected:
    static Owned<JSNode> statement(std::u16string_view text) {
        const Owned<JSNode> root = support::parse(text);
        return Owned<JSNode>::share(const_cast<JSNode*>(support::firstStatement(root.get())));
    }
    void appendCase(JSSwitchNode& node, std::u16string_view label, std::u16string_view body) {
        ASSERT_TRUE(node.appendCase(label.empty() ? nullptr : statement(label).take()));
        node.cases.last->statements = statement(body);
    }
    // switch (subject) { default: n += 1; case 2: n += 2; default: n += 3; }
    std::string runSwitch(std::u16string_view subject) {
        run(u"n = 0");
        const Owned<JSSwitchNode> node(new JSSwitchNode(1, 1, statement(subject).take()));
        appendCase(*node, {}, u"n += 1;");
        appendCase(*node, u"2", u"n += 2;");
        appendCase(*node, {}, u"n += 3;");
        EXPECT_EQ(describe(Value(machine->execute(node.get(), nullptr)).get()), "null");
        return globalText(u"n");
    }
};

TEST_F(SecondDefault, IsAnErrorWhenNoCaseInFrontOfItMatched) {
    EXPECT_EQ(runSwitch(u"1"), "number 0");
    EXPECT_EQ(messages(), "double default");
}

TEST_F(SecondDefault, GoesUnnoticedBehindTheCaseThatMatched) {
    EXPECT_EQ(runSwitch(u"2"), "number 5");
    EXPECT_EQ(messages(), "");
}

TEST_F(Statements, LabelsBehindTheMatchAreNotEvaluated) {
    EXPECT_EQ(run(u"n = 0; switch (1) { case 1: break; case (n = 5): 1; } n"), "number 0");
    EXPECT_EQ(run(u"n = 0; switch (1) { case (n = 5): 1; case 1: 2; } n"), "number 5");
}

TEST_F(Statements, ContinueInASwitchReachesTheLoop) {
    EXPECT_EQ(run(u"n = 0; for (i = 0; i < 4; i++) { switch (i) { case 1: continue; } n += i; } n"),
              "number 5");
    EXPECT_EQ(run(u"n = 0; for (i = 0; i < 4; i++) { switch (i) { case 1: break; } n += i; } n"), "number 6");
}

TEST_F(Statements, ReturnInASwitchReturnsFromTheFunction) {
    EXPECT_EQ(run(u"f = Function('v', 'switch (v) { case 1: return 11; default: return 12; } return 13;'); "
                  u"f(1) * 100 + f(2)"),
              "number 1112");
}

// ---- return ----

// Quirk: a number that is 0 is handed back as undefined.
TEST_F(Statements, ReturnOfZeroHandsBackUndefined) {
    run(u"f = Function('v', 'return v;')");
    expectAll({{u"typeof f(0)", "string null"},
               {u"typeof f(1e-20)", "string null"},
               {u"f(1)", "number 1"},
               {u"f('')", "string"},
               {u"f('0')", "string 0"},
               {u"f(false)", "boolean false"}});
    EXPECT_EQ(run(u"z = Function('return 0;'); typeof z()"), "string null");
    EXPECT_EQ(run(u"z() + 1"), "null");
}

TEST_F(Statements, ReturnWithoutValueEndsTheFunction) {
    EXPECT_EQ(run(u"n = 0; f = Function('n = 1; return; n = 2;'); f()"), "null");
    EXPECT_EQ(run(u"n"), "number 1");
}

TEST_F(Statements, ReturnHandsBackTheObjectAndNotTheVariable) {
    EXPECT_EQ(run(u"x = 1; f = Function('return x;'); x = f() + 1; x"), "number 2");
    const Value result = evaluate(u"f()");
    run(u"x = 'changed'");
    EXPECT_EQ(describe(result.get()), "number 2");
}

TEST_F(Statements, ReturnLeavesAllLoops) {
    EXPECT_EQ(run(u"f = Function('for (;;) { while (1) { do { return 4; } while (1); } }'); f()"),
              "number 4");
}

}  // namespace
}  // namespace quorvelin
