#include "stdlib/util/util_object.h"

#include <gtest/gtest.h>

#include <string>

#include "support/script_machine.h"

namespace quorvelin {
namespace {

class UtilObject : public support::ScriptTest {};

TEST_F(UtilObject, Printf) {
    EXPECT_EQ(run(u"util.printf('%5d|%-5d|%05d', 1, 2, 3)"), "string     1|2    |00003");
    EXPECT_EQ(run(u"util.printf('%,d', 1234567)"), "string 1,234,567");
    EXPECT_EQ(run(u"util.printf('%%')"), "string %");
    EXPECT_EQ(run(u"util.printf('%s is %d or %.2f, %c', 'x', 1.9, 2.5, 65)"), "string x is 1 or 2.50, A");
    EXPECT_EQ(run(u"util.printf()"), "string");
    EXPECT_EQ(run(u"util.printf('%d<%s>')"), "string 0<>");
}

TEST_F(UtilObject, PrintfReadsTheSizesOfAnArgument) {
    EXPECT_EQ(run(u"util.printf('%hd %ld %I64d', 65537, -5, 7)"), "string 1 -5 7");
    EXPECT_EQ(run(u"util.printf('%n%d%p', 1, 2, 3)"), "string 200000000");
    EXPECT_EQ(run(u"util.printf('%Lf', 1.5)"), "string 1.500000");
}

TEST_F(UtilObject, QuirkPrintfEvaluatesItsArgumentsTwice) {
    run(uR"(count = 0; a = [1]; a.join = new Function("count = count + 1; return \"t\";"))");
    EXPECT_EQ(run(u"util.printf('%s', a)"), "string t");
    EXPECT_EQ(run(u"count"), "number 2");
}

TEST_F(UtilObject, PrintfOfNumbersThatAreNotFinite) {
    EXPECT_EQ(run(u"x = 1e308 * 10; util.printf('%f', x)"), "string +Infinity");
    EXPECT_EQ(run(u"util.printf('%.1f', 1 / 0)"), "string 0.0");
}

TEST_F(UtilObject, Printx) {
    EXPECT_EQ(run(u"util.printx('(999) 999', 'a12b3456')"), "string (123) 456");
    EXPECT_EQ(run(u"util.printx('>A<A', 'hi')"), "string Hi");
    EXPECT_EQ(run(u"util.printx('a')"), "string");
    EXPECT_EQ(run(u"util.printx()"), "string");
}

TEST_F(UtilObject, Printd) {
    EXPECT_EQ(run(u"util.printd('dd.mm.yyyy', 0)"), "string 01.01.1970");
    EXPECT_EQ(run(u"util.printd('ddd mmm', 0)"), "string Thu Janu");
    EXPECT_EQ(run(u"util.printd('h:MM tt', 43200.9)"), "string 12:00 pm");
    EXPECT_EQ(run(u"util.printd('dd.mm.yyyy HH:MM:ss', -1)"), "string 31.12.1969 23:59:59");
    EXPECT_EQ(run(u"util.printd('y')"), "string");
    EXPECT_EQ(run(u"util.printd()"), "string");
}

TEST_F(UtilObject, ItsMethodsAreReferencesAndCanBeShadowed) {
    EXPECT_EQ(run(u"typeof util.printf"), "string function");
    EXPECT_EQ(run(u"p = util.printf; p('%d', 3)"), "string 3");
    EXPECT_EQ(run(u"util.printx = 5; util.printx"), "number 5");
}

TEST_F(UtilObject, AJumpInAnArgumentGivesNothing) {
    run(uR"(root = this; st = [1]; st.join = new Function("root._eval(\"break;\"); return 1;"))");
    EXPECT_EQ(run(u"util.printf('%s', st)"), "null");
    machine->setCompletion(JSCompletion::normal);
    run(u"root = 0");
}

}  // namespace
}  // namespace quorvelin
