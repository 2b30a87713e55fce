#include "stdlib/util/printf_engine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "host/allocator.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::ascii;

// Arguments as numbers; a text stands in a list of its own.
class ListEngine : public JSPrintfEngine {
  public:
    explicit ListEngine(std::vector<double> list, std::vector<std::u16string> textList = {})
        : numbers(std::move(list)), texts(std::move(textList)) {}

    std::vector<double> numbers;
    std::vector<std::u16string> texts;
    std::string calls;
    int passes = 0;

  protected:
    char16_t nextChar() override { return static_cast<char16_t>(integer()); }
    int16_t nextShort() override { return static_cast<int16_t>(sized("h")); }
    int32_t nextInt() override { return static_cast<int32_t>(integer()); }
    int32_t nextLong() override { return static_cast<int32_t>(sized("l")); }
    int64_t nextInt64() override { return sized("I"); }
    double nextDouble() override { return number(); }
    double nextLongDouble() override {
        calls += "L";
        return number();
    }
    void* nextPointer() override {
        ++index_;
        return nullptr;
    }
    uint32_t nextPointerValue() override {
        ++index_;
        return 0;
    }
    const BString& nextString() override {
        const size_t i = static_cast<size_t>(index_++ - 1);
        current = i < texts.size() ? BString(texts[i].c_str()) : BString();
        // A text that depends on the pass, as script code may give one.
        if (current == BString(u"grow")) current = passes == 1 ? u"ab" : u"abcd";
        if (current == BString(u"shrink")) current = passes == 1 ? u"abcd" : u"ab";
        return current;
    }
    void releaseString() override { current.clear(); }
    void begin(const char16_t* format, char16_t* buffer) override {
        ++passes;
        calls.clear();
        JSPrintfEngine::begin(format, buffer);
    }

  private:
    int64_t sized(const char* size) {
        calls += size;
        return integer();
    }
    double number() {
        const size_t i = static_cast<size_t>(index_++ - 1);
        return i < numbers.size() ? numbers[i] : 0;
    }
    int64_t integer() { return static_cast<int64_t>(number()); }

    BString current;
};

std::string print(const char16_t* format, std::vector<double> numbers = {},
                  std::vector<std::u16string> texts = {}) {
    ListEngine engine(std::move(numbers), std::move(texts));
    return ascii(engine.run(format));
}

TEST(Printf, CopiesText) {
    EXPECT_EQ(print(u""), "");
    EXPECT_EQ(print(u"abc"), "abc");
    EXPECT_EQ(print(u"%%"), "%");
    EXPECT_EQ(print(u"100%% of %d", {3}), "100% of 3");
}

TEST(Printf, WidthAndPadding) {
    EXPECT_EQ(print(u"%5d|%-5d|%05d", {1, 2, 3}), "    1|2    |00003");
    EXPECT_EQ(print(u"%-05d|", {7}), "7    |");
    EXPECT_EQ(print(u"%0-5d|", {7}), "7    |");
    EXPECT_EQ(print(u"%2d", {12345}), "12345");
    EXPECT_EQ(print(u"%*d|%*d|", {4, 1, -4, 2}), "   1|2   |");
}

TEST(Printf, QuirkPaddingZerosStandBeforeTheSign) {
    EXPECT_EQ(print(u"%05d", {-42}), "00-42");
    EXPECT_EQ(print(u"%+05d", {42}), "00+42");
    EXPECT_EQ(print(u"%#06x", {255}), "000xff");
    EXPECT_EQ(print(u"%08.2f", {-1.5}), "000-1.50");
}

TEST(Printf, QuirkThePadIsFixedBeforeAnArgumentSetsTheSide) {
    EXPECT_EQ(print(u"%0*d|", {-4, 7}), "7000|");
}

TEST(Printf, Signs) {
    EXPECT_EQ(print(u"%d % d %+d %+ d", {5, 5, 5, 5}), "5  5 +5 +5");
    EXPECT_EQ(print(u"%d % d %+d", {-5, -5, -5}), "-5 -5 -5");
    EXPECT_EQ(print(u"%i", {-2147483648.0}), "-2147483648");
    EXPECT_EQ(print(u"%+u % u", {5, 5}), "5 5");
}

TEST(Printf, Bases) {
    EXPECT_EQ(print(u"%u %o %x %X", {10, 10, 171, 171}), "10 12 ab AB");
    EXPECT_EQ(print(u"%#o %#x %#X %#u %#d", {8, 255, 255, 9, 9}), "010 0xff 0XFF 9 9");
    EXPECT_EQ(print(u"%u %x", {-1, -1}), "4294967295 ffffffff");
}

TEST(Printf, Precision) {
    EXPECT_EQ(print(u"%.3d|%.0d|%.d|%.0d", {7, 0, 0, 5}), "007|||5");
    EXPECT_EQ(print(u"%6.3d|%-6.3d|", {-7, -7}), "  -007|-007  |");
    EXPECT_EQ(print(u"%.*d|%.*d", {3, 7, -3, 7}), "007|7");
}

TEST(Printf, Grouping) {
    EXPECT_EQ(print(u"%,d", {1234567}), "1,234,567");
    EXPECT_EQ(print(u"%,d %,d %,d", {123, 1234, -123456}), "123 1,234 -123,456");
    EXPECT_EQ(print(u"%,.2f", {1234567.25}), "1,234,567.25");
    EXPECT_EQ(print(u"%,.0f %,.0f %,g", {100.0, 1000.0, 12345.0}), "100 1,000 12,345");
    EXPECT_EQ(print(u"%,.2e", {123456.0}), "1.23e+05");
    EXPECT_EQ(print(u"%,12d|", {1234567}), "   1,234,567|");
}

TEST(Printf, SizesPickTheRead) {
    ListEngine engine({65537, 1, 2, 3, 4.5});
    EXPECT_EQ(ascii(engine.run(u"%hd %ld %Ld %I64d %Lf")), "1 1 2 3 4.500000");
    EXPECT_EQ(engine.calls, "hllIL");
    EXPECT_EQ(print(u"%hu %hx", {-1, -1}), "65535 ffff");
    EXPECT_EQ(print(u"%I64d %I64u", {-5, -1}), "-5 18446744073709551615");
}

TEST(Printf, QuirkABadSizeTakesTheConversionAway) {
    EXPECT_EQ(print(u"a%I32dz", {5}), "a32dz");
    EXPECT_EQ(print(u"%5I6%d", {5}), "65");
}

TEST(Printf, Characters) {
    EXPECT_EQ(print(u"%c%C", {65, 66}), "AB");
    EXPECT_EQ(print(u"%3c|%-3c|%03c", {65, 66, 67}), "  A|B  |00C");
    ListEngine engine({0});
    EXPECT_EQ(engine.run(u"%c").length(), 1);
}

TEST(Printf, Texts) {
    EXPECT_EQ(print(u"<%s>", {}, {u"abc"}), "<abc>");
    EXPECT_EQ(print(u"%5s|%-5s|%05s", {}, {u"ab", u"cd", u"ef"}), "   ab|cd   |000ef");
}

TEST(Printf, QuirkAPrecisionDoesNotCutAText) {
    EXPECT_EQ(print(u"%.1s", {}, {u"abc"}), "abc");
}

TEST(Printf, PointersAreZero) {
    EXPECT_EQ(print(u"%p", {5}), "00000000");
    EXPECT_EQ(print(u"%10p|%-10p|%010p", {5, 5, 5}), "  00000000|00000000  |0000000000");
    EXPECT_EQ(print(u"%n%d", {5, 6}), "6");
}

TEST(Printf, OtherLettersAreDropped) {
    EXPECT_EQ(print(u"a%qb%5.2kc%lld", {1}), "abcd");
    EXPECT_EQ(print(u"%"), "");
    EXPECT_EQ(print(u"%5"), "");
    EXPECT_EQ(print(u"%-5."), "");
    EXPECT_EQ(print(u"%l"), "");
    EXPECT_EQ(print(u"%I"), "");
}

TEST(Printf, MissingArguments) {
    EXPECT_EQ(print(u"%d %s|%c", {}), "0 |\\u0000");
}

TEST(Printf, FixedPoint) {
    EXPECT_EQ(print(u"%f %f", {1.5, -0.25}), "1.500000 -0.250000");
    EXPECT_EQ(print(u"%.2f %.1f %.0f", {3.14159, 100, 7.75}), "3.14 100.0 7");
    EXPECT_EQ(print(u"%#.0f", {7}), "7.");
    EXPECT_EQ(print(u"%f", {0}), "0.000000");
    EXPECT_EQ(print(u"%8.3f|%-8.3f|%+.1f", {1.5, 1.5, 2}), "   1.500|1.500   |+2.0");
    EXPECT_EQ(print(u"%.3f", {0.0625}), "0.062");
    EXPECT_EQ(print(u"%.5f", {0.00012}).substr(0, 6), "0.0001");
    EXPECT_EQ(print(u"%.2f", {1e-9}), "0.00");
    EXPECT_EQ(print(u"%.0f", {1e20}), "100000000000000000000");
    EXPECT_EQ(print(u"%.20f", {0.5}), "0.50000000000000000000");
}

TEST(Printf, QuirkTheLastDigitIsCutNotRounded) {
    EXPECT_EQ(print(u"%.1f", {0.19}), "0.1");
    EXPECT_EQ(print(u"%.0f", {0.99}), "0");
    EXPECT_EQ(print(u"%.2f", {1.999}), "1.99");
}

TEST(Printf, OnlySixteenDigitsAreMade) {
    EXPECT_EQ(print(u"%.25f", {1.0 / 3}).substr(18), "000000000");
    EXPECT_EQ(print(u"%.0f", {12345678901234567890.0}).substr(16), "0000");
}

TEST(Printf, Exponents) {
    EXPECT_EQ(print(u"%e", {1.5}), "1.500000e+00");
    EXPECT_EQ(print(u"%.2e %.2E", {12345, 12345}), "1.23e+04 1.23E+04");
    EXPECT_EQ(print(u"%.0e %#.0e", {500, 500}), "5e+02 5.e+02");
    EXPECT_EQ(print(u"%.1e", {0.0625}), "6.2e-02");
    EXPECT_EQ(print(u"%.1e", {1e100}).substr(3), "e+100");
    EXPECT_EQ(print(u"%e", {0}), "0.000000e+00");
}

TEST(Printf, General) {
    EXPECT_EQ(print(u"%g %g %g", {100, 1.5, 0.5}), "100 1.5 0.5");
    EXPECT_EQ(print(u"%g", {1e6}), "1e+06");
    EXPECT_EQ(print(u"%g", {100000}), "100000");
    EXPECT_EQ(print(u"%G", {1e20}), "1E+20");
    EXPECT_EQ(print(u"%g", {0}), "0");
    EXPECT_EQ(print(u"%#g", {1.5}), "1.50000");
    EXPECT_EQ(print(u"%.3g", {1234}), "1.23e+03");
    EXPECT_EQ(print(u"%.3g", {0.0009765625}), "0.000976");
    EXPECT_EQ(print(u"%g", {0.0000152587890625}), "1.52587e-05");
    EXPECT_EQ(print(u"%.0g", {7}), "7");
    EXPECT_EQ(print(u"%g %g", {65535, 97}), "65535 97");  // zeros in front of digits that are not shown
    EXPECT_EQ(print(u"%.30g", {2.5}), "2.5");
}

TEST(Printf, QuirkZeroWithoutDecimalsIsASingleZero) {
    EXPECT_EQ(print(u"%.0f|%.0e|%.0g|%3.0f|%+.0f", {0, 0, 0, 0, 0}), "0|0|0|  0|0");
}

TEST(Printf, NotFiniteNumbersAreWords) {
    EXPECT_EQ(print(u"%f %e", {HUGE_VAL, -HUGE_VAL}), "+Infinity -Infinity");
    EXPECT_EQ(print(u"%12.2f|%-11f|", {HUGE_VAL, -HUGE_VAL}), "   +Infinity|-Infinity  |");
}

TEST(Printf, QuirkANanPrintsAsMinusInfinity) {
    EXPECT_EQ(print(u"%g", {std::nan("")}), "-Infinity");
}

TEST(Printf, ArgumentsAreReadTwice) {
    ListEngine engine({}, {u"abc"});
    engine.run(u"%s");
    EXPECT_EQ(engine.passes, 2);
    ListEngine empty({});
    EXPECT_EQ(empty.run(u"%q").length(), 0);
}

TEST(Printf, ATextThatChangesBetweenThePassesStaysInTheBuffer) {
    EXPECT_EQ(print(u"<%s>", {}, {u"grow"}), "<abc");
    EXPECT_EQ(print(u"<%s>", {}, {u"shrink"}), "<ab>");
}

TEST(Printf, HugeFieldsGiveTheEmptyText) {
    EXPECT_EQ(print(u"%2000000000d", {1}), "");
    EXPECT_EQ(print(u"%.2000000000d", {1}), "");
    EXPECT_EQ(print(u"%.2000000000f", {1}), "");
}

TEST(Printf, WithoutMemoryTheTextIsEmpty) {
    ListEngine engine({7});
    failAllocation(1);
    const BString text = engine.run(u"abc %d");
    cancelAllocationFailure();
    EXPECT_EQ(text.length(), 0);
}

}  // namespace
}  // namespace quorvelin
