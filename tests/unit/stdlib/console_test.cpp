// The console: which calls reach which operation, and what clearing does.
#include "stdlib/console.h"

#include <gtest/gtest.h>

#include "support/leaks_by_design.h"
#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

// A console of a host that notes every operation.
class NotingConsole final : public JSConsole {
  public:
    void show() override { log += "show "; }
    void hide() override { log += "hide "; }
    void println(const BString& text) override { log += "println(" + support::ascii(text) + ") "; }
    void clear() override { log += "clear "; }

    std::string log;
};

class Console : public support::ScriptTest {
  protected:
    Console() { setGlobal(u"con", console.get()); }
    std::string log() { return std::exchange(console->log, {}); }

    Owned<NotingConsole> console{new NotingConsole()};
};

TEST_F(Console, MethodsReachTheirOperationsAndGiveUndefined) {
    EXPECT_EQ(run(u"con.show()"), "null");
    EXPECT_EQ(run(u"con.hide()"), "null");
    EXPECT_EQ(run(u"con.println('a')"), "null");
    EXPECT_EQ(log(), "show hide println(a) ");
}

TEST_F(Console, PrintlnTakesTheTextOfItsFirstArgument) {
    run(u"con.println(1); con.println('a', 'b'); con.println([1, 2]); con.println(null)");
    EXPECT_EQ(log(), "println(1) println(a) println(1,2) println(null) ");
}

TEST_F(Console, PrintlnWithoutArgumentReachesNothing) {
    run(u"con.println()");
    EXPECT_EQ(log(), "");
    const Value result(console->callMember(BString(u"println"), nullptr, ctx(), nullptr));
    EXPECT_EQ(log(), "");
}

// Quirk: the operation is not called.
TEST_F(Console, ClearIsNotPassedOn) {
    EXPECT_EQ(run(u"con.clear()"), "null");
    EXPECT_EQ(log(), "");
}

// Quirk: the cells are forgotten, not released.
TEST_F(Console, ClearForgetsTheMembersWithoutReleasingThem) {
    const support::LeakOfAClearedConsole leak;
    run(u"con.x = 1");
    const Value cell(console->getMember(BString(u"x"), ctx(), nullptr));
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->refCount(), 1) << "held by the console and by the test";
    run(u"con.clear()");
    EXPECT_EQ(console->memberCount(ctx(), nullptr), 0);
    EXPECT_EQ(run(u"typeof con.x"), "string undefined");
    EXPECT_EQ(cell->refCount(), 1) << "the reference of the console stays for good";
}

TEST_F(Console, ScriptCanShadowAMethod) {
    run(u"con.show = Function('return 5;')");
    EXPECT_EQ(run(u"con.show()"), "number 5");
    EXPECT_EQ(log(), "");
}

TEST_F(Console, MethodsAreMembersOfTypeFunction) {
    for (const char16_t* name : {u"show", u"println", u"hide", u"clear"}) {
        EXPECT_TRUE(console->hasMember(BString(name), ctx(), nullptr));
        EXPECT_EQ(console->memberType(BString(name), ctx(), nullptr), JSValueType::function);
    }
    EXPECT_EQ(run(u"p = con.println; p('kept')"), "null");
    EXPECT_EQ(log(), "println(kept) ");
}

TEST_F(Console, EngineConsoleDoesNothing) {
    const Value silent(new JSConsole());
    setGlobal(u"quiet", silent.get());
    EXPECT_EQ(run(u"quiet.show(); quiet.hide(); quiet.println('x'); quiet.clear()"), "null");
}

}  // namespace
}  // namespace quorvelin
