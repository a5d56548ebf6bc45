// What the script reader and writer share of the model compiler's grammar:
// how it turns a token into a number, which words it takes for activities and
// motion types, how a token is written so that it reads back as itself, and a
// cursor over the tokens of a script that keeps the bytes each directive
// covers.
#pragma once

#include "document/Document.h"
#include "document/ScriptLayout.h"
#include "document/ScriptTokens.h"

#include <functional>
#include <string>
#include <string_view>

namespace quarle {

// A token as the compiler's atof reads it: blanks in front are passed over,
// then the longest number in front is taken (sign, digits, point, exponent;
// "inf" and "nan" too); a token that starts otherwise is 0.
double CompilerFloat(std::string_view token);
// As its atoi reads it: blanks, a sign and the digits in front; the rest is
// not looked at. Beyond the range of an int the value is the int's limit.
long long CompilerWhole(std::string_view token);

// A float field from such a number: not a number is 0, beyond the float's
// range its limit.
f32 FloatField(double value);
// A whole-number field of 16 bits from such a number: rounded to the nearest,
// within the field's range.
i16 WholeField(double value);

// Whether the compiler takes a word for an activity (a name of its table in
// any case, or ACT_ with a number behind it).
bool IsActivityWord(std::string_view word);
// Whether it takes a word for a motion type (X, Y, Z, XR, YR, ZR, LX, LY, LZ,
// AX, AY, AZ, AXR, AYR, AZR in any case).
bool IsMotionWord(std::string_view word);
// Whether a word behind a sequence's name is an animation file to the
// compiler, and no option word (a file so named needs "animation" in front).
bool IsFileWord(std::string_view word);
// The axis of a rotation word (XR 0, YR 1, ZR 2, in any case); -1 for any other.
int RotationAxis(std::string_view word);

bool EqualNoCase(std::string_view a, std::string_view b);
// The word starts with prefix, in any case.
bool StartsNoCase(std::string_view word, std::string_view prefix);

// A token the compiler reads back as text: in double quotes, or bare where
// quotes cannot hold it (a text with a double quote in it).
std::string TokenOf(std::string_view text);
// Whether text, written bare, reads back as one token of its own.
bool IsBareToken(std::string_view text);

// A texture name as the compiler compares it: without what ends it that is
// no visible character (the blank at the end of a part file's line).
std::string_view TextureKey(std::string_view name);
bool SameTexture(std::string_view a, std::string_view b);

// The tokens of a script with the compiler's two questions (a token across
// lines, a token on this line), and the bytes of the directive being read.
// An $include whose file cannot be read, or that nests too deeply, is
// passed over as the compiler cannot: reading goes on behind its name, and
// failed() hears of it.
class ScriptCursor {
public:
    using IncludeFailed = std::function<void(TokenStatus status, const ScriptToken& name)>;

    ScriptCursor(ScriptTokens& tokens, IncludeFailed failed)
        : tokens_(tokens), failed_(std::move(failed)) {}

    // The next token anywhere; false at the end of the script.
    bool NextCross() { return Next(true); }
    // The next token of the current line; false when it has none (where
    // the compiler stops with "line incomplete").
    bool NextOnLine() { return Next(false); }
    // Whether the current line holds another token.
    bool Available() const { return tokens_.Available(); }
    bool AtEnd() const { return end_; }
    // Where the compiler would stop: a quote left open (its token ran to
    // the end of its text), a token wanted on a line that had none, an
    // include it cannot read.
    bool CompilerStops() const { return stops_; }
    // The first place where the compiler refuses the script outright: a
    // line that ended before a token it wanted, a token too long (the
    // source and line; -1 for none).
    int RefusedSource() const { return refusedSource_; }
    int RefusedLine() const { return refusedLine_; }

    const ScriptToken& Token() const { return tokens_.Token(); }
    // The token's text as it stands in its source, which is held as long as
    // the tokens are: it stays valid when the cursor moves on.
    std::string_view Text() const { return tokens_.Token().View; }
    // The token's bytes in its source, quotes included.
    std::string_view Raw() const {
        const ScriptToken& t = tokens_.Token();
        return std::string_view(tokens_.SourceText(t.Source)).substr(t.Begin, t.End - t.Begin);
    }
    const ScriptTokens& Tokens() const { return tokens_; }

    // A directive starts at the current token: its bytes run to the end of
    // the last token read for it.
    void StartDirective();
    TextSpan DirectiveSpan() const { return span_; }
    // Whether a token of the directive came from another source (an
    // include opened inside it, or its end): its bytes are not one piece.
    bool Straddles() const { return straddles_; }

private:
    bool Next(bool crossLine) {
        if (end_) {
            return false;
        }
        const TokenStatus status = tokens_.Next(crossLine);
        if (status != TokenStatus::Ok) {
            return Other(status, crossLine);
        }
        const ScriptToken& t = tokens_.Token();
        if (t.Quoted) {
            QuoteEnds(t);
        }
        if (t.Source == span_.Source) {
            span_.End = t.End > span_.End ? t.End : span_.End;
        } else {
            straddles_ = true;
        }
        return true;
    }
    // Whether a quoted token found its closing quote.
    void QuoteEnds(const ScriptToken& t) {
        if (t.End - t.Begin < 2 || tokens_.SourceText(t.Source)[t.End - 1] != '"') {
            stops_ = true;
        }
    }
    // What the tokens said other than a token: the end, a line that ended,
    // an include passed over.
    bool Other(TokenStatus status, bool crossLine);

    ScriptTokens& tokens_;
    IncludeFailed failed_;
    bool end_ = false;
    bool stops_ = false;
    int refusedSource_ = -1;
    int refusedLine_ = 0;
    void Refused() {
        if (refusedSource_ < 0) {
            refusedSource_ = tokens_.Token().Source;
            refusedLine_ = tokens_.Token().Line;
        }
    }
    TextSpan span_;
    bool straddles_ = false;
};

} // namespace quarle
