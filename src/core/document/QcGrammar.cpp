#include "document/QcGrammar.h"

#include "document/SequenceNumbers.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>

namespace quarle {

namespace {

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The activities of the game's table, which the compiler knows by name.
constexpr std::array<std::string_view, 76> Activities = {
    "ACT_IDLE",           "ACT_GUARD",          "ACT_WALK",
    "ACT_RUN",            "ACT_FLY",            "ACT_SWIM",
    "ACT_HOP",            "ACT_LEAP",           "ACT_FALL",
    "ACT_LAND",           "ACT_STRAFE_LEFT",    "ACT_STRAFE_RIGHT",
    "ACT_ROLL_LEFT",      "ACT_ROLL_RIGHT",     "ACT_TURN_LEFT",
    "ACT_TURN_RIGHT",     "ACT_CROUCH",         "ACT_CROUCHIDLE",
    "ACT_STAND",          "ACT_USE",            "ACT_SIGNAL1",
    "ACT_SIGNAL2",        "ACT_SIGNAL3",        "ACT_TWITCH",
    "ACT_COWER",          "ACT_SMALL_FLINCH",   "ACT_BIG_FLINCH",
    "ACT_RANGE_ATTACK1",  "ACT_RANGE_ATTACK2",  "ACT_MELEE_ATTACK1",
    "ACT_MELEE_ATTACK2",  "ACT_RELOAD",         "ACT_ARM",
    "ACT_DISARM",         "ACT_EAT",            "ACT_DIESIMPLE",
    "ACT_DIEBACKWARD",    "ACT_DIEFORWARD",     "ACT_DIEVIOLENT",
    "ACT_BARNACLE_HIT",   "ACT_BARNACLE_PULL",  "ACT_BARNACLE_CHOMP",
    "ACT_BARNACLE_CHEW",  "ACT_SLEEP",          "ACT_INSPECT_FLOOR",
    "ACT_INSPECT_WALL",   "ACT_IDLE_ANGRY",     "ACT_WALK_HURT",
    "ACT_RUN_HURT",       "ACT_HOVER",          "ACT_GLIDE",
    "ACT_FLY_LEFT",       "ACT_FLY_RIGHT",      "ACT_DETECT_SCENT",
    "ACT_SNIFF",          "ACT_BITE",           "ACT_THREAT_DISPLAY",
    "ACT_FEAR_DISPLAY",   "ACT_EXCITED",        "ACT_SPECIAL_ATTACK1",
    "ACT_SPECIAL_ATTACK2", "ACT_COMBAT_IDLE",   "ACT_WALK_SCARED",
    "ACT_RUN_SCARED",     "ACT_VICTORY_DANCE",  "ACT_DIE_HEADSHOT",
    "ACT_DIE_CHESTSHOT",  "ACT_DIE_GUTSHOT",    "ACT_DIE_BACKSHOT",
    "ACT_FLINCH_HEAD",    "ACT_FLINCH_CHEST",   "ACT_FLINCH_STOMACH",
    "ACT_FLINCH_LEFTARM", "ACT_FLINCH_RIGHTARM", "ACT_FLINCH_LEFTLEG",
    "ACT_FLINCH_RIGHTLEG",
};

constexpr std::array<std::string_view, 15> MotionWords = {
    "X", "Y", "Z", "XR", "YR", "ZR", "LX", "LY", "LZ", "AX", "AY", "AZ", "AXR", "AYR", "AZR",
};

// The C library's conversions pass over leading blanks and one sign: Token
// without them, and whether the sign was a minus.
std::string_view Unsigned(std::string_view token, bool& negative) {
    std::size_t i = 0;
    while (i < token.size() && IsSpace(token[i])) {
        ++i;
    }
    negative = i < token.size() && token[i] == '-';
    if (i < token.size() && (token[i] == '+' || token[i] == '-')) {
        ++i;
    }
    return token.substr(i);
}

} // namespace

double CompilerFloat(std::string_view token) {
    bool negative = false;
    const std::string_view rest = Unsigned(token, negative);
    // A sign of its own again ("--1") is no number.
    if (rest.empty() || rest.front() == '+' || rest.front() == '-') {
        return 0.0;
    }
    double value = 0.0;
    if (rest.size() > 1 && rest[0] == '0' && Lower(rest[1]) == 'x') {
        const auto hex = std::from_chars(rest.data() + 2, rest.data() + rest.size(), value,
                                         std::chars_format::hex);
        if (hex.ec != std::errc() && hex.ec != std::errc::result_out_of_range) {
            value = 0.0; // "0x" alone reads as the zero in front of it
        }
    } else {
        const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value,
                                            std::chars_format::general);
        if (result.ec == std::errc::result_out_of_range) {
            // Past the double's range: its limit, or zero for a tiny value.
            const std::size_t e = rest.find_first_of("eE");
            const bool tiny = e != std::string_view::npos && e + 1 < rest.size() && rest[e + 1] == '-';
            value = tiny ? 0.0 : HUGE_VAL;
        } else if (result.ec != std::errc()) {
            value = 0.0;
        }
    }
    return negative ? -value : value;
}

long long CompilerWhole(std::string_view token) {
    bool negative = false;
    const std::string_view digits = Unsigned(token, negative);
    long long value = 0;
    for (std::size_t i = 0; i < digits.size() && digits[i] >= '0' && digits[i] <= '9'; ++i) {
        value = value * 10 + (digits[i] - '0');
        if (value > static_cast<long long>(INT_MAX) + 1) {
            value = static_cast<long long>(INT_MAX) + 1;
        }
    }
    value = negative ? -value : value;
    return std::clamp<long long>(value, INT_MIN, INT_MAX);
}

f32 FloatField(double value) {
    if (std::isnan(value)) {
        return 0.0f;
    }
    return static_cast<f32>(std::clamp<double>(value, -FLT_MAX, FLT_MAX));
}

i16 WholeField(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    const double r = std::nearbyint(std::clamp<double>(value, INT16_MIN, INT16_MAX));
    return static_cast<i16>(r);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && Lower(a[i]) != Lower(b[i])) {
            return false;
        }
    }
    return true;
}

bool StartsNoCase(std::string_view word, std::string_view prefix) {
    return word.size() >= prefix.size() && EqualNoCase(word.substr(0, prefix.size()), prefix);
}

bool IsActivityWord(std::string_view word) {
    if (!StartsNoCase(word, "ACT_")) {
        return false;
    }
    for (const std::string_view name : Activities) {
        if (name.size() == word.size() && EqualNoCase(word, name)) {
            return true;
        }
    }
    return CompilerWhole(word.substr(4)) != 0;
}

bool IsMotionWord(std::string_view word) {
    return word.size() <= 3 && std::any_of(MotionWords.begin(), MotionWords.end(), [&](std::string_view m) {
               return EqualNoCase(word, m);
           });
}

bool IsFileWord(std::string_view word) {
    if (SequenceNumberOf(word) >= 0) {
        return false;
    }
    for (const std::string_view exact : {"{", "}", "deform", "event", "pivot", "origin", "animation"}) {
        if (EqualNoCase(word, exact)) {
            return false;
        }
    }
    for (const std::string_view prefix : {"loop", "frame", "blend", "node", "tran", "rtra"}) {
        if (StartsNoCase(word, prefix)) {
            return false;
        }
    }
    return !IsMotionWord(word) && !IsActivityWord(word);
}

int RotationAxis(std::string_view word) {
    if (EqualNoCase(word, "XR")) {
        return 0;
    }
    if (EqualNoCase(word, "YR")) {
        return 1;
    }
    if (EqualNoCase(word, "ZR")) {
        return 2;
    }
    return -1;
}

bool IsBareToken(std::string_view text) {
    if (text.empty() || text.front() == '"' || text.front() == '#' || text.starts_with("//")) {
        return false;
    }
    return std::none_of(text.begin(), text.end(), [](char c) {
        const auto b = static_cast<unsigned char>(c);
        return b <= 32 || b >= 128 || c == ';';
    });
}

std::string TokenOf(std::string_view text) {
    if (text.find('"') != std::string_view::npos) {
        return std::string(text);
    }
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '"';
    quoted += text;
    quoted += '"';
    return quoted;
}

std::string_view TextureKey(std::string_view name) {
    while (!name.empty()) {
        const auto c = static_cast<unsigned char>(name.back());
        if (c > 32 && c < 127) {
            break;
        }
        name.remove_suffix(1);
    }
    return name;
}

bool SameTexture(std::string_view a, std::string_view b) {
    return EqualNoCase(TextureKey(a), TextureKey(b));
}

void ScriptCursor::StartDirective() {
    const ScriptToken& t = tokens_.Token();
    span_ = {t.Source, t.Begin, t.End};
    straddles_ = false;
}

bool ScriptCursor::Other(TokenStatus status, bool crossLine) {
    for (;;) {
        switch (status) {
        case TokenStatus::Ok:
        case TokenStatus::TokenTooLong: {
            if (status == TokenStatus::TokenTooLong) {
                stops_ = true;
                Refused();
            }
            const ScriptToken& t = tokens_.Token();
            if (t.Quoted) {
                QuoteEnds(t);
            }
            if (t.Source == span_.Source) {
                span_.End = std::max(span_.End, t.End);
            } else {
                straddles_ = true;
            }
            return true;
        }
        case TokenStatus::IncludeMissing:
        case TokenStatus::IncludeTooDeep:
            stops_ = true;
            if (failed_) {
                failed_(status, tokens_.Token());
            }
            straddles_ = straddles_ || tokens_.Token().Source != span_.Source;
            break; // as if its line had not held it
        case TokenStatus::End:
            end_ = true;
            return false;
        case TokenStatus::LineIncomplete:
            stops_ = true;
            Refused();
            if (!crossLine) {
                return false;
            }
            break; // an $include without its name, which is passed over too
        }
        status = tokens_.Next(crossLine);
    }
}

} // namespace quarle
