#include "document/ScriptTokens.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace quarle {
namespace {

// Reads a script as the compiler's main loop does: a token read across lines
// starts a row and takes the rest of its line token by token. Each token is
// written as text@source:line; a status other than Ok or End ends the list
// with its name.
std::string Walk(const std::string& text, const std::map<std::string, std::string>& files = {}) {
    ScriptTokens tokens(text, "main.qc", [&](const std::string& name) -> std::optional<std::string> {
        const auto it = files.find(name);
        return it == files.end() ? std::nullopt : std::optional<std::string>(it->second);
    });
    const auto mark = [&] {
        const ScriptToken& t = tokens.Token();
        return (t.Quoted ? "\"" + t.Text + "\"" : t.Text) + "@" + std::to_string(t.Source) + ":" +
               std::to_string(t.Line);
    };
    const auto name = [](TokenStatus s) {
        switch (s) {
        case TokenStatus::LineIncomplete:
            return "incomplete";
        case TokenStatus::IncludeMissing:
            return "missing";
        case TokenStatus::IncludeTooDeep:
            return "deep";
        case TokenStatus::TokenTooLong:
            return "long";
        default:
            return "?";
        }
    };
    std::string out;
    for (;;) {
        TokenStatus s = tokens.Next(true);
        if (s == TokenStatus::End) {
            return out;
        }
        if (s != TokenStatus::Ok) {
            return out + "| " + name(s);
        }
        out += out.empty() ? "" : "| ";
        out += mark();
        while (tokens.Available()) {
            s = tokens.Next(false);
            if (s != TokenStatus::Ok) {
                return out + " " + name(s);
            }
            out += " " + mark();
        }
    }
}

// Each row's reading was checked against the compiler's own tokenizer.
TEST(ScriptTokens, CutsAsTheCompilerCuts) {
    const struct {
        std::string text;
        std::string tokens;
    } cases[] = {
        {"$cd \".\\\"\r\n$scale 2 5\r\n", "$cd@0:1 \".\\\"@0:1| $scale@0:2 2@0:2 5@0:2"},
        // Quotes keep blanks, tabs and comment marks; a quote may span lines.
        {"$body \"a b\t// c\"\n", "$body@0:1 \"a b\t// c\"@0:1"},
        {"$x \"a\nb\" c\n$y", "$x@0:1 \"a\nb\"@0:1 c@0:2| $y@0:3"},
        {"$x \"open", "$x@0:1 \"open\"@0:1"},
        // A bare token ends at ';' and at bytes from 128 up; '#', "//" and a
        // quote inside it are its own.
        {"$x a;b", "$x@0:1 a@0:1"},
        {"$x K\xF6rper", "$x@0:1 K@0:1 rper@0:1"},
        {"$x a//b c#d e\"f", "$x@0:1 a//b@0:1 c#d@0:1 e\"f@0:1"},
        // Comments at a token's start run to the line's end; ';' ends a line
        // quietly, while '#' and "//" there leave it incomplete.
        {"// note\n; note\n# note\n$x 1 ; rest\n$y", "$x@0:4 1@0:4| $y@0:5"},
        {"$cdtexture \"t\" // the textures", "$cdtexture@0:1 \"t\"@0:1 incomplete"},
        {"$cdtexture \"t\" # the textures", "$cdtexture@0:1 \"t\"@0:1 incomplete"},
        {"$x\r\n\r\n  \t$y", "$x@0:1| $y@0:3"},
        // A token of 512 bytes is too long, one of 511 is not.
        {"$x " + std::string(511, 'a'), "$x@0:1 " + std::string(511, 'a') + "@0:1"},
        {"$x " + std::string(512, 'a'), "$x@0:1 long"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Walk(c.text), c.tokens) << c.text;
    }
}

TEST(ScriptTokens, IncludesAreEnteredWhereTheyStandAndLeftBehindTheirName) {
    const std::map<std::string, std::string> files = {
        {"a.qci", "$a 1\n$include b.qci\n$a 2"},
        {"b.qci", "$b 1"},
        {"self.qci", "$include self.qci"},
        {"quoted.qci", "\"$include\" \"a b.qci\""},
        {"a b.qci", "$q"},
        {"tail.qci", "$t 1"},
    };
    const struct {
        std::string text;
        std::string tokens;
    } cases[] = {
        {"$x\n$include a.qci\n$y", "$x@0:1| $a@1:1 1@1:1| $b@2:1 1@2:1| $a@1:3 2@1:3| $y@0:3"},
        {"$include \"quoted.qci\"", "$q@2:1"},
        // Reading goes on behind the include's name, on its line.
        {"$include tail.qci more\n", "$t@1:1 1@1:1| more@0:1"},
        {"$include gone.qci", "| missing"},
        {"$include\n$x", "| incomplete"},
        // The script and six includes may be open at once, not seven.
        {"$include self.qci", "| deep"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Walk(c.text, files), c.tokens) << c.text;
    }
}

} // namespace
} // namespace quarle
