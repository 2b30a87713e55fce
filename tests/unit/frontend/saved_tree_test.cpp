// Saved trees: what the reader takes, what the writer writes, and that no stream of bytes does harm.
#include <gtest/gtest.h>

#include <initializer_list>

#include "foundation/stream.h"
#include "frontend/tree_reader.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::loaded;
using support::outline;
using support::parse;
using support::saved;
using support::textOf;

using Bytes = std::vector<uint8_t>;

// Bytes of a tree from parts: numbers as single bytes, texts in the form of the format.
class TreeBytes {
  public:
    TreeBytes& byte(uint8_t value) {
        bytes_.push_back(value);
        return *this;
    }
    TreeBytes& word(uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8) byte(static_cast<uint8_t>(value >> shift));
        return *this;
    }
    TreeBytes& text(std::u16string_view units) {
        word(static_cast<uint32_t>(units.size()) + 1);
        for (const char16_t unit : units)
            byte(static_cast<uint8_t>(unit)).byte(static_cast<uint8_t>(unit >> 8));
        return byte(0).byte(0);
    }
    TreeBytes& identifier(std::u16string_view name) { return byte(2).text(name); }

    // The tree of these bytes as an outline.
    std::string outlined() const { return outline(root().get()); }
    std::string source() const {
        const Owned<JSNode> node = root();
        return node ? ascii(node->regenerate()) : "no node";
    }
    Owned<JSNode> root() const {
        Bytes all = {1};
        all.insert(all.end(), bytes_.begin(), bytes_.end());
        return loaded(all);
    }

  private:
    Bytes bytes_;
};

// Scripts that together hold every class that a parser makes, without a label.
const std::u16string_view kScripts[] = {
    u"",
    u"x=1",
    u"a; b; c",
    u"var a, b = 1; var ;",
    u"function f(a, b) { return a + b; } function g { }",
    u"if (a) { b } else c; if () ; ",
    u"for (var i = 0; i < 10; i++) { if (i == 5) break; continue; } for (;;) ;",
    u"while (x) y; do { z } while (x); with (o) p; while () { }",
    u"switch (x) { case 1: a; case 'b': default: c; }",
    u"a.b.c(1, 'two', [3, [4]], /five\\//)[6](7)",
    u"typeof -~!a++ + --b, new Foo(1), delete x.y, void 0",
    u"a ? b : c ? d : e; a || b && c | d ^ e & f",
    u"x = 0x1F + 017 + .5 + 1e5 + 0 + true + false + null",
    u"'\u00e4\u4e2d\xD800 text'; \u0416 = 1",
    u"x = ; +y; 1 + ; a >>> b",
    u"break out; continue out; return;",
};

TEST(SavedTree, EmptyProgram) {
    const Owned<JSNode> root = loaded({1, 28, 29});
    EXPECT_EQ(outline(root.get()), "StatementList([])");
    EXPECT_EQ(ascii(root->regenerate()), "");
}

TEST(SavedTree, EmptyProgramIsWrittenAsMarkerTagAndEnd) {
    EXPECT_EQ(saved(parse(u"").get()), (Bytes{1, 28, 29}));
}

TEST(SavedTree, AssignmentByteForByte) {
    const Bytes expected = {1,  28, 28, 28, 28,                               // program, its list
                            9,                                                // assignment
                            2,  2,  0,  0,  0,   'x', 0, 0, 0,                // identifier x
                            2,  0,  0,  0,  '=', 0,   0, 0,                   // operator
                            15, 5,  0,  0,  0,   2,   0, 0, 0, '1', 0, 0, 0,  // literal 1
                            29, 29};
    EXPECT_EQ(saved(parse(u"x=1").get()), expected);
    EXPECT_EQ(outline(loaded(expected).get()), outline(parse(u"x=1").get()));
}

TEST(SavedTree, TreeReadBackRegeneratesAsTheParsedOne) {
    for (const std::u16string_view script : kScripts) {
        const Owned<JSNode> parsed = parse(script);
        ASSERT_NE(parsed->kind, kErrorKind) << ascii(script) << ": " << ascii(parsed->regenerate());
        const Owned<JSNode> readBack = loaded(saved(parsed.get()));
        ASSERT_TRUE(readBack);
        EXPECT_EQ(outline(readBack.get()), outline(parsed.get()));
        EXPECT_EQ(ascii(readBack->regenerate()), ascii(parsed->regenerate()));
        EXPECT_EQ(saved(readBack.get()), saved(parsed.get()));
    }
}

TEST(SavedTree, PositionsAreNotSaved) {
    const Owned<JSNode> root = loaded(saved(parse(u"\n\nx = 1").get()));
    EXPECT_EQ(outline(root.get(), true),
              "StatementList@0:0([StatementList@0:0([Assign@0:0(= Identifier@0:0(x) Literal@0:0(5 1))])])");
}

TEST(SavedTree, QuirkLabelLosesItsStatement) {
    const Owned<JSNode> root = loaded(saved(parse(u"a: while (b) c").get()));
    EXPECT_EQ(outline(support::firstStatement(root.get())), "Label(a -)");
    EXPECT_EQ(ascii(root->regenerate()), "a:;\n;\n");
}

TEST(SavedTree, ErrorNodeIsWrittenAsAbsent) {
    EXPECT_EQ(saved(parse(u"x y").get()), (Bytes{1, 0}));
}

TEST(SavedTree, AbsentRoot) {
    EXPECT_EQ(saved(nullptr), (Bytes{1, 0}));
    EXPECT_FALSE(loaded({1, 0}));
    EXPECT_FALSE(loaded({1}));
}

// ---- the payload of every tag ----

TEST(SavedTree, EveryTag) {
    const auto a = [](TreeBytes& bytes) -> TreeBytes& { return bytes.identifier(u"a"); };
    TreeBytes b;
    EXPECT_EQ(
        TreeBytes().byte(1).text(u"f").byte(35).byte(35).text(u"p").byte(36).byte(28).byte(29).outlined(),
        "Function(Parameters([p]) StatementList([]) f)");
    EXPECT_EQ(TreeBytes().identifier(u"name").outlined(), "Identifier(name)");
    EXPECT_EQ(TreeBytes().byte(3).identifier(u"o").text(u"m").byte(32).byte(33).outlined(),
              "MemberCall(Identifier(o) Arguments([]) m)");
    EXPECT_EQ(TreeBytes().byte(4).identifier(u"o").text(u"m").outlined(), "Member(Identifier(o) m)");
    EXPECT_EQ(TreeBytes().byte(5).identifier(u"f").byte(32).byte(32).identifier(u"x").byte(33).outlined(),
              "Call(Identifier(f) Arguments([Identifier(x)]))");
    EXPECT_EQ(TreeBytes().byte(6).identifier(u"o").identifier(u"i").outlined(),
              "Index(Identifier(o) Identifier(i))");
    EXPECT_EQ(TreeBytes().byte(7).identifier(u"l").identifier(u"r").outlined(),
              "Comma(Identifier(l) Identifier(r))");
    EXPECT_EQ(TreeBytes().byte(8).identifier(u"l").text(u">>>").identifier(u"r").outlined(),
              "Binary(>>> Identifier(l) Identifier(r))");
    EXPECT_EQ(TreeBytes().byte(9).identifier(u"l").text(u">>>=").identifier(u"r").outlined(),
              "Assign(>>>= Identifier(l) Identifier(r))");
    EXPECT_EQ(TreeBytes().byte(10).identifier(u"l").text(u"||").identifier(u"r").outlined(),
              "LogicalOr(|| Identifier(l) Identifier(r))");
    EXPECT_EQ(TreeBytes().byte(11).identifier(u"l").text(u"&&").identifier(u"r").outlined(),
              "LogicalAnd(&& Identifier(l) Identifier(r))");
    EXPECT_EQ(TreeBytes().byte(12).identifier(u"c").identifier(u"t").identifier(u"e").outlined(),
              "Conditional(Identifier(c) Identifier(t) Identifier(e))");
    EXPECT_EQ(TreeBytes().byte(13).text(u"-").identifier(u"o").outlined(), "Unary(- Identifier(o))");
    EXPECT_EQ(TreeBytes().byte(14).identifier(u"o").text(u"++").outlined(), "Postfix(++ Identifier(o))");
    EXPECT_EQ(TreeBytes().byte(15).word(3).text(u"s").outlined(), "Literal(3 s)");
    EXPECT_EQ(TreeBytes().byte(15).word(0xFFFFFFFF).text(u"s").outlined(), "Literal(-1 s)");
    EXPECT_EQ(TreeBytes().byte(16).text(u"n").identifier(u"o").identifier(u"b").outlined(),
              "ForIn(Identifier(o) Identifier(b) n)");
    EXPECT_EQ(a(a(a(a(b.byte(17))))).outlined(),
              "For(Identifier(a) Identifier(a) Identifier(a) Identifier(a))");
    EXPECT_EQ(TreeBytes().byte(18).identifier(u"c").identifier(u"t").byte(0).outlined(),
              "If(Identifier(c) Identifier(t) -)");
    EXPECT_EQ(TreeBytes().byte(19).text(u"l").outlined(), "Break(l)");
    EXPECT_EQ(TreeBytes().byte(20).word(0).outlined(), "Continue()");
    EXPECT_EQ(TreeBytes().byte(21).identifier(u"b").identifier(u"c").outlined(),
              "Do(Identifier(b) Identifier(c))");
    EXPECT_EQ(TreeBytes().byte(22).byte(0).outlined(), "Return(-)");
    EXPECT_EQ(TreeBytes()
                  .byte(23)
                  .identifier(u"d")
                  .byte(24)
                  .identifier(u"t")
                  .byte(28)
                  .byte(29)
                  .byte(24)
                  .byte(0)
                  .byte(0)
                  .byte(25)
                  .outlined(),
              "Switch(Identifier(d) [Identifier(t):StatementList([]) -:-])");
    EXPECT_EQ(TreeBytes().byte(26).identifier(u"o").identifier(u"b").outlined(),
              "With(Identifier(o) Identifier(b))");
    EXPECT_EQ(TreeBytes().byte(27).identifier(u"c").identifier(u"b").outlined(),
              "While(Identifier(c) Identifier(b))");
    EXPECT_EQ(TreeBytes().byte(28).byte(28).identifier(u"a").byte(28).byte(0).byte(29).outlined(),
              "StatementList([Identifier(a) -])");
    EXPECT_EQ(TreeBytes()
                  .byte(30)
                  .byte(30)
                  .text(u"v")
                  .byte(0)
                  .byte(30)
                  .text(u"w")
                  .identifier(u"i")
                  .byte(31)
                  .outlined(),
              "Var([v=- w=Identifier(i)])");
    EXPECT_EQ(TreeBytes().byte(34).text(u"l").outlined(), "Label(l -)");
    EXPECT_EQ(TreeBytes().byte(37).text(u"p").outlined(), "RegExp(p)");
    EXPECT_EQ(TreeBytes().byte(38).byte(38).identifier(u"a").byte(39).outlined(), "Array([Identifier(a)])");
}

TEST(SavedTree, ForInRegeneratesFromAStream) {
    EXPECT_EQ(TreeBytes().byte(16).text(u"n").identifier(u"o").identifier(u"b").source(),
              "for(n in o)\n{b\n}\n");
}

TEST(SavedTree, TagsThatAreNoClassYieldNoNode) {
    for (int tag = 0; tag < 256; ++tag) {
        const bool isClass = tag >= 1 && tag <= 38 && tag != 24 && tag != 25 && tag != 29 && tag != 31 &&
                             tag != 33 && tag != 36;
        EXPECT_EQ(static_cast<bool>(loaded({1, static_cast<uint8_t>(tag)})), isClass) << tag;
    }
}

TEST(SavedTree, UnknownTagIsAnAbsentChildAndNothingFurtherIsRead) {
    EXPECT_EQ(TreeBytes().byte(7).byte(99).identifier(u"r").outlined(), "Comma(- Identifier(r))");
}

TEST(SavedTree, AnyOtherByteEndsAList) {
    for (const uint8_t end : {0, 1, 27, 29, 99, 255}) {
        EXPECT_EQ(TreeBytes().byte(7).byte(28).byte(28).byte(0).byte(end).identifier(u"r").outlined(),
                  "Comma(StatementList([-]) Identifier(r))");
    }
}

// ---- texts ----

std::string textIn(const Bytes& bytes) {
    const BString source = textOf(std::u16string(bytes.begin(), bytes.end()));
    BStringInputStream stream(&source);
    return ascii(readText(&stream));
}

TEST(SavedText, CountIncludesTheTerminatingZero) {
    EXPECT_EQ(textIn({3, 0, 0, 0, 'a', 0, 'b', 0, 0, 0}), "ab");
}

TEST(SavedText, CountZeroIsTheEmptyText) {
    EXPECT_EQ(textIn({0, 0, 0, 0, 'a', 0}), "");
}

TEST(SavedText, EndsAtTheFirstZero) {
    EXPECT_EQ(textIn({4, 0, 0, 0, 'a', 0, 0, 0, 'b', 0, 'c', 0}), "a");
    EXPECT_EQ(textIn({1, 0, 0, 0, 0, 0}), "");
}

TEST(SavedText, WhatStandsBehindTheZeroIsRead) {
    EXPECT_EQ(TreeBytes().byte(7).byte(2).word(3).byte('a').byte(0).word(0).identifier(u"r").outlined(),
              "Comma(Identifier(a) Identifier(r))");
}

TEST(SavedText, ZeroMayBeMissing) {
    EXPECT_EQ(textIn({2, 0, 0, 0, 'a', 0, 'b', 0}), "ab");
}

TEST(SavedText, UnitsAreLowByteFirst) {
    EXPECT_EQ(textIn({1, 0, 0, 0, 0x34, 0x12}), "\\u1234");
}

TEST(SavedText, EndsAtTheEndOfTheStream) {
    EXPECT_EQ(textIn({5, 0, 0, 0, 'a', 0, 'b'}), "a");
    EXPECT_EQ(textIn({5}), "");
    EXPECT_EQ(textIn({}), "");
}

TEST(SavedText, DamagedCountTakesNoMemoryOrTime) {
    EXPECT_EQ(textIn({0xFF, 0xFF, 0xFF, 0xFF, 'a', 0}), "a");
    EXPECT_EQ(textIn({0xFF, 0xFF, 0xFF, 0x7F, 'a', 0}), "a");
}

TEST(SavedTree, MissingBytesOfACountReadAsZero) {
    // The count is 2 although three of its bytes are missing.
    EXPECT_EQ(outline(loaded({1, 2, 2}).get()), "Identifier()");
    EXPECT_EQ(outline(loaded({1, 15, 5}).get()), "Literal(5 )");
}

TEST(SavedTree, OnlyTheLowByteOfACharacterCounts) {
    const BString source = textOf(u"\u0102\u0402\uFF00\u3000\u0900\u0361\u0100\u0000");
    BStringInputStream stream(&source);
    const Owned<JSNode> node(readNode(&stream));
    EXPECT_EQ(outline(node.get()), "Identifier(a)");
}

// ---- damage ----

Bytes manyNodes() {
    const Owned<JSNode> root = parse(
        u"l: a; var b = 1; function f(c) { return c.d(e)[0]; } if (g) h; else { i++ } for (;;) { break; }"
        u" switch (j) { case 1: k; default: 's' } x = [1, /r/], y ? z : !w; do { continue; } while (v);"
        u"with (o) p || q && r; ");
    return saved(root.get());
}

// Everything that is done with a loaded tree before it is run.
void use(const Bytes& bytes) {
    const Owned<JSNode> root = loaded(bytes);
    if (!root) return;
    root->regenerate();
    const Bytes again = saved(root.get());
    ASSERT_FALSE(again.empty());
    // What was read is a whole tree, so writing and reading it changes nothing any more.
    EXPECT_EQ(saved(loaded(again).get()), again);
}

TEST(SavedTree, TruncatedAtEveryByte) {
    const Bytes whole = manyNodes();
    ASSERT_GT(whole.size(), 300u);
    for (size_t length = 1; length < whole.size(); ++length)
        use(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)));
}

TEST(SavedTree, EveryByteReplaced) {
    const Bytes whole = manyNodes();
    for (size_t place = 1; place < whole.size(); ++place) {
        Bytes damaged = whole;
        for (int value = 0; value < 256; value += value < 40 ? 1 : 31) {
            damaged[place] = static_cast<uint8_t>(value);
            use(damaged);
        }
    }
}

}  // namespace
}  // namespace quorvelin
