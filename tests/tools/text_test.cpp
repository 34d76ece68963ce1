#include "tools/io/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <locale>
#include <optional>
#include <random>
#include <sstream>

namespace {

using mokshape::formatFixed;
using mokshape::formatNumber;
using mokshape::formatSignificant;
using mokshape::parseNumber;
using mokshape::printable;

/// Writes 1234.5 as "1.234,5".
class CommaLocale : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class UnderCommaLocale : public testing::Test {
  protected:
    UnderCommaLocale() : old_(std::locale::global(std::locale(std::locale(), new CommaLocale))) {}
    ~UnderCommaLocale() override { std::locale::global(old_); }

  private:
    std::locale old_;
};

TEST_F(UnderCommaLocale, NumbersKeepTheirPoint) {
    std::ostringstream localised;
    localised << 1234.5;
    ASSERT_EQ(localised.str(), "1.234,5");
    EXPECT_EQ(formatNumber(1234.5), "1234.5");
    EXPECT_EQ(formatFixed(1234.5, 2), "1234.50");
    EXPECT_EQ(formatSignificant(1234.5, 3), "1.23e+03");
    EXPECT_EQ(parseNumber("1234.5"), std::optional(1234.5));
    EXPECT_EQ(parseNumber("1234,5"), std::nullopt);
}

TEST_F(UnderCommaLocale, EveryFiniteNumberComesBackToTheBit) {
    std::mt19937_64 random(20260728);
    int finite = 0;
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        if (value - value != 0.0)
            continue;
        ++finite;
        const std::optional<double> back = parseNumber(formatNumber(value));
        ASSERT_TRUE(back) << formatNumber(value);
        ASSERT_EQ(std::memcmp(&*back, &value, sizeof value), 0) << formatNumber(value);
    }
    EXPECT_GT(finite, 90000);
}

TEST(NumberText, IsTheShortestThatRoundTrips) {
    EXPECT_EQ(formatNumber(0.1), "0.1");
    EXPECT_EQ(formatNumber(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(formatNumber(-0.0), "-0");
    EXPECT_EQ(formatNumber(5e-324), "5e-324");
}

TEST(NumberText, FixedNeverShowsMinusZero) {
    EXPECT_EQ(formatFixed(-0.004, 2), "0.00");
    EXPECT_EQ(formatFixed(-0.006, 2), "-0.01");
    EXPECT_EQ(formatFixed(-0.0, 0), "0");
}

TEST(NumberText, FixedHoldsTheLargestNumbers) {
    EXPECT_EQ(formatFixed(-std::numeric_limits<double>::max(), 2).size(), 1u + 309u + 3u);
}

TEST(ParseNumber, ReadsWhatFilesHold) {
    EXPECT_EQ(parseNumber("0"), std::optional(0.0));
    EXPECT_EQ(parseNumber("+1.5"), std::optional(1.5));
    EXPECT_EQ(parseNumber("-1.5E+3"), std::optional(-1500.0));
    EXPECT_EQ(parseNumber(".5"), std::optional(0.5));
    EXPECT_EQ(parseNumber("5."), std::optional(5.0));
}

TEST(ParseNumber, RefusesEverythingElse) {
    for (const char* text : {"", "+", "-", "+-1", "1x", "1 ", " 1", "0x10", "nan", "NaN", "inf", "-infinity", "1e400",
                             "-1e5000", "1,5", "e5"})
        EXPECT_EQ(parseNumber(text), std::nullopt) << '"' << text << '"';
}

TEST(ParseNumber, RoundsWhatIsTooSmallToZero) {
    EXPECT_EQ(parseNumber("1e-400"), std::optional(0.0));
    EXPECT_EQ(parseNumber("-1e-400"), std::optional(0.0));
    EXPECT_EQ(parseNumber("4e-324"), std::optional(std::numeric_limits<double>::denorm_min()));
}

TEST(Printable, ReplacesControlCharactersAndCutsLongTexts) {
    EXPECT_EQ(printable("a\x1b[31mb\n\x7f"), "a?[31mb??");
    EXPECT_EQ(printable("abcdef", 3), "abc...");
    EXPECT_EQ(printable("caf\xc3\xa9"), "caf\xc3\xa9");
}

}  // namespace
