#include "document/Text.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace quarle {
namespace {

using Strings = std::vector<std::string>;

Strings Tokens(std::string_view line) {
    Strings tokens;
    int pos = 1;
    for (std::string_view t = NextToken(line, pos); t != NoToken; t = NextToken(line, pos)) {
        tokens.emplace_back(t);
        if (tokens.size() > line.size() + 1) {
            ADD_FAILURE() << "NextToken does not advance on: " << line;
            break;
        }
    }
    return tokens;
}

TEST(NextToken, EmptyAndExhaustedLinesGiveTheSentinelAndKeepPos) {
    const struct {
        const char* line;
        int pos;
        std::string_view token;
        int after;
    } cases[] = {
        {"", 1, NoToken, 1},       {"ab", 1, "ab", 3},         {"ab", 3, NoToken, 3},
        {" ", 1, NoToken, 1},      {"abc", 500, NoToken, 500}, // far past the end
        {"abc def", -7, "abc", 5}, // before the start reads from the start
    };
    for (const auto& c : cases) {
        int pos = c.pos;
        EXPECT_EQ(NextToken(c.line, pos), c.token) << c.line << " at " << c.pos;
        EXPECT_EQ(pos, c.after) << c.line << " at " << c.pos;
    }
}

TEST(NextToken, QuotesBlanksAndTabs) {
    const struct {
        const char* line;
        Strings tokens;
    } cases[] = {
        // A quoted token keeps its quotes, and the blank behind it is not used up.
        {R"("a b" c)", {R"("a b")", "c"}},
        {R"("a" "b c")", {R"("a")", R"("b)", R"(c")"}},
        {R"("abc)", {R"("abc)"}}, // unclosed: runs to the end
        {R"(ab ")", {"ab", R"(")"}},
        {R"("")", {R"("")"}},
        {R"(a"b c")", {R"(a"b)", R"(c")"}}, // a quote inside a token starts nothing
        // Three blanks make an empty token; two leading blanks too.
        {"a  b", {"a", "b"}},
        {"a   b", {"a", "", "b"}},
        {"a    b", {"a", "", "b"}},
        {"a     b", {"a", "", "", "b"}},
        {" a", {"a"}},
        {"  a", {"", "a"}},
        {"    ", {"", ""}},
        {"a ", {"a"}},
        // A tab ends a token; Trim leaves the next tab at the start of the next token.
        {"a\tb", {"a", "b"}},
        {"a\t\tb", {"a", "\tb"}},
        {"a\t \tb", {"a", "", "b"}},
        {"x gg-1gg y", {"x"}}, // a token that reads the sentinel ends the line
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Tokens(c.line), c.tokens) << c.line;
    }
    std::string huge;
    for (int i = 0; i < 100000; ++i) {
        huge += "tok ";
    }
    EXPECT_EQ(Tokens(huge).size(), 100000u);
}

// The rule as written, cut by cut, to check the one-pass version against.
std::string RemoveAllByTheRule(std::string s, std::string_view find) {
    while (!find.empty() && s.find(find) != std::string::npos) {
        s.erase(ToUpper(s).find(ToUpper(find)), find.size());
    }
    return s;
}

TEST(RemoveAll, CutsWhileAnExactOccurrenceIsLeft) {
    // The test is exact, the cut case-insensitive; a cut can make a new occurrence.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {" a b ", " ", "ab"},
        {"abc", "", "abc"},
        {"aabb", "ab", ""},
        {"Ab x ab AB", "ab", " x  AB"},
    };
    for (const auto& [source, find, result] : cases) {
        EXPECT_EQ(RemoveAll(source, find), result) << source << " / " << find;
    }
    std::mt19937 random(7);
    const std::string alphabet = "aAbB\" ";
    const Strings finds = {"a", "ab", "aB", "\"", "\" ", "aba", "AbA"};
    for (int round = 0; round < 3000; ++round) {
        std::string s;
        for (int i = static_cast<int>(random() % 14); i > 0; --i) {
            s += alphabet[random() % alphabet.size()];
        }
        const std::string& find = finds[random() % finds.size()];
        ASSERT_EQ(RemoveAll(s, find), RemoveAllByTheRule(s, find)) << s << " / " << find;
    }
    // Huge lines in one pass.
    EXPECT_EQ(RemoveAll(std::string(2'000'000, '"'), "\""), "");
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

    // The last character is not examined.
    const std::tuple<int, const char*, const char*, int> findLast[] = {
        {5, "c:\\a\\", "\\", 3},
        {6, "c:\\a\\", "\\", 5},
        {3, "abc", "x", -1},
        {0, "abc", "a", -1},
        {2, "abc", "a", 1},
        {1000000, "abcab", "ab", 4},
        {std::numeric_limits<int>::min(), "abc", "a", -1},
    };
    for (const auto& [start, source, find, at] : findLast) {
        EXPECT_EQ(FindLast(start, source, find), at) << source << " from " << start;
    }
    const std::tuple<int, const char*, const char*> splits[] = {
        {4, "abc ", "def"},  {0, "", "abc def"},  {7, "abc def", ""},
        {99, "abc def", ""}, {-2, "", "abc def"},
    };
    for (const auto& [pos, head, tail] : splits) {
        std::string h, t;
        SplitAt("abc def", pos, h, t);
        EXPECT_EQ(h + "|" + t, std::string(head) + "|" + tail) << pos;
    }
    const std::tuple<const char*, const char*, int, const char*> textAfter[] = {
        {"$SEQUENCE walk", "$sequence", 1, " walk"},
        {"fps 30 fps 12", "fps", 2, " 12"},
        {"abc", "abc", 1, ""},
        {"abc", "x", 1, "-1"},
        {"abc", "abcd", 1, "-1"},
        {"abc", "c", 99, "-1"},
        {"abc", "a", -3, "bc"},
    };
    for (const auto& [source, pattern, start, after] : textAfter) {
        EXPECT_EQ(TextAfter(source, pattern, start), after) << source << " / " << pattern;
    }
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
    // cp1252: à-þ and š œ ž ÿ have capitals, ÷ and ß do not.
    EXPECT_EQ(ToUpper("act_Arm \xE0\xFC\xFE\xF7\xDF\x9A\x9C\x9E\xFF\xC4"),
              "ACT_ARM \xC0\xDC\xDE\xF7\xDF\x8A\x8C\x8E\x9F\xC4");
}

TEST(TextToNumber, ReadsTheLongestNumberAtTheStart) {
    constexpr double Inf = std::numeric_limits<double>::infinity();
    // The comma is never a separator; blanks and tabs are skipped wherever they stand.
    const std::pair<const char*, double> cases[] = {
        {"12abc", 12},    {"abc", 0},     {"", 0},          {"1,5", 1},     {"1.5", 1.5},
        {".5", 0.5},      {"5.", 5},      {"-2.25", -2.25}, {"+7", 7},      {"-", 0},
        {".", 0},         {"+-3", 0},     {"1.2.3", 1.2},   {"1 e 2", 100}, {"1e3", 1000},
        {"2.5E-1", 0.25}, {"1E+08", 1e8}, {"3e", 3},        {"3e-x", 3},    {"1e400", Inf},
        {"1e-400", 0},
    };
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(TextToNumber(text), number) << text;
    }
    EXPECT_EQ(TextToNumber("  \t- 1 2 . 5"), -12.5);
    EXPECT_EQ(TextToNumber("0e999999999999999999999"), 0);
    EXPECT_EQ(TextToNumber("-1e99999999999999"), -Inf);
    EXPECT_EQ(TextToNumber(std::string(5000, '9')), Inf);
    EXPECT_EQ(TextToNumber("0." + std::string(5000, '0') + "1"), 0);
    // No negative zero.
    EXPECT_FALSE(std::signbit(TextToNumber("-0")));
    EXPECT_FALSE(std::signbit(TextToNumber("-0.0e5")));
}

TEST(TextToNumber, IntoFieldsRoundsHalvesToEvenAndClamps) {
    const std::pair<const char*, int> cases[] = {
        {"2.5", 2},  {"3.5", 4},         {"-2.5", -2},     {"-3.5", -4},       {"2.51", 3},
        {"-0.4", 0}, {"32767.4", 32767}, {"40000", 32767}, {"-40000", -32768}, {"1e400", 32767},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(ToI16(TextToNumber(text)), value) << text;
    }
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
