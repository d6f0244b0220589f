#include "model/decimal_text.h"
#include "model/number_text.h"
#include "ports/runtime_error.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nrv::model {
namespace {

void ExpectRefused(const std::string& text, ErrorKind kind, const std::string& why) {
    try {
        const double value = ParseNumber(text);
        ADD_FAILURE() << '"' << text << "\" read as " << value;
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Kind(), kind) << text;
        EXPECT_EQ(error.what(), '"' + text + "\" " + why);
    }
}

TEST(NumberText, IsTheDecimalAPersonExpects) {
    const std::vector<std::pair<double, std::string>> cases{{0.0, "0"},
                                                            {-0.0, "0"},
                                                            {1.0, "1"},
                                                            {-1.0, "-1"},
                                                            {0.2, "0.2"},
                                                            {-3.8, "-3.8"},
                                                            {8.2 - 12.0, "-3.8"},
                                                            {13.6 - 15.0, "-1.4"},
                                                            {0.1 + 0.2, "0.3"},
                                                            {2500.987, "2500.987"},
                                                            {20000.0, "20000"},
                                                            {100.0, "100"},
                                                            {0.021, "0.021"},
                                                            {0.00714, "0.00714"},
                                                            {0.0001, "0.0001"},
                                                            {11.1, "11.1"},
                                                            {1.0 / 3.0, "0.333333333333333"},
                                                            {2.0 / 3.0, "0.666666666666667"},
                                                            {0.9999999999999999, "1"},
                                                            {99999.99999999999999, "100000"},
                                                            {1e9, "1000000000"},
                                                            {123456789012345.0, "123456789012345"},
                                                            {999999999999999.0, "999999999999999"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(NumberText(value), text);
    }
}

TEST(NumberText, WritesAndReadsBackEveryThousandthOfTheOrdinaryRange) {
    for (long units = -30000; units <= 30000; ++units) {
        const double value = static_cast<double>(units) / 1000.0;
        const std::string text = NumberText(value);
        ASSERT_EQ(text, DecimalText(units, 3));
        ASSERT_EQ(ParseNumber(text), value);
    }
}

TEST(NumberText, ReadsBackToFifteenDigitsWithoutAnExponent) {
    std::mt19937_64 random(20240517);
    std::uniform_real_distribution<double> mantissa(1.0, 9.99);
    std::uniform_int_distribution<int> exponent(-4, 14);
    for (int i = 0; i < 20000; ++i) {
        const double value = mantissa(random) * std::pow(10.0, exponent(random)) * (i % 2 == 0 ? 1.0 : -1.0);
        const std::string text = NumberText(value);
        ASSERT_EQ(text.find('e'), std::string::npos) << text;
        ASSERT_NEAR(ParseNumber(text) / value, 1.0, 6e-15) << value;
    }
}

TEST(ParseNumber, ReadsWhatAPersonTypes) {
    const std::vector<std::pair<std::string_view, double>> cases{
        {"0", 0.0},
        {"1000", 1000.0},
        {"0.2", 0.2},
        {"-1.4", -1.4},
        {"+3", 3.0},
        {".5", 0.5},
        {"5.", 5.0},
        {"-.5", -0.5},
        {"007", 7.0},
        {"  12  ", 12.0},
        {"\t12\r\n", 12.0},
        {"1e9", 1e9},
        {"1E9", 1e9},
        {"1e+3", 1e3},
        {"2.5e-3", 0.0025},
        {"1e009", 1e9},
        {"1.7976931348623157e308", 1.7976931348623157e308},
        {"123456789012345678901234567890", 1.2345678901234568e29}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(ParseNumber(text), value) << text;
    }
    EXPECT_EQ(ParseNumber(std::string(1000, '0') + "1"), 1.0);
}

TEST(ParseNumber, RefusesWhatIsNoNumber) {
    for (const std::string_view text :
         {"",      " ",     "?",     "1,5",   "inf",   "-inf",  "nan",   "NaN",  "infinity", "0x10",
          "12abc", "abc",   "1 2",   "- 1",   "--1",   "+-1",   "1-",    ".",    "-",        "+",
          "e9",    ".e9",   "1e",    "1e+",   "1e 9",  "1e1.5", "1.2.3", "1..2", "1f",       "1d5",
          "&H10",  "12 ms", "1_000", "1'000", "\2401", "\xB2",  "10?",   "?10"}) {
        ExpectRefused(std::string(text), ErrorKind::TypeMismatch, "is no number.");
    }
    EXPECT_THROW(ParseNumber(std::string_view("1\0", 2)), RuntimeError);
}

TEST(ParseNumber, RefusesWhatIsTooLarge) {
    for (const std::string& text :
         {std::string("1e309"), std::string("-1e309"), std::string("1.8e308"), std::string("1e99999999999999999999"),
          "1" + std::string(400, '0'), "1" + std::string(400, '0') + ".5"}) {
        ExpectRefused(text, ErrorKind::Overflow, "is too large.");
    }
}

TEST(ParseNumber, TakesWhatIsTooSmallForZero) {
    for (const std::string_view text :
         {"1e-400", "-1e-400", "1E-400", "1e-99999999999999999999", "1000e-400", "0e999", "0.0e-999"}) {
        EXPECT_EQ(ParseNumber(text), 0.0) << text;
    }
    EXPECT_EQ(ParseNumber("5e-324"), std::numeric_limits<double>::denorm_min());
}

} // namespace
} // namespace nrv::model
