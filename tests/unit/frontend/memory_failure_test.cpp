// Failing memory in the front end: every allocation in turn, once and from there on. Nothing may crash or
// leak, and a script must never be taken for another one: the answer is the right tree, an error, or nothing.
#include <gtest/gtest.h>

#include "host/allocator.h"
#include "support/script_text.h"
#include "support/syntax.h"

namespace quorvelin {
namespace {

using support::ascii;
using support::outline;
using support::parse;

class MemoryFailure : public testing::TestWithParam<AllocationFailure> {
  protected:
    void TearDown() override { cancelAllocationFailure(); }
};

const std::u16string_view kScripts[] = {
    u"",
    u"a",
    u"x = 1 + 'two' * f(3)",
    u"firstName = secondName; thirdName = firstName",
    u"var a, b = 1, c",
    u"function f(a, b) { return a.b(1)[2] }",
    u"if (a) { b } else c; for (i = 0; i < 1; i++) { break; } while (x) { continue l; }",
    u"switch (x) { case 1: a; case 2: b; default: c }",
    u"do { a } while (b); with (o) p; l: m",
    u"a ? b : c, !d, e++, new F, [1, 2], /r/",
    u"a_rather_long_identifier_that_does_not_fit_into_the_first_buffer_of_a_text = "
    u"'and a rather long string that does not fit into the first buffer of a text either'",
    u"a;b;c;d;e;f;g;h;i;j;k;l;m;n;o;p;q;r;s;t;u;v;w;x;y;z",
};

bool saysOutOfMemory(const std::string& message) {
    for (const char* text : {"): Out of memory", "): Out of Memory", "): out of memory"}) {
        const std::string ending(text);
        if (message.size() > ending.size() && message.substr(message.size() - ending.size()) == ending)
            return true;
    }
    // No memory was left for the whole message either.
    return std::string("Error(Ln ").compare(0, message.size(), message, 0, 9) == 0 || message.empty();
}

TEST_P(MemoryFailure, WhileParsing) {
    for (const std::u16string_view script : kScripts) {
        const std::string expected = outline(parse(script).get());
        bool failed = true;
        for (uint64_t count = 1; failed; ++count) {
            failAllocation(count, GetParam());
            const BString text = support::textOf(script);
            if (allocationHasFailed()) {  // the text of the test itself
                cancelAllocationFailure();
                continue;
            }
            const Owned<JSNode> root = support::parseText(text);
            failed = allocationHasFailed();
            cancelAllocationFailure();
            if (!root) {
                EXPECT_TRUE(failed) << ascii(script);
            } else if (root->kind == kErrorKind) {
                EXPECT_TRUE(saysOutOfMemory(ascii(static_cast<JSErrorNode&>(*root).message)))
                    << ascii(script) << ": " << ascii(static_cast<JSErrorNode&>(*root).message)
                    << ", allocation " << count;
            } else {
                EXPECT_EQ(outline(root.get()), expected) << "allocation " << count;
            }
        }
    }
}

TEST_P(MemoryFailure, WhileRegenerating) {
    for (const std::u16string_view script : kScripts) {
        const Owned<JSNode> root = parse(script);
        const std::string expected = ascii(root->regenerate());
        bool failed = true;
        for (uint64_t count = 1; failed; ++count) {
            failAllocation(count, GetParam());
            const BString text = root->regenerate();
            failed = allocationHasFailed();
            cancelAllocationFailure();
            // A part of the text could be run as another script.
            if (ascii(text) != expected) {
                EXPECT_TRUE(failed);
                EXPECT_EQ(ascii(text), "");
            }
        }
    }
}

TEST_P(MemoryFailure, WhileSaving) {
    for (const std::u16string_view script : kScripts) {
        const Owned<JSNode> root = parse(script);
        const std::vector<uint8_t> expected = support::saved(root.get());
        bool failed = true;
        for (uint64_t count = 1; failed; ++count) {
            failAllocation(count, GetParam());
            const std::vector<uint8_t> bytes = support::saved(root.get());
            failed = allocationHasFailed();
            cancelAllocationFailure();
            EXPECT_TRUE(bytes == expected || (failed && bytes.empty())) << "allocation " << count;
        }
    }
}

TEST_P(MemoryFailure, WhileLoading) {
    for (const std::u16string_view script : kScripts) {
        const Owned<JSNode> root = parse(script);
        const std::vector<uint8_t> bytes = support::saved(root.get());
        const std::string expected = outline(support::loaded(bytes).get());
        bool failed = true;
        for (uint64_t count = 1; failed; ++count) {
            failAllocation(count, GetParam());
            const Owned<JSNode> readBack = support::loaded(bytes);
            failed = allocationHasFailed();
            cancelAllocationFailure();
            if (readBack) {
                EXPECT_EQ(outline(readBack.get()), expected) << "allocation " << count;
            } else {
                EXPECT_TRUE(failed);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Frontend, MemoryFailure,
                         testing::Values(AllocationFailure::once, AllocationFailure::onwards),
                         [](const testing::TestParamInfo<AllocationFailure>& information) {
                             return information.param == AllocationFailure::once ? "Once" : "Onwards";
                         });

}  // namespace
}  // namespace quorvelin
