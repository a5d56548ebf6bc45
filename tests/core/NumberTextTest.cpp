#include "document/NumberText.h"

#include "document/Text.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>

namespace quarle {
namespace {

TEST(FloatToText, SevenSignificantDigitsNoTrailingZeros) {
    struct Case {
        f32 value;
        const char* point;
        const char* comma;
    };
    const Case cases[] = {
        {1.8f, "1.8", "1,8"},
        {-0.5f, "-0.5", "-0,5"},
        {0.1f, "0.1", "0,1"},
        {1234567.75f, "1234568", "1234568"},
        {0.0f, "0", "0"},
        {1.0000001f, "1", "1"}, // eighth digit is rounded away
        {3.14159265f, "3.141593", "3,141593"},
        {9999999.0f, "9999999", "9999999"},
        {0.9999999f, "0.9999999", "0,9999999"},
        {0.0099999998f, "0.01", "0,01"}, // rounding carries into a new digit
        {0.0001f, "0.0001", "0,0001"},
        {0.000123456789f, "0.0001234568", "0,0001234568"},
        // Exponent form outside 0.0001 .. 9999999.
        {10000000.0f, "1E+07", "1E+07"},
        {123456789.0f, "1.234568E+08", "1,234568E+08"},
        {0.00001f, "1E-05", "1E-05"},
        {-0.0000025f, "-2.5E-06", "-2,5E-06"},
        {std::numeric_limits<float>::max(), "3.402823E+38", "3,402823E+38"},
        {std::numeric_limits<float>::denorm_min(), "1.401298E-45", "1,401298E-45"},
        // Harmless forms of values a script cannot use.
        {-0.0f, "0", "0"},
        {std::numeric_limits<float>::quiet_NaN(), "0", "0"},
        {std::numeric_limits<float>::infinity(), "3.402823E+38", "3,402823E+38"},
        {-std::numeric_limits<float>::infinity(), "-3.402823E+38", "-3,402823E+38"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FloatToText(c.value, '.'), c.point) << c.point;
        EXPECT_EQ(FloatToText(c.value, ','), c.comma) << c.comma;
        EXPECT_EQ(FloatToPointText(c.value), c.point);
    }
}

TEST(DecimalSeparator, PointAndCommaLocales) {
    for (const char* point :
         {"", "C", "POSIX", "C.UTF-8", "en_US.UTF-8", "en_GB", "de_CH.UTF-8", "xx_YY"}) {
        EXPECT_EQ(DecimalSeparatorOfLocale(point), '.') << point;
    }
    for (const char* comma : {"de_DE.UTF-8", "de_DE@euro", "fr_FR.ISO-8859-1"}) {
        EXPECT_EQ(DecimalSeparatorOfLocale(comma), ',') << comma;
    }
}

TEST(StrictNumber, WholeTextOrNoValue) {
    struct Case {
        const char* text;
        char separator;
        std::optional<double> number;
        std::optional<i16> whole;
    };
    const Case cases[] = {
        {"1,8", ',', 1.8, 2},
        {"12,5", ',', 12.5, 12}, // halves to even
        {"13.5", ',', 13.5, 14}, // a point is taken in every locale
        {" -7 ", '.', -7.0, -7},
        {"+3", '.', 3.0, 3},
        {"1e3", '.', 1000.0, 1000},
        {"32767", '.', 32767.0, 32767},
        {"32768", '.', 32768.0, std::nullopt},
        {"-32768", '.', -32768.0, -32768},
        {"-", '.', std::nullopt, std::nullopt},
        {"", '.', std::nullopt, std::nullopt},
        {".", '.', std::nullopt, std::nullopt},
        {"1.2.3", '.', std::nullopt, std::nullopt},
        {"1,2", '.', std::nullopt, std::nullopt},
        {"1e", '.', std::nullopt, std::nullopt},
        {"1 2", '.', std::nullopt, std::nullopt},
        {"1e999", '.', std::nullopt, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(StrictNumber(c.text, c.separator), c.number);
        EXPECT_EQ(StrictToI16(c.text, c.separator), c.whole);
    }
    EXPECT_EQ(StrictToF32("1,8", ','), 1.8f);
    EXPECT_EQ(StrictToF32("1e39", '.'), std::nullopt);
}

TEST(FieldNumber, TheUsersSeparatorReadsAsAPoint) {
    struct Case {
        const char* text;
        char separator;
        double number;
    };
    const Case cases[] = {
        {"1,8", ',', 1.8},   {"12,5abc", ',', 12.5}, {"1.8", ',', 1.8},
        {"1,2,3", ',', 1.2}, {"-0,5", ',', -0.5},    {"1,5", '.', 1.0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FieldNumber(c.text, c.separator), c.number) << c.text << " " << c.separator;
    }
}

} // namespace
} // namespace quarle
