#include "document/Text.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace quarle {
namespace {

std::vector<std::string> Tokens(std::string_view line) {
    std::vector<std::string> tokens;
    int pos = 1;
    for (std::string t = NextToken(line, pos); t != NoToken; t = NextToken(line, pos)) {
        tokens.push_back(t);
        if (tokens.size() > line.size() + 1) {
            ADD_FAILURE() << "NextToken does not advance on: " << line;
            break;
        }
    }
    return tokens;
}

using Strings = std::vector<std::string>;

TEST(NextToken, EmptyAndExhaustedLinesGiveTheSentinelAndKeepPos) {
    int pos = 1;
    EXPECT_EQ(NextToken("", pos), NoToken);
    EXPECT_EQ(pos, 1);

    pos = 1;
    EXPECT_EQ(NextToken("ab", pos), "ab");
    EXPECT_EQ(pos, 3);
    EXPECT_EQ(NextToken("ab", pos), NoToken);
    EXPECT_EQ(pos, 3);

    pos = 1;
    EXPECT_EQ(NextToken(" ", pos), NoToken);
    EXPECT_EQ(pos, 1);

    pos = 500; // far past the end
    EXPECT_EQ(NextToken("abc", pos), NoToken);
    EXPECT_EQ(pos, 500);

    pos = -7; // before the start reads from the start
    EXPECT_EQ(NextToken("abc def", pos), "abc");
    EXPECT_EQ(pos, 5);
}

TEST(NextToken, QuotesStayInTheTokenAndTheBlankBehindThemIsNotUsedUp) {
    EXPECT_EQ(Tokens(R"("a b" c)"), (Strings{R"("a b")", "c"}));
    EXPECT_EQ(Tokens(R"("a" "b c")"), (Strings{R"("a")", R"("b)", R"(c")"}));
    EXPECT_EQ(Tokens(R"("abc)"), (Strings{R"("abc)"}));    // unclosed: runs to the end
    EXPECT_EQ(Tokens(R"(ab ")"), (Strings{"ab", R"(")"})); // lone quote at the end
    EXPECT_EQ(Tokens(R"("")"), (Strings{R"("")"}));
    EXPECT_EQ(Tokens(R"($body head "head")"), (Strings{"$body", "head", R"("head")"}));
    // A quote inside an unquoted token does not start anything.
    EXPECT_EQ(Tokens(R"(a"b c")"), (Strings{R"(a"b)", R"(c")"}));
}

TEST(NextToken, BlanksAndTabs) {
    EXPECT_EQ(Tokens("a b"), (Strings{"a", "b"}));
    EXPECT_EQ(Tokens("a  b"), (Strings{"a", "b"}));
    EXPECT_EQ(Tokens("a   b"), (Strings{"a", "", "b"}));
    EXPECT_EQ(Tokens("a    b"), (Strings{"a", "", "b"}));
    EXPECT_EQ(Tokens("a     b"), (Strings{"a", "", "", "b"}));
    EXPECT_EQ(Tokens(" a"), (Strings{"a"}));
    // Two leading blanks: the walk from the first meets the second.
    EXPECT_EQ(Tokens("  a"), (Strings{"", "a"}));
    EXPECT_EQ(Tokens("    "), (Strings{"", ""}));
    EXPECT_EQ(Tokens("a "), (Strings{"a"}));
    // A tab ends a token; Trim leaves the next tab at the start of the next token.
    EXPECT_EQ(Tokens("a\tb"), (Strings{"a", "b"}));
    EXPECT_EQ(Tokens("a\t\tb"), (Strings{"a", "\tb"}));
    EXPECT_EQ(Tokens("a\t \tb"), (Strings{"a", "", "b"}));
    // A token that really reads the sentinel ends the line early.
    EXPECT_EQ(Tokens("x gg-1gg y"), (Strings{"x"}));
}

TEST(NextToken, HugeLine) {
    std::string line;
    for (int i = 0; i < 100000; ++i) {
        line += "tok ";
    }
    const auto tokens = Tokens(line);
    ASSERT_EQ(tokens.size(), 100000u);
    EXPECT_EQ(tokens.back(), "tok");
}

// The rule as written, cut by cut, to check the one-pass version against.
std::string RemoveAllByTheRule(std::string s, std::string_view find) {
    auto upper = [](std::string t) { return ToUpper(t); };
    while (!find.empty() && s.find(find) != std::string::npos) {
        const std::size_t p = upper(s).find(upper(std::string(find)));
        s.erase(p, find.size());
    }
    return s;
}

TEST(RemoveAll, CutsWhileAnExactOccurrenceIsLeft) {
    EXPECT_EQ(RemoveAll(R"("a b")", "\""), "a b");
    EXPECT_EQ(RemoveAll(" a b ", " "), "ab");
    EXPECT_EQ(RemoveAll("", "\""), "");
    EXPECT_EQ(RemoveAll("abc", ""), "abc");
    EXPECT_EQ(RemoveAll("aabb", "ab"), ""); // a cut can make a new occurrence
    // The test is exact, the cut case-insensitive.
    EXPECT_EQ(RemoveAll("AB", "ab"), "AB");
    EXPECT_EQ(RemoveAll("ABab", "ab"), "");
    EXPECT_EQ(RemoveAll("abAB", "ab"), "AB");
    EXPECT_EQ(RemoveAll("Ab x ab AB", "ab"), " x  AB");

    std::mt19937 random(7);
    const std::string alphabet = "aAbB\" ";
    const std::vector<std::string> finds = {"a", "ab", "aB", "\"", "\" ", "aba", "AbA"};
    for (int round = 0; round < 3000; ++round) {
        std::string s;
        const int length = static_cast<int>(random() % 14);
        for (int i = 0; i < length; ++i) {
            s += alphabet[random() % alphabet.size()];
        }
        const std::string& find = finds[random() % finds.size()];
        ASSERT_EQ(RemoveAll(s, find), RemoveAllByTheRule(s, find))
            << "source '" << s << "' find '" << find << "'";
    }
}

TEST(RemoveAll, HugeLineIsFast) {
    const std::string quotes(2'000'000, '"');
    EXPECT_EQ(RemoveAll(quotes, "\""), "");
    std::string mixed;
    for (int i = 0; i < 200'000; ++i) {
        mixed += "AB";
    }
    EXPECT_EQ(RemoveAll(mixed + "ab", "ab"), "");
    EXPECT_EQ(RemoveAll("ab" + mixed, "ab"), mixed);
}

TEST(ReplaceAllFindLastSplitAtTextAfter, FollowTheirRules) {
    EXPECT_EQ(ReplaceAll("a/b/c", "/", "\\"), "a\\b\\c");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba"); // left to right, no overlap
    EXPECT_EQ(ReplaceAll("Aa", "a", "x"), "Ax");   // exact
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceAll("", "a", "x"), "");

    EXPECT_EQ(FindLast(5, "c:\\a\\", "\\"), 3); // the last character is not examined
    EXPECT_EQ(FindLast(6, "c:\\a\\", "\\"), 5);
    EXPECT_EQ(FindLast(3, "abc", "x"), -1);
    EXPECT_EQ(FindLast(0, "abc", "a"), -1);
    EXPECT_EQ(FindLast(2, "abc", "a"), 1);
    EXPECT_EQ(FindLast(1000000, "abcab", "ab"), 4);
    EXPECT_EQ(FindLast(std::numeric_limits<int>::min(), "abc", "a"), -1);

    std::string head, tail;
    SplitAt("abc def", 4, head, tail);
    EXPECT_EQ(head, "abc ");
    EXPECT_EQ(tail, "def");
    SplitAt("abc", 0, head, tail);
    EXPECT_EQ(head, "");
    EXPECT_EQ(tail, "abc");
    SplitAt("abc", 3, head, tail);
    EXPECT_EQ(head, "abc");
    EXPECT_EQ(tail, "");
    SplitAt("abc", 99, head, tail);
    EXPECT_EQ(head, "abc");
    EXPECT_EQ(tail, "");
    SplitAt("abc", -2, head, tail);
    EXPECT_EQ(head, "");
    EXPECT_EQ(tail, "abc");

    EXPECT_EQ(TextAfter("$SEQUENCE walk", "$sequence", 1), " walk");
    EXPECT_EQ(TextAfter("fps 30 fps 12", "fps", 2), " 12");
    EXPECT_EQ(TextAfter("abc", "abc", 1), "");
    EXPECT_EQ(TextAfter("abc", "x", 1), "-1");
    EXPECT_EQ(TextAfter("abc", "abcd", 1), "-1");
    EXPECT_EQ(TextAfter("abc", "c", 99), "-1");
    EXPECT_EQ(TextAfter("abc", "a", -3), "bc");
}

TEST(LeftMidTrim, ClampAtTheEdges) {
    EXPECT_EQ(Left("abc", 2), "ab");
    EXPECT_EQ(Left("abc", 9), "abc");
    EXPECT_EQ(Left("abc", -1), "");
    EXPECT_EQ(Mid("abc", 2), "bc");
    EXPECT_EQ(Mid("abc", 4), "");
    EXPECT_EQ(Mid("abc", 0), "abc");
    EXPECT_EQ(Mid("abc", 2, 1), "b");
    EXPECT_EQ(Mid("abc", 2, 9), "bc");
    EXPECT_EQ(Mid("abc", 9, 1), "");
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t"); // blanks only
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(ToUpper("act_Arm 1 \xC3\xA4"), "ACT_ARM 1 \xC3\xA4");
}

TEST(TextToNumber, ReadsTheLongestNumberAtTheStart) {
    EXPECT_EQ(TextToNumber("12abc"), 12.0);
    EXPECT_EQ(TextToNumber("abc"), 0.0);
    EXPECT_EQ(TextToNumber(""), 0.0);
    EXPECT_EQ(TextToNumber("1,5"), 1.0); // the comma is never a separator
    EXPECT_EQ(TextToNumber("1.5"), 1.5);
    EXPECT_EQ(TextToNumber(".5"), 0.5);
    EXPECT_EQ(TextToNumber("5."), 5.0);
    EXPECT_EQ(TextToNumber("-2.25"), -2.25);
    EXPECT_EQ(TextToNumber("+7"), 7.0);
    EXPECT_EQ(TextToNumber("-"), 0.0);
    EXPECT_EQ(TextToNumber("."), 0.0);
    EXPECT_EQ(TextToNumber("+-3"), 0.0);
    EXPECT_EQ(TextToNumber("1.2.3"), 1.2);
    // Blanks and tabs wherever they stand.
    EXPECT_EQ(TextToNumber("  \t- 1 2 . 5"), -12.5);
    EXPECT_EQ(TextToNumber("1 e 2"), 100.0);
    // Exponents.
    EXPECT_EQ(TextToNumber("1e3"), 1000.0);
    EXPECT_EQ(TextToNumber("2.5E-1"), 0.25);
    EXPECT_EQ(TextToNumber("1E+08"), 1e8);
    EXPECT_EQ(TextToNumber("3e"), 3.0);
    EXPECT_EQ(TextToNumber("3e-x"), 3.0);
    EXPECT_EQ(TextToNumber("0e999999999999999999999"), 0.0);
    // Out of range.
    EXPECT_EQ(TextToNumber("1e400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(TextToNumber("-1e99999999999999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(TextToNumber("1e-400"), 0.0);
    EXPECT_EQ(TextToNumber(std::string(5000, '9')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(TextToNumber("0." + std::string(5000, '0') + "1"), 0.0);
    // No negative zero.
    EXPECT_FALSE(std::signbit(TextToNumber("-0")));
    EXPECT_FALSE(std::signbit(TextToNumber("-0.0e5")));
}

TEST(TextToNumber, IntoFieldsRoundsHalvesToEvenAndClamps) {
    EXPECT_EQ(ToI16(TextToNumber("2.5")), 2);
    EXPECT_EQ(ToI16(TextToNumber("3.5")), 4);
    EXPECT_EQ(ToI16(TextToNumber("-2.5")), -2);
    EXPECT_EQ(ToI16(TextToNumber("-3.5")), -4);
    EXPECT_EQ(ToI16(TextToNumber("2.51")), 3);
    EXPECT_EQ(ToI16(TextToNumber("-0.4")), 0);
    EXPECT_EQ(ToI16(TextToNumber("32767.4")), 32767);
    EXPECT_EQ(ToI16(TextToNumber("40000")), 32767);
    EXPECT_EQ(ToI16(TextToNumber("-40000")), -32768);
    EXPECT_EQ(ToI16(TextToNumber("1e400")), 32767);
    EXPECT_EQ(ToI16(std::nan("")), 0);

    EXPECT_EQ(ToF32(TextToNumber("1.8")), 1.8f);
    EXPECT_EQ(ToF32(TextToNumber("0.1")), 0.1f);
    EXPECT_EQ(ToF32(1e300), std::numeric_limits<float>::max());
    EXPECT_EQ(ToF32(-std::numeric_limits<double>::infinity()),
              std::numeric_limits<float>::lowest());
    EXPECT_EQ(ToF32(std::nan("")), 0.0f);
}

TEST(FilterKey, PassesWhatTheFlagsAllow) {
    struct Case {
        int key;
        int flags;
        int expected;
    };
    const Case cases[] = {
        {'7', 0, '7'}, {8, 0, 8},     {'a', 3, 0},   {' ', 3, 0},   {'.', 0, 0},   {'.', 1, '.'},
        {',', 0, 0},   {',', 1, '.'}, {'-', 1, 0},   {'-', 2, '-'}, {'-', 3, '-'}, {'.', 2, 0},
        {'+', 3, 0},   {13, 3, 0},    {'0', 2, '0'}, {'9', 1, '9'},
    };
    for (const Case& c : cases) {
        int key = c.key;
        EXPECT_EQ(FilterKey(key, c.flags), c.expected) << "key " << c.key << " flags " << c.flags;
        EXPECT_EQ(key, c.expected);
    }
}

} // namespace
} // namespace quarle
