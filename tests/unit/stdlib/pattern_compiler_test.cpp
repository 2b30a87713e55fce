#include <gtest/gtest.h>

#include <string>

#include "host/allocator.h"
#include "stdlib/regexp/escape.h"
#include "stdlib/regexp/regexp_matcher.h"

namespace quorvelin {
namespace {

std::string number(uint32_t value) {
    return value == kNoLimit ? "max" : std::to_string(value);
}

std::string unitsAsText(const char16_t* units, int32_t count) {
    std::string text;
    for (int32_t i = 0; i < count; ++i) {
        const char16_t c = units[i];
        text += c > 32 && c < 127 ? std::string(1, static_cast<char>(c)) : "#" + std::to_string(c);
    }
    return text;
}

// A chain as text: each node by a name, its numbers and, in parentheses, its body.
std::string describe(const JSPatternNode* node) {
    static const char* const kNames[] = {"lineStart", "lineEnd", "greedy",  "lazy",     "any", "set",
                                         "notSet",    "edge",    "notEdge", "char",     "ref", "search",
                                         "capture",   "group",   "ahead",   "notAhead", "or"};
    if (node == nullptr) return "";
    std::string text = kNames[node->kind];
    switch (node->kind) {
        case ReChar:
            text = "'" + unitsAsText(&node->ch, 1) + "'";
            break;
        case ReCharSet:
        case ReNotCharSet:
            text += "[" + unitsAsText(node->text.data(), node->text.length()) + "]";
            break;
        case ReRepeatGreedy:
        case ReRepeatLazy:
            text += "{" + number(node->min) + "," + number(node->max) + "}";
            break;
        case ReBackReference:
        case ReCapture:
        case ReGroup:
        case ReNotLookAhead:
            text += number(node->min);
            break;
        default:
            break;
    }
    if (node->body != nullptr) text += "(" + describe(node->body) + ")";
    if (node->next != nullptr) text += " " + describe(node->next);
    return text;
}

// Checks that each child knows its parent where the tree relies on it.
void compile(const std::u16string& pattern, int32_t& end, std::string& tree) {
    JSRegExpMatcher matcher;
    JSPatternNode root(ReSearch);
    const BString text(pattern.data(), static_cast<int32_t>(pattern.size()));
    end = matcher.compilePattern(text, 0, &root, 0);
    tree = describe(root.next);
    destroyNodes(&root);
    EXPECT_EQ(root.next, nullptr);
}

// The tree of a pattern that compiles to its end.
std::string tree(const std::u16string& pattern) {
    int32_t end = 0;
    std::string text;
    compile(pattern, end, text);
    EXPECT_EQ(end, static_cast<int32_t>(pattern.size()));
    return text;
}

int32_t endOf(const std::u16string& pattern) {
    int32_t end = 0;
    std::string text;
    compile(pattern, end, text);
    return end;
}

TEST(DecodeEscape, FollowsItsTable) {
    struct Case {
        const char16_t* text;
        int32_t value;
        int32_t consumed;
    };
    const Case cases[] = {
        {u"", 0, 0},    {u"a", 7, 1},          {u"b", 8, 1},  {u"f", 12, 1},    {u"n", 10, 1},
        {u"r", 13, 1},  {u"t", 9, 1},          {u"v", 11, 1}, {u"x41z", 65, 3}, {u"xfFf", 255, 3},
        {u"x4g", 4, 2}, {u"xg", 0, 0},         {u"x", 0, 0},  {u"q", 'q', 1},   {u"\\", '\\', 1},
        {u"8", '8', 1}, {u"\u0416", 0x416, 1},
    };
    for (const Case& c : cases) {
        int32_t consumed = -1;
        EXPECT_EQ(decodeEscape(c.text, consumed), c.value) << c.value;
        EXPECT_EQ(consumed, c.consumed) << c.value;
    }
}

TEST(DecodeEscape, QuirkOctalConsumesOneMoreThanItsDigits) {
    int32_t consumed = 0;
    EXPECT_EQ(decodeEscape(u"101", consumed), 65);
    EXPECT_EQ(consumed, 4);
    EXPECT_EQ(decodeEscape(u"3777", consumed), 0377);
    EXPECT_EQ(consumed, 4);
    EXPECT_EQ(decodeEscape(u"477", consumed), 047);
    EXPECT_EQ(consumed, 3);
    EXPECT_EQ(decodeEscape(u"7x", consumed), 7);
    EXPECT_EQ(consumed, 2);
    EXPECT_EQ(decodeEscape(u"08", consumed), 0);
    EXPECT_EQ(consumed, 2);
}

TEST(PatternCompiler, AnEmptyPatternIsTheBareRoot) {
    EXPECT_EQ(tree(u""), "");
}

TEST(PatternCompiler, SequencesAreChains) {
    EXPECT_EQ(tree(u"^a.$"), "lineStart 'a' any lineEnd");
    EXPECT_EQ(tree(u"}],-"), "'}' ']' ',' '-'");
}

TEST(PatternCompiler, FaultsGiveMinusOne) {
    for (const char16_t* pattern :
         {u"(",  u"(a",   u"a\\", u"[a",   u"a{2",   u"(?x)", u"\\x",   u"(?",     u"[",    u"[^",
          u"a{", u"a{1,", u"(?:", u"(?:a", u"(a(b)", u"[a\\", u"[\\x]", u"[a\\1]", u"\\xg", u"[]["}) {
        EXPECT_EQ(endOf(pattern), -1) << unitsAsText(pattern, BString::measure(pattern));
    }
    EXPECT_EQ(endOf(std::u16string(u"\\\0a", 3)), -1);
    EXPECT_EQ(endOf(std::u16string(u"[\\\0]", 4)), -1);
}

TEST(PatternCompiler, WhatIsNoFault) {
    EXPECT_EQ(endOf(u")"), 0);
    EXPECT_EQ(endOf(u"a)"), 1);
    EXPECT_EQ(tree(u"[]"), "");
    EXPECT_EQ(tree(u"]"), "']'");
    EXPECT_EQ(tree(u"}"), "'}'");
    EXPECT_EQ(tree(u"[z-a]"), "set[z]");
    EXPECT_EQ(tree(u"\\q"), "'q'");
}

TEST(PatternCompiler, QuirkAnUnmatchedParenthesisEndsThePattern) {
    int32_t end = 0;
    std::string text;
    compile(u"a)b", end, text);
    EXPECT_EQ(end, 1);
    EXPECT_EQ(text, "'a'");
}

TEST(PatternCompiler, QuantifiersTakeThePlaceOfTheirAtom) {
    EXPECT_EQ(tree(u"ab*c"), "'a' greedy{0,max}('b') 'c'");
    EXPECT_EQ(tree(u"a+"), "greedy{1,max}('a')");
    EXPECT_EQ(tree(u"a?"), "greedy{0,1}('a')");
    EXPECT_EQ(tree(u"(ab)*c"), "greedy{0,max}(capture0('a' 'b')) 'c'");
}

TEST(PatternCompiler, QuestionMarkBehindAQuantifierMakesItLazyOnce) {
    EXPECT_EQ(tree(u"a*?"), "lazy{0,max}('a')");
    EXPECT_EQ(tree(u"a??"), "lazy{0,1}('a')");
    EXPECT_EQ(tree(u"a???"), "greedy{0,1}(lazy{0,1}('a'))");
    EXPECT_EQ(tree(u"a????"), "lazy{0,1}(lazy{0,1}('a'))");
    EXPECT_EQ(tree(u"a*+"), "greedy{1,max}(greedy{0,max}('a'))");
    EXPECT_EQ(tree(u"a**"), "greedy{0,max}(greedy{0,max}('a'))");
}

TEST(PatternCompiler, QuirkAQuantifierAtTheStartLeavesTheRootEmpty) {
    for (const char16_t* pattern : {u"*", u"*abc", u"+a", u"?", u"{3}a", u"**a", u"*?a", u"**(a|b)+[c]"}) {
        EXPECT_EQ(tree(pattern), "");
    }
}

TEST(PatternCompiler, AnAlternativeWithoutGroupOrRootIsAFault) {
    EXPECT_EQ(endOf(u"*a|b"), -1);
    EXPECT_EQ(endOf(u"*|"), -1);
    EXPECT_EQ(tree(u"*(a|b)"), "");
}

TEST(PatternCompiler, AQuantifierAtTheStartOfAGroupWrapsTheGroup) {
    EXPECT_EQ(tree(u"(*a)b"), "greedy{0,max}(capture0 'b') 'a'");
    EXPECT_EQ(tree(u"x(?:+)"), "'x' greedy{1,max}(groupmax)");
}

TEST(PatternCompiler, QuirkBracesStoreANumberAtACommaOnly) {
    EXPECT_EQ(tree(u"a{}b"), "greedy{max,max}('a') 'b'");
    EXPECT_EQ(tree(u"a{3}b"), "greedy{max,max}('a') 'b'");
    EXPECT_EQ(tree(u"a{3,}b"), "greedy{3,max}('a') 'b'");
    EXPECT_EQ(tree(u"a{3,5}b"), "greedy{3,max}('a') 'b'");
    EXPECT_EQ(tree(u"a{,5}b"), "greedy{0,max}('a') 'b'");
    EXPECT_EQ(tree(u"a{3,5,b"), "greedy{3,5}('a') 'b'");
    EXPECT_EQ(tree(u"a{2,3,b"), "greedy{2,3}('a') 'b'");
    EXPECT_EQ(tree(u"a{2,3,}"), "greedy{2,3}('a') '}'");
}

TEST(PatternCompiler, QuirkEveryCharacterInBracesIsADigit) {
    EXPECT_EQ(tree(u"a{1x,}"), "greedy{9,max}('a')");   // 1 * 10 - 1
    EXPECT_EQ(tree(u"a{2/,}"), "greedy{19,max}('a')");  // 2 * 10 + (47 - 48)
    EXPECT_EQ(tree(u"a{x,}"), "greedy{max,max}('a')");  // -1
    EXPECT_EQ(tree(u"a{4294967298,}"), "greedy{2,max}('a')");
}

TEST(PatternCompiler, SetsHoldTheirMembersInOrder) {
    EXPECT_EQ(tree(u"[cab]"), "set[cab]");
    EXPECT_EQ(tree(u"[^cab]"), "notSet[cab]");
    EXPECT_EQ(tree(u"[aa]"), "set[aa]");
    EXPECT_EQ(tree(u"[^]"), "notSet[]");
    EXPECT_EQ(tree(u"[a^]"), "set[a^]");
    EXPECT_EQ(tree(u"[a[]"), "set[a[]");
    EXPECT_EQ(tree(u"[(|*]"), "set[(|*]");
}

TEST(PatternCompiler, QuirkEmptyBracketsAreNotThere) {
    EXPECT_EQ(tree(u"a[]*b[]]"), "greedy{0,max}('a') 'b' ']'");
}

TEST(PatternCompiler, RangesAreStoredExpanded) {
    EXPECT_EQ(tree(u"[a-e]"), "set[abcde]");
    EXPECT_EQ(tree(u"[ba-d]"), "set[bacd]");
    EXPECT_EQ(tree(u"[a-c-e]"), "set[abc-e]");
    EXPECT_EQ(tree(u"[a-]"), "set[a]");
    EXPECT_EQ(tree(u"[-a]"), "set[-a]");
    EXPECT_EQ(tree(u"[+--]"), "set[+,-]");
    EXPECT_EQ(tree(u"[a-\\x63]"), "set[abc]");
    EXPECT_EQ(tree(u"[a\\-c]"), "set[a-c]");
    EXPECT_EQ(tree(u"[e-ax]"), "set[ex]");
    EXPECT_EQ(tree(u"[\uffff-a]"), "set[#65535]");
}

TEST(PatternCompiler, QuirkADotInBracketsIsLatin1) {
    JSRegExpMatcher matcher;
    JSPatternNode root(ReSearch);
    EXPECT_EQ(matcher.compilePattern(u"[.]", 0, &root, 0), 3);
    EXPECT_EQ(root.next->text.length(), 255);
    EXPECT_EQ(root.next->text[0], 1);
    EXPECT_EQ(root.next->text[254], 255);
    destroyNodes(&root);

    EXPECT_EQ(matcher.compilePattern(u"[\u0416.b]", 0, &root, 0), 5);
    EXPECT_EQ(root.next->text.length(), 257);  // "b" behind it is not tested for being there already
    destroyNodes(&root);

    // It ends a pending range and takes no part in one.
    EXPECT_EQ(matcher.compilePattern(u"[\u0416-.-\u0418]", 0, &root, 0), 7);
    EXPECT_EQ(root.next->text.length(), 258);
    destroyNodes(&root);
}

TEST(PatternCompiler, QuirkEscapesInBracketsAreSingleCharacters) {
    EXPECT_EQ(tree(u"[\\d]"), "set[d]");
    EXPECT_EQ(tree(u"[\\s\\w\\]]"), "set[sw]]");
    EXPECT_EQ(tree(u"[\\b\\n]"), "set[#8#10]");
    EXPECT_EQ(tree(u"[\\x41]"), "set[A]");
}

TEST(PatternCompiler, QuirkAnOctalEscapeInBracketsSwallowsTheNextCharacter) {
    EXPECT_EQ(tree(u"[\\101bc]"), "set[Ac]");
    EXPECT_EQ(tree(u"[\\101]]"), "set[A]");
}

TEST(PatternCompiler, SetEscapes) {
    EXPECT_EQ(tree(u"\\d\\D"), "set[0123456789] notSet[0123456789]");
    EXPECT_EQ(tree(u"\\s\\S"), "set[#32#12#10#13#9#11] notSet[#32#12#10#13#9#11]");
    EXPECT_EQ(tree(u"\\w"), "set[ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_]");
    EXPECT_EQ(tree(u"\\W"), "notSet[ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_]");
}

TEST(PatternCompiler, EdgeAndCharacterEscapes) {
    EXPECT_EQ(tree(u"\\b\\B"), "edge notEdge");
    EXPECT_EQ(tree(u"\\n\\t\\x41\\.\\("), "'#10' '#9' 'A' '.' '('");
    EXPECT_EQ(tree(u"\\x4g"), "'#4' 'g'");
}

TEST(PatternCompiler, ControlEscapes) {
    EXPECT_EQ(tree(u"\\cj\\cJ"), "'#10' '#10'");
    EXPECT_EQ(tree(u"\\cA\\cz"), "'#1' '#26'");
    EXPECT_EQ(tree(u"\\c1"), "'c' '1'");
    EXPECT_EQ(tree(u"\\c"), "'c'");
}

TEST(PatternCompiler, UnicodeEscapes) {
    EXPECT_EQ(tree(u"\\u41"), "'A'");
    EXPECT_EQ(tree(u"\\u00e9\\u0041f"), "'#233' 'A' 'f'");
    EXPECT_EQ(tree(u"\\uFFFFf"), "'#65535' 'f'");
    EXPECT_EQ(tree(u"\\u"), "'u'");
}

TEST(PatternCompiler, QuirkUnicodeEscapeWithoutDigitsIsNul) {
    EXPECT_EQ(tree(u"\\ug"), "'#0' 'g'");
}

TEST(PatternCompiler, GroupsAreNumberedAlongTheirChain) {
    EXPECT_EQ(tree(u"(a)(b)(c)"), "capture0('a') capture1('b') capture2('c')");
    EXPECT_EQ(tree(u"((a)(b))(c)"), "capture0(capture0('a') capture1('b')) capture1('c')");
    EXPECT_EQ(tree(u"(?:(a))"), "groupmax(capturemax('a'))");
    EXPECT_EQ(tree(u"(x)(?:(a))(b)"), "capture0('x') group0(capture0('a')) capture1('b')");
    EXPECT_EQ(tree(u"()"), "capture0");
}

TEST(PatternCompiler, QuirkBothLookAheadsAreTheSame) {
    EXPECT_EQ(tree(u"(?=a)"), "notAheadmax('a')");
    EXPECT_EQ(tree(u"(?!a)"), "notAheadmax('a')");
}

TEST(PatternCompiler, AlternativesNestToTheLeft) {
    EXPECT_EQ(tree(u"a|b"), "or('a') 'b'");
    EXPECT_EQ(tree(u"ab|cd|e"), "or(or('a' 'b') 'c' 'd') 'e'");
    EXPECT_EQ(tree(u"x(a|b)y"), "'x' capture0(or('a') 'b') 'y'");
    EXPECT_EQ(tree(u"(?:a|b)"), "groupmax(or('a') 'b')");
    EXPECT_EQ(tree(u"a|"), "or('a')");
    EXPECT_EQ(tree(u"|a"), "or 'a'");
}

TEST(PatternCompiler, NumbersBelowTheGroupCountAreReferences) {
    EXPECT_EQ(tree(u"(a)\\0"), "capture0('a') ref0");
    EXPECT_EQ(tree(u"(a)\\1"), "capture0('a') '#1'");
    EXPECT_EQ(tree(u"(a)(b)\\1"), "capture0('a') capture1('b') ref1");
    EXPECT_EQ(tree(u"\\8\\9"), "ref8 ref9");
    EXPECT_EQ(tree(u"(a\\0)"), "capture0('a' '#0')");
}

TEST(PatternCompiler, ReferencesTakeFurtherDigitsWhileThereAreSuchGroups) {
    std::u16string groups;
    for (int i = 0; i < 12; ++i) groups += u"()";
    EXPECT_TRUE(tree(groups + u"\\11").ends_with("capture11 ref11"));
    EXPECT_TRUE(tree(groups + u"\\12").ends_with("capture11 ref1 '2'"));
    EXPECT_TRUE(tree(groups + u"\\110").ends_with("capture11 ref11 '0'"));
}

TEST(PatternCompiler, QuirkAReferenceTakesCharactersThatAreNoDigits) {
    std::u16string groups;
    for (int i = 0; i < 12; ++i) groups += u"()";
    EXPECT_TRUE(tree(groups + u"\\1/").ends_with("capture11 ref9"));   // 10 + 47 - 48
    EXPECT_TRUE(tree(groups + u"\\0;").ends_with("capture11 ref11"));  // 59 - 48
}

TEST(PatternCompiler, ReferencesInAGroupWithANegativeCountTakeNoFurtherDigits) {
    EXPECT_EQ(tree(u"(?:\\81)"), "groupmax(ref8 '1')");
    EXPECT_EQ(tree(u"(?:\\0x)"), "groupmax('#0' 'x')");
}

TEST(PatternCompiler, QuirkAFullOctalEscapeIsFollowedByItsLastDigit) {
    EXPECT_EQ(tree(u"\\101"), "'A' '1'");
    EXPECT_EQ(tree(u"\\60"), "'0' '0'");
    EXPECT_EQ(tree(u"\\47"), "''' '7'");
    EXPECT_EQ(tree(u"\\4x"), "'#4' 'x'");
    EXPECT_EQ(tree(u"\\7x"), "'#7' 'x'");
    EXPECT_EQ(tree(u"\\07"), "'#7'");
    EXPECT_EQ(tree(u"\\0"), "'#0'");
    EXPECT_EQ(tree(u"\\377"), "'#255' '7'");
    EXPECT_EQ(tree(u"\\1018"), "'A' '1' '8'");
}

TEST(PatternCompiler, LongPatternsTakeNoNativeStack) {
    const std::u16string pattern(1000000, u'a');
    JSRegExpMatcher matcher;
    JSPatternNode root(ReSearch);
    EXPECT_EQ(matcher.compilePattern(BString(pattern.c_str()), 0, &root, 0), 1000000);
    destroyNodes(&root);
}

TEST(PatternCompiler, DeepPatternsFailWithoutACrash) {
    const std::u16string pattern = std::u16string(1000000, u'(') + std::u16string(1000000, u')');
    JSRegExpMatcher matcher;
    JSPatternNode root(ReSearch);
    EXPECT_EQ(matcher.compilePattern(BString(pattern.c_str()), 0, &root, 0), -1);
    EXPECT_EQ(matcher.failure(), PatternFailure::stackOverflow);
    destroyNodes(&root);

    const std::u16string deep = std::u16string(2000, u'(') + std::u16string(2000, u')');
    EXPECT_EQ(endOf(deep), 4000);
}

TEST(PatternCompiler, AFaultyPatternIsNoFailureOfTheCompiler) {
    JSRegExpMatcher matcher;
    JSPatternNode root(ReSearch);
    EXPECT_EQ(matcher.compilePattern(u"(", 0, &root, 0), -1);
    EXPECT_EQ(matcher.failure(), PatternFailure::none);
    destroyNodes(&root);
}

TEST(PatternCompiler, SurvivesEveryFailedAllocation) {
    const BString pattern(u"*a(b|[c-x]*)+\\d\\1(?:[^.]{2,3,e)?");
    uint64_t failures = 0;
    for (uint64_t count = 1;; ++count) {
        JSRegExpMatcher matcher;
        JSPatternNode root(ReSearch);
        failAllocation(count);
        const int32_t end = matcher.compilePattern(pattern, 0, &root, 0);
        const bool hasFailed = allocationHasFailed();
        cancelAllocationFailure();
        destroyNodes(&root);
        if (!hasFailed) {
            EXPECT_EQ(end, pattern.length());
            break;
        }
        ++failures;
        EXPECT_EQ(end, -1);
        EXPECT_EQ(matcher.failure(), PatternFailure::outOfMemory);
    }
    EXPECT_GT(failures, 15u);
}

}  // namespace
}  // namespace quorvelin
