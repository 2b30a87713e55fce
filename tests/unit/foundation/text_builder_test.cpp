#include "foundation/text_builder.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;

TEST(TextBuilder, CollectsText) {
    TextBuilder builder;
    EXPECT_EQ(ascii(builder.text()), "");
    builder.append(u'a');
    builder.append(u"bc");
    builder.append(BString(u"de"));
    builder.append(u"fgh", 2);
    builder.append(u"never", 0);
    builder.appendAscii("hi");
    EXPECT_EQ(builder.length(), 9);
    EXPECT_EQ(builder[8], u'i');
    EXPECT_EQ(ascii(builder.text()), "abcdefghi");
    builder.dropLast();
    EXPECT_EQ(ascii(builder.text()), "abcdefgh");
    builder.clear();
    builder.dropLast();
    EXPECT_EQ(builder.length(), 0);
}

TEST(TextBuilder, Numbers) {
    TextBuilder builder;
    builder.appendDecimal(0);
    builder.append(u' ');
    builder.appendDecimal(INT64_MIN);
    builder.append(u' ');
    builder.appendDecimal(INT64_MAX);
    EXPECT_EQ(ascii(builder.text()), "0 -9223372036854775808 9223372036854775807");
}

TEST(TextBuilder, FinishedTextHasTheUsualSize) {
    TextBuilder builder;
    for (int i = 0; i < 100; ++i) builder.append(u'x');
    EXPECT_EQ(builder.text().capacity(), 128);
}

TEST(TextBuilder, WithoutMemoryAPrefixStands) {
    TextBuilder builder;
    builder.append(u"ab");
    failAllocation(1);
    for (int i = 0; i < 100; ++i) builder.append(u"cd");
    builder.append(u"ef");  // memory is back, but what came before is lost
    cancelAllocationFailure();
    EXPECT_TRUE(builder.failed());
    const std::string text = ascii(builder.text());
    EXPECT_EQ(text.substr(0, 2), "ab");
    EXPECT_EQ(text.find('e'), std::string::npos);
    builder.clear();
    EXPECT_FALSE(builder.failed());
}

}  // namespace
}  // namespace quorvelin
