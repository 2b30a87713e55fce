#include "stdlib/regexp/regexp_matcher.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/allocator.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::textOf;

// A compiled pattern and a matcher for it.
struct Expression {
    explicit Expression(const std::u16string& pattern, bool ignoreCase = false) {
        matcher.ignoreCase = ignoreCase;
        EXPECT_NE(matcher.compilePattern(textOf(pattern), 0, &root, 0), -1);
    }
    ~Expression() { destroyNodes(&root); }

    bool on(const std::u16string& input, uint32_t pos = 0) {
        return matcher.matchNode(textOf(input), pos, &root, start, length, found);
    }

    JSRegExpMatcher matcher;
    JSPatternNode root{ReSearch};
    uint32_t start = 0;
    uint32_t length = 0;
    BString found;
};

// "start length text [captures]", or "no".
std::string match(const std::u16string& pattern, const std::u16string& input, bool ignoreCase = false) {
    Expression run(pattern, ignoreCase);
    if (!run.on(input)) return "no";
    std::string result =
        std::to_string(run.start) + " " + std::to_string(run.length) + " " + ascii(run.found);
    for (int32_t i = 0; i < run.matcher.captures.count(); ++i) {
        const JSRegExpCapture* capture = run.matcher.captures.at(i);
        EXPECT_EQ(capture->length, static_cast<uint32_t>(capture->text.length()));
        result += " [" + ascii(capture->text) + "]";
    }
    return result;
}

TEST(RegExpMatcher, Literals) {
    EXPECT_EQ(match(u"b", u"abc"), "1 1 b");
    EXPECT_EQ(match(u"bc", u"abcbc"), "1 2 bc");
    EXPECT_EQ(match(u"cb", u"abc"), "no");
    EXPECT_EQ(match(u"ab", u"aab"), "1 2 ab");
}

TEST(RegExpMatcher, Repetitions) {
    EXPECT_EQ(match(u"a*", u"aa"), "0 2 aa");
    EXPECT_EQ(match(u"a*", u"xaa"), "0 0 ");
    EXPECT_EQ(match(u"a*", u""), "no");
    EXPECT_EQ(match(u"a+", u"xaab"), "1 2 aa");
    EXPECT_EQ(match(u"a+?", u"aaa"), "0 1 a");
    EXPECT_EQ(match(u"a*?", u"aaa"), "0 0 ");
    EXPECT_EQ(match(u"a*?b", u"aab"), "0 3 aab");
    EXPECT_EQ(match(u"a?b", u"aab"), "1 2 ab");
    EXPECT_EQ(match(u"a.*c", u"abc abc"), "0 7 abc abc");
    EXPECT_EQ(match(u"a.*?c", u"abc abc"), "0 3 abc");
    EXPECT_EQ(match(u"(?:ab)+", u"xababa"), "1 4 abab");
    EXPECT_EQ(match(u"a*ab", u"aab"), "0 3 aab");
}

TEST(RegExpMatcher, QuirkAnIterationIsNeverGivenBack) {
    EXPECT_EQ(match(u"(?:aa*)*ab", u"aaab"), "2 2 ab");
    EXPECT_EQ(match(u"(?:ab|a)*c", u"abc"), "2 1 c");
}

TEST(RegExpMatcher, EmptyPatternAndEmptyInput) {
    EXPECT_EQ(match(u"", u"abc"), "0 0 ");
    EXPECT_EQ(match(u"", u""), "no");
    EXPECT_EQ(match(u"$", u""), "no");
    EXPECT_EQ(match(u"^", u""), "no");
}

TEST(RegExpMatcher, Dot) {
    EXPECT_EQ(match(u".", u"\n"), "no");
    EXPECT_EQ(match(u"a.c", u"a\nc"), "no");
    EXPECT_EQ(match(u"a.c", u"a\rc"), "0 3 a\\u000Dc");
}

TEST(RegExpMatcher, Braces) {
    EXPECT_EQ(match(u"a{2}", u"aaa"), "no");
    EXPECT_EQ(match(u"a{2,}", u"aaa"), "0 3 aaa");
    EXPECT_EQ(match(u"a{1,2}", u"aaa"), "0 3 aaa");
    EXPECT_EQ(match(u"a{1,2,b", u"aab"), "0 3 aab");
    EXPECT_EQ(match(u"a{1,2,b", u"aaab"), "1 3 aab");
    EXPECT_EQ(match(u"a{3,}", u"aa"), "no");
}

TEST(RegExpMatcher, QuirkOfAlternativesFoundAtOnePlaceTheLastIsTaken) {
    EXPECT_EQ(match(u"ab|a", u"ab"), "0 1 a");
    EXPECT_EQ(match(u"a|ab", u"ab"), "0 2 ab");
    EXPECT_EQ(match(u"(ab|a)c", u"abc"), "no");
    EXPECT_EQ(match(u"(a|ab)c", u"abc"), "0 3 abc [ab]");
    EXPECT_EQ(match(u"b|a", u"ab"), "0 1 a");
    EXPECT_EQ(match(u"a|b", u"ab"), "0 1 a");
    EXPECT_EQ(match(u"x|y|b", u"abx"), "1 1 b");
    EXPECT_EQ(match(u"a|", u"ab"), "0 0 ");
}

TEST(RegExpMatcher, CapturesOfALosingSideStay) {
    EXPECT_EQ(match(u"(a)x|(a)b", u"axab").substr(0, 6), "0 2 ax");
}

TEST(RegExpMatcher, Groups) {
    EXPECT_EQ(match(u"(a)", u"xa"), "1 1 a [a]");
    EXPECT_EQ(match(u"(b)c", u"abbc"), "2 2 bc [b]");
    EXPECT_EQ(match(u"(a*)b", u"aab"), "0 3 aab [aa]");
    EXPECT_EQ(match(u"()a", u"ba"), "1 1 a []");
    EXPECT_EQ(match(u"(?:ab)c", u"abc"), "0 3 abc");
    EXPECT_EQ(match(u"((a)b)", u"ab"), "0 2 ab [ab]");
}

TEST(RegExpMatcher, QuirkHalfOfTheCapturesOfAChainAreLost) {
    EXPECT_EQ(match(u"(a)(b)", u"ab"), "0 2 ab [a]");
    EXPECT_EQ(match(u"(a)(b)(c)", u"abc"), "0 3 abc [a] [b]");
    EXPECT_EQ(match(u"(a)(b)(c)(d)", u"abcd"), "0 4 abcd [a] [b]");
    EXPECT_EQ(match(u"(a)(b)(c)(d)(e)", u"abcde"), "0 5 abcde [a] [b] [c]");
}

TEST(RegExpMatcher, GroupsInsideAGroupWithoutANumberAddCaptures) {
    EXPECT_EQ(match(u"(?:(a))*", u"aaa"), "0 3 aaa [a] [a] [a]");
}

TEST(RegExpMatcher, BackReferenceBeforeACaptureIsNothing) {
    EXPECT_EQ(match(u"(a)\\0", u"aa"), "0 1 a [a]");
    EXPECT_EQ(match(u"\\9a", u"ba"), "1 1 a");
}

// The first turn of the repetition stores the capture, the second runs the reference.
TEST(RegExpMatcher, QuirkAReferenceNeedsAsMuchBehindItAsItIsLong) {
    EXPECT_EQ(match(u"(?:(a)|\\8)*", u"aa").substr(0, 4), "0 2 ");
    Expression run(u"(.)\\0");
    EXPECT_TRUE(run.on(u"aa"));
    // The capture "a" of the run before is there now: "a" again, and then one unit more would have to follow.
    EXPECT_FALSE(run.on(u"aa"));
    Expression longer(u"(.)\\0.");
    EXPECT_TRUE(longer.on(u"ab"));
    EXPECT_EQ(ascii(longer.found), "ab");
    EXPECT_TRUE(longer.on(u"xaab"));
    EXPECT_EQ(ascii(longer.matcher.captures.at(0)->text), "x");
}

TEST(RegExpMatcher, QuirkAReferenceMayLeaveAGap) {
    // Capture "a" in place; on "xaybb..." the reference finds "a" and the rest "bb" has to begin two behind
    // it.
    JSRegExpMatcher matcher;
    JSPatternNode first(ReSearch);
    ASSERT_NE(matcher.compilePattern(u"(a)", 0, &first, 0), -1);
    JSPatternNode second(ReSearch);
    ASSERT_NE(matcher.compilePattern(u"\\0bb", 0, &second, 1), -1);
    uint32_t start = 0;
    uint32_t length = 0;
    BString found;
    ASSERT_TRUE(matcher.matchNode(u"a", 0, &first, start, length, found));
    ASSERT_TRUE(matcher.matchNode(u"xaybbz", 0, &second, start, length, found));
    EXPECT_EQ(start, 1u);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(ascii(found), "abb");
    EXPECT_FALSE(matcher.matchNode(u"abb", 0, &second, start, length, found));
    destroyNodes(&first);
    destroyNodes(&second);
}

TEST(RegExpMatcher, LineStart) {
    EXPECT_EQ(match(u"^b", u"a\nb"), "2 1 b");
    EXPECT_EQ(match(u"^a", u"ab"), "0 1 a");
    EXPECT_EQ(match(u"^b", u"ab"), "no");
    EXPECT_EQ(match(u"^a", u"ba\nba\na"), "6 1 a");
    EXPECT_EQ(match(u"a^b", u"a\nb"), "no");
}

TEST(RegExpMatcher, QuirkLineStartKnowsTheCarriageReturnAtTheFirstTestOnly) {
    EXPECT_EQ(match(u"\\r^b", u"a\rb"), "1 2 \\u000Db");
    EXPECT_EQ(match(u"^b", u"a\rb"), "2 1 b");  // the root comes by the position behind it
    // Both sides look ahead from the front, and there only a line feed begins a further line.
    EXPECT_EQ(match(u"^b|c", u"a\rbc"), "3 1 c");
    EXPECT_EQ(match(u"^b|c", u"a\nbc"), "2 1 b");
    Expression run(u"(?:^b)");
    EXPECT_TRUE(run.on(u"a\rb"));
    EXPECT_EQ(run.start, 2u);
}

TEST(RegExpMatcher, ANulEndsTheLookForLines) {
    EXPECT_EQ(match(u"x*^b", std::u16string(u"xa\0\nb", 5)), "4 1 b");
    EXPECT_EQ(match(u"a$", std::u16string(u"a\0\n", 3)), "no");
}

TEST(RegExpMatcher, LineEnd) {
    EXPECT_EQ(match(u"c$", u"abc"), "2 1 c");
    EXPECT_EQ(match(u"b$", u"ab\nb"), "1 1 b");
    EXPECT_EQ(match(u"b$", u"ab\r\nb"), "1 1 b");
    EXPECT_EQ(match(u"b$", u"b\rb"), "2 1 b");
    EXPECT_EQ(match(u"$", u"a\n"), "1 0 ");
    EXPECT_EQ(match(u"$", u"ab\r\n"), "2 0 ");
    EXPECT_EQ(match(u"$\\n", u"ab\r\n"), "3 1 \n");
    EXPECT_EQ(match(u"$\\n", u"\n"), "0 1 \n");
    EXPECT_EQ(match(u"$a", u"\n\n"), "no");
}

TEST(RegExpMatcher, QuirkALoneLineEndDoesNotFindTheEndOfTheInput) {
    EXPECT_EQ(match(u"$", u"abc"), "no");
}

TEST(RegExpMatcher, QuirkBothLookAheadsForbid) {
    EXPECT_EQ(match(u"a(?=b)", u"ab"), "no");
    EXPECT_EQ(match(u"a(?=b)", u"ac"), "0 1 a");
    EXPECT_EQ(match(u"a(?!b)", u"ab"), "no");
    EXPECT_EQ(match(u"a(?!b)", u"abac"), "2 1 a");
    EXPECT_EQ(match(u"a(?!b)", u"a"), "0 1 a");
    EXPECT_EQ(match(u"(?!a).", u"ab"), "1 1 b");
    EXPECT_EQ(match(u"a(?!)", u"a"), "no");
}

// No pattern makes one, but a tree may hold it.
TEST(RegExpMatcher, PositiveLookAhead) {
    Expression run(u"(?=a).");
    run.root.next->kind = ReLookAhead;
    ASSERT_TRUE(run.on(u"xab"));
    EXPECT_EQ(run.start, 1u);
    EXPECT_EQ(run.length, 1u);
    EXPECT_FALSE(run.on(u"xxb"));

    Expression empty(u"(?=)b");
    empty.root.next->kind = ReLookAhead;
    ASSERT_TRUE(empty.on(u"ab"));
    EXPECT_EQ(empty.start, 1u);
    EXPECT_FALSE(empty.on(u"aa"));
}

TEST(RegExpMatcher, Sets) {
    EXPECT_EQ(match(u"[b-d]+", u"abcde"), "1 3 bcd");
    EXPECT_EQ(match(u"[^b-d]+", u"abcde"), "0 1 a");
    EXPECT_EQ(match(u"[^]", u"a"), "0 1 a");
    EXPECT_EQ(match(u"[\u0416\u0418]", u"a\u0418").substr(0, 3), "1 1");
    EXPECT_EQ(match(u"[^\u0416]", u"\u0416\u0418").substr(0, 3), "1 1");
    EXPECT_EQ(match(u"\\d+", u"ab12"), "2 2 12");
    EXPECT_EQ(match(u"\\W", u"a_9-"), "3 1 -");
    EXPECT_EQ(match(u"\\s\\S", u"a \tb"), "2 2 \\u0009b");
}

TEST(RegExpMatcher, QuirkANulIsInEverySetButInNoneWithoutCase) {
    const std::u16string nul(1, u'\0');
    EXPECT_EQ(match(u"[a]", nul).substr(0, 3), "0 1");
    EXPECT_EQ(match(u"[^a]", nul), "no");
    EXPECT_EQ(match(u"[a]", nul, true), "no");
    EXPECT_EQ(match(u"[^a]", nul, true).substr(0, 3), "0 1");
}

TEST(RegExpMatcher, ANulInASetEndsIt) {
    EXPECT_EQ(match(u"[a\\0xb]", u"b"), "no");
    EXPECT_EQ(match(u"[a\\0xb]", u"a"), "0 1 a");
    EXPECT_EQ(match(u"[a\\0xb]", u"b", true), "no");
}

TEST(RegExpMatcher, QuirkWithoutCaseTheTextHasTheCaseOfThePattern) {
    EXPECT_EQ(match(u"ABC", u"xabc", true), "1 3 ABC");
    EXPECT_EQ(match(u"a[B]c", u"xABC", true), "1 3 aBc");
    EXPECT_EQ(match(u"A.", u"ab", true), "0 2 Ab");
    EXPECT_EQ(match(u"(A+)b", u"xaaB", true), "1 3 AAb [AA]");
    EXPECT_EQ(match(u"(?:A|[x])*y", u"aXaY", true), "0 4 AXAy");
    EXPECT_EQ(match(u"(?:A.)*?C", u"abaBc", true), "0 5 AbABC");
}

TEST(RegExpMatcher, CaseIsThatOfAsciiOnly) {
    EXPECT_EQ(match(u"a", u"A"), "no");
    EXPECT_EQ(match(u"\u00e9", u"\u00c9", true), "no");
    EXPECT_EQ(match(u"[\u00e9z]", u"\u00c9Z", true), "1 1 Z");
    EXPECT_EQ(match(u"[^z]", u"Zz", true), "no");
}

TEST(RegExpMatcher, SpaceEdge) {
    EXPECT_EQ(match(u"foo\\b", u"foo"), "0 3 foo");
    EXPECT_EQ(match(u"foo\\b", u"foo bar"), "0 3 foo");
    EXPECT_EQ(match(u"foo\\b", u"foo\u3000bar"), "0 3 foo");
    EXPECT_EQ(match(u"\\Ba", u"a"), "0 1 a");
    EXPECT_EQ(match(u"a\\B", u"a"), "no");
    EXPECT_EQ(match(u"\\b a", u" a"), "0 2  a");
}

// Ends the run after so many questions.
bool askLimited(void* context) {
    return --*static_cast<int*>(context) < 0;
}

PatternFailure endlessFailure(const std::u16string& pattern, const std::u16string& input,
                              int questions = 5000) {
    Expression run(pattern);
    run.matcher.setInterrupt(askLimited, &questions);
    EXPECT_FALSE(run.on(input));
    return run.matcher.failure();
}

TEST(RegExpMatcher, EndlessRunsEndByInterruptOnly) {
    EXPECT_EQ(endlessFailure(u"\\bfoo", u"foo bar"), PatternFailure::interrupted);
    EXPECT_EQ(endlessFailure(u"\\B", u" a"), PatternFailure::interrupted);
    EXPECT_EQ(endlessFailure(u"\\B ", u"a "), PatternFailure::interrupted);
    EXPECT_EQ(endlessFailure(u"(?:a*)*", u"b"), PatternFailure::interrupted);
    EXPECT_EQ(endlessFailure(u"(?:a*)*?b", u"aacb"), PatternFailure::interrupted);
    EXPECT_EQ(endlessFailure(u"(?:)+", u"b"), PatternFailure::interrupted);
    EXPECT_EQ(endlessFailure(u"(?:^)*x", u"abx"), PatternFailure::interrupted);
    EXPECT_EQ(endlessFailure(u"(?:a*){3}", u"b", 100), PatternFailure::interrupted);
}

// Counts questions and ends the run when memory in use has grown between two of them, late in the run.
TEST(RegExpMatcher, EndlessRunsDoNotFillTheMemory) {
    for (const char16_t* pattern : {u"(?:(a*))*", u"\\b(?:(a))", u"(?:(a*))*?c"}) {
        Expression run(pattern);
        struct Watch {
            JSRegExpMatcher& matcher;
            int questions = 0;
            int32_t early = 0;
        } watch{run.matcher};
        run.matcher.setInterrupt(
            [](void* context) {
                Watch& w = *static_cast<Watch*>(context);
                if (++w.questions == 4000) w.early = w.matcher.captures.count();
                return w.questions == 20000;
            },
            &watch);
        EXPECT_FALSE(run.on(u" bac"));
        EXPECT_EQ(watch.questions, 20000);
        EXPECT_EQ(run.matcher.captures.count(), watch.early);
        EXPECT_LT(watch.early, 300000);
    }
}

TEST(RegExpMatcher, BoundedRepetitionsOfNothingEnd) {
    EXPECT_EQ(match(u"(?:a*)?", u"b"), "0 0 ");
    EXPECT_EQ(match(u"(?:a*){2,9,c", u"aac"), "0 3 aac");
}

TEST(RegExpMatcher, AnAbsentTreeMatchesEverythingAsNothing) {
    JSRegExpMatcher matcher;
    uint32_t start = 9;
    uint32_t length = 9;
    BString found(u"x");
    EXPECT_TRUE(matcher.matchNode(u"", 0, nullptr, start, length, found));
    EXPECT_EQ(start, 0u);
    EXPECT_EQ(length, 0u);
    EXPECT_TRUE(found.isEmpty());
}

TEST(RegExpMatcher, QuirkAQuantifierAtTheStartMatchesTheEmptyText) {
    EXPECT_EQ(match(u"*a", u"xyz"), "0 0 ");
    EXPECT_EQ(match(u"?", u"x"), "0 0 ");
}

TEST(RegExpMatcher, DeepTreesFailWithoutACrash) {
    const std::u16string pattern = std::u16string(1000000, u'a') + u"$";
    Expression chain(pattern);
    EXPECT_FALSE(chain.on(std::u16string(1000000, u'a')));
    EXPECT_EQ(chain.matcher.failure(), PatternFailure::stackOverflow);
    EXPECT_FALSE(chain.on(u"b"));
    EXPECT_EQ(chain.matcher.failure(), PatternFailure::none);

    Expression small(std::u16string(1000, u'a') + u"$");
    EXPECT_TRUE(small.on(std::u16string(1000, u'a')));
}

TEST(RegExpMatcher, AnEndingOfUnitsTakesNoNativeStack) {
    const std::u16string pattern(1000000, u'a');
    Expression chain(pattern);
    EXPECT_TRUE(chain.on(pattern));
    EXPECT_EQ(chain.length, 1000000u);
}

// The same pattern with and without an ending that is tried at one place: an empty group behind it takes that
// away.
TEST(RegExpMatcher, AnEndingOfUnitsIsOnlyQuicker) {
    const char16_t* const patterns[] = {u"ab",         u"a*b",        u"a+?bc",   u"[ab]+c",
                                        u"(?:ab|.c)d", u"x|ab",       u"a{1,2,b", u"(?:a.)*b",
                                        u"(a)(.)bc",   u"(?:a|ab)+c", u".*b.",    u"a?[^a]c"};
    const char16_t letters[] = {u'a', u'b', u'c', u'd'};
    for (const char16_t* pattern : patterns) {
        Expression quick(pattern);
        Expression slow(pattern);
        // As if no ending were plain.
        std::vector<JSPatternNode*> waiting = {&slow.root};
        while (!waiting.empty()) {
            JSPatternNode* node = waiting.back();
            waiting.pop_back();
            if (node == nullptr) continue;
            node->isPlainEnding = false;
            waiting.push_back(node->next);
            waiting.push_back(node->body);
        }
        for (int code = 0; code < 4096; ++code) {
            std::u16string input;
            for (int rest = code; input.size() < 6; rest /= 4) input += letters[rest % 4];
            const bool isFound = slow.on(input);
            ASSERT_EQ(quick.on(input), isFound);
            if (!isFound) continue;
            ASSERT_EQ(quick.start, slow.start);
            ASSERT_EQ(quick.length, slow.length);
            ASSERT_TRUE(quick.found == slow.found);
        }
    }
}

// The group has no number of its own, so each turn adds a capture; with the ninth the reference leads to its
// own group.
TEST(RegExpMatcher, AReferenceIntoItselfDoesNotCrash) {
    Expression run(u"(?:(a|\\8a))*");
    EXPECT_TRUE(run.on(u"aaaaaaaa"));
    EXPECT_EQ(run.matcher.captures.count(), 8);
    EXPECT_FALSE(run.on(u"aaaaaaaa"));
    EXPECT_EQ(run.matcher.failure(), PatternFailure::stackOverflow);
}

TEST(RegExpMatcher, LongMatchesTakeLinearTime) {
    const std::u16string input(300000, u'a');
    Expression run(u"(a*)");
    ASSERT_TRUE(run.on(input));
    EXPECT_EQ(run.length, 300000u);
    Expression folded(u"A*", true);
    ASSERT_TRUE(folded.on(input));
    EXPECT_EQ(folded.found[299999], u'A');
}

TEST(RegExpMatcher, MatchPatternOnce) {
    JSRegExpMatcher matcher;
    int32_t start = 0;
    int32_t length = 0;
    EXPECT_EQ(ascii(matcher.matchPatternOnce(u"xaab", u"a+", start, length)), "aa");
    EXPECT_EQ(start, 1);
    EXPECT_EQ(length, 2);
    EXPECT_TRUE(matcher.matchPatternOnce(u"xb", u"a+", start, length).isEmpty());
    EXPECT_EQ(start, -1);
    EXPECT_EQ(length, -1);
    start = length = 0;
    EXPECT_TRUE(matcher.matchPatternOnce(u"(", u"(", start, length).isEmpty());
    EXPECT_EQ(start, -1);
    EXPECT_EQ(length, -1);
    EXPECT_TRUE(matcher.matchPatternOnce(u"ab", u"*", start, length).isEmpty());
    EXPECT_EQ(start, 0);
    EXPECT_EQ(length, 0);
}

TEST(RegExpMatcher, MatchPatternOnceOnTheRestOfAText) {
    JSRegExpMatcher matcher;
    int32_t start = 0;
    int32_t length = 0;
    EXPECT_EQ(ascii(matcher.matchPatternOnce(u"ab\ncb", u"^.b", start, length, 3)), "cb");
    EXPECT_EQ(start, 0);
    EXPECT_EQ(length, 2);
    EXPECT_TRUE(matcher.matchPatternOnce(u"ab", u"", start, length, 2).isEmpty());
    EXPECT_EQ(start, -1);
}

TEST(RegExpMatcher, CapturesLiveThroughTheTurnsOfMatchPatternOnce) {
    JSRegExpMatcher matcher;
    int32_t start = 0;
    int32_t length = 0;
    EXPECT_EQ(ascii(matcher.matchPatternOnce(u"ab", u"(.)\\0.", start, length)), "ab");
    EXPECT_EQ(ascii(matcher.matchPatternOnce(u"aab", u"(.)\\0.", start, length)), "aab");
}

TEST(RegExpMatcher, SurvivesEveryFailedAllocation) {
    const BString input(u"xxABBcccD, aBBcE");
    const BString pattern(u"(A)(?:(b)|q)+([c]*)E|z");
    uint64_t failures = 0;
    for (uint64_t count = 1;; ++count) {
        JSRegExpMatcher matcher;
        matcher.ignoreCase = true;
        int32_t start = 0;
        int32_t length = 0;
        failAllocation(count);
        const BString found = matcher.matchPatternOnce(input, pattern, start, length);
        const bool hasFailed = allocationHasFailed();
        cancelAllocationFailure();
        if (!hasFailed) {
            EXPECT_EQ(start, 11);
            EXPECT_EQ(ascii(found), "AbbcE");
            break;
        }
        ++failures;
        EXPECT_EQ(start, -1);
        EXPECT_EQ(matcher.failure(), PatternFailure::outOfMemory);
    }
    EXPECT_GT(failures, 20u);
}

}  // namespace
}  // namespace quorvelin
