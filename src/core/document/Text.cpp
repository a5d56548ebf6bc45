#include "document/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace quarle {

namespace {

// Length of a text as a position count; texts beyond the int range are cut
// there (no script line comes near it).
int Len(std::string_view s) {
    return s.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())
               ? std::numeric_limits<int>::max()
               : static_cast<int>(s.size());
}

// Upper case of cp1252, the code page of scripts and .smd files: the ASCII
// letters, à-þ to À-Þ (but ÷, which has no capital), and š, œ, ž, ÿ to their
// capitals at 0x8A, 0x8C, 0x8E and 0x9F. ß has no single capital and stays.
char UpperChar(char c) {
    const auto u = static_cast<unsigned char>(c);
    if ((u >= 'a' && u <= 'z') || (u >= 0xE0 && u <= 0xFE && u != 0xF7)) {
        return static_cast<char>(u - 0x20);
    }
    switch (u) {
    case 0x9A: // š
    case 0x9C: // œ
    case 0x9E: // ž
        return static_cast<char>(u - 0x10);
    case 0xFF: // ÿ
        return static_cast<char>(0x9F);
    default:
        return c;
    }
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (UpperChar(a[i]) != UpperChar(b[i])) {
            return false;
        }
    }
    return true;
}

// Whether C is a capital that UpperChar gives for some small letter.
bool IsCapital(char c) {
    const auto u = static_cast<unsigned char>(c);
    return (u >= 'A' && u <= 'Z') || (u >= 0xC0 && u <= 0xDE && u != 0xD7) || u == 0x8A ||
           u == 0x8C || u == 0x8E || u == 0x9F;
}

// Whether some character of S has another case.
bool HasLetter(std::string_view s) {
    return std::any_of(s.begin(), s.end(), [](char c) { return UpperChar(c) != c || IsCapital(c); });
}

// Does the tail of text end in a case-insensitive copy of find?
bool EndsWithNoCase(const std::string& text, std::string_view find) {
    return text.size() >= find.size() &&
           EqualNoCase(std::string_view(text).substr(text.size() - find.size()), find);
}

} // namespace

std::string_view Left(std::string_view s, int n) {
    if (n <= 0) {
        return {};
    }
    return s.substr(0, std::min(static_cast<std::size_t>(n), s.size()));
}

std::string_view Mid(std::string_view s, int p) {
    p = std::max(p, 1);
    if (p > Len(s)) {
        return {};
    }
    return s.substr(static_cast<std::size_t>(p - 1));
}

std::string_view Mid(std::string_view s, int p, int n) {
    if (n <= 0) {
        return {};
    }
    return Left(Mid(s, p), n);
}

std::string_view Trim(std::string_view s) {
    const std::size_t first = s.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = s.find_last_not_of(' ');
    return s.substr(first, last - first + 1);
}

std::string ToUpper(std::string_view s) {
    std::string result(s);
    for (char& c : result) {
        c = UpperChar(c);
    }
    return result;
}

std::string_view NextToken(std::string_view line, int& pos) {
    pos = std::max(pos, 1);
    const int length = Len(line);
    if (pos > length) {
        return NoToken;
    }
    const auto start = static_cast<std::size_t>(pos - 1);
    const auto size = static_cast<std::size_t>(length);
    // The character at Pos itself never ends the token.
    std::size_t end = start + 1;
    if (line[start] == '"') {
        end = line.find('"', end);
        if (end != std::string_view::npos) {
            pos = static_cast<int>(end) + 2;
            // From quote to quote: no blank at either end to trim.
            return line.substr(start, end - start + 1);
        }
    } else {
        while (end < size && line[end] != ' ' && line[end] != '\t') {
            ++end;
        }
        if (end < size) {
            pos = static_cast<int>(end) + 2;
            // Only the first character can be a blank: the walk stops at the others.
            const std::string_view token = line.substr(start, end - start);
            return token.front() == ' ' ? Trim(token) : token;
        }
    }
    // No end found: whatever stands in the rest of the line is the last token.
    const std::string_view rest = Trim(line.substr(start));
    if (!rest.empty()) {
        pos = length + 1;
        return rest;
    }
    return NoToken;
}

// The rule: while Find occurs exactly, cut out its first case-insensitive
// occurrence. Done in one pass: the text left of the first case-insensitive
// occurrence can never change again, so it is built up in `done`, and a cut
// only ever reaches back into the last length-of-Find characters of it.
std::string RemoveAll(std::string_view source, std::string_view find) {
    if (find.empty() || source.find(find) == std::string_view::npos) {
        return std::string(source);
    }
    const std::size_t m = find.size();
    if (!HasLetter(find)) {
        // Case plays no part: cut the first occurrence until none is left.
        std::string done;
        done.reserve(source.size());
        for (char c : source) {
            done.push_back(c);
            if (done.size() >= m && done.compare(done.size() - m, m, find) == 0) {
                done.resize(done.size() - m);
            }
        }
        return done;
    }

    // With letters, a case-insensitive occurrence is only cut while an exact
    // one is still somewhere in the text: in the candidate itself, across the
    // border between `done` and the unread rest, or in the unread rest.
    std::string done;
    done.reserve(source.size());
    std::size_t next = 0;                        // first unread character of source
    std::size_t exactInRest = source.find(find); // first exact occurrence at or after next
    auto exactAcrossBorder = [&](std::size_t from) {
        // Occurrences starting in done at index >= from and running into the rest.
        for (std::size_t start = from; start < done.size(); ++start) {
            const std::size_t inDone = done.size() - start;
            if (inDone >= m) {
                if (done.compare(start, m, find) == 0) {
                    return true;
                }
                continue;
            }
            const std::size_t inRest = m - inDone;
            if (source.size() - next >= inRest &&
                done.compare(start, inDone, find, 0, inDone) == 0 &&
                source.compare(next, inRest, find, inDone, inRest) == 0) {
                return true;
            }
        }
        return false;
    };
    while (next < source.size()) {
        done.push_back(source[next++]);
        if (exactInRest != std::string_view::npos && exactInRest < next) {
            exactInRest = source.find(find, next);
        }
        if (!EndsWithNoCase(done, find)) {
            continue;
        }
        const std::size_t start = done.size() - m;
        if (exactInRest == std::string_view::npos && !exactAcrossBorder(start)) {
            break; // no exact occurrence left: the rest stays as it is
        }
        done.resize(start);
    }
    done.append(source.substr(next));
    return done;
}

std::string ReplaceAll(std::string_view source, std::string_view find, std::string_view with) {
    if (find.empty()) {
        return std::string(source);
    }
    std::string result;
    result.reserve(source.size());
    std::size_t i = 0;
    while (i < source.size()) {
        if (source.compare(i, find.size(), find) == 0) {
            result.append(with);
            i += find.size();
        } else {
            result.push_back(source[i]);
            ++i;
        }
    }
    return result;
}

int FindLast(int start, std::string_view source, std::string_view find) {
    const long long first = static_cast<long long>(start) - Len(find);
    if (first < 1) {
        return -1;
    }
    if (find.empty()) {
        return static_cast<int>(first); // the empty text stands everywhere
    }
    // Beyond the end of Source nothing can match; start the walk there.
    for (int i = static_cast<int>(std::min<long long>(first, Len(source))); i >= 1; --i) {
        if (Mid(source, i, Len(find)) == find) {
            return i;
        }
    }
    return -1;
}

void SplitAt(std::string_view source, int pos, std::string& head, std::string& tail) {
    pos = std::max(pos, 0);
    head = std::string(Left(source, pos));
    tail = pos < Len(source) ? std::string(Mid(source, pos + 1)) : std::string();
}

std::string TextAfter(std::string_view source, std::string_view pattern, int start) {
    const int length = Len(pattern);
    const int last = Len(source) + 1 - length;
    for (int i = std::max(start, 1); i <= last; ++i) {
        if (EqualNoCase(Mid(source, i, length), pattern)) {
            return std::string(Mid(source, i + length));
        }
    }
    return "-1";
}

namespace {

// TextToNumber for anything but a short whole number.
[[gnu::noinline]] double AnyNumber(std::string_view text);

} // namespace

double TextToNumber(std::string_view text) {
    // Most numbers of a script are short whole numbers: read at once, the
    // rest elsewhere, so that this path stays light.
    if (!text.empty() && text.size() <= 15) {
        const bool negative = text.front() == '-';
        const std::size_t first = negative || text.front() == '+' ? 1 : 0;
        long long whole = 0;
        std::size_t i = first;
        for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
            whole = whole * 10 + (text[i] - '0');
        }
        if (i == text.size() && i > first) {
            // Below 10^15: exact in a double. Minus zero is plain 0.
            return whole == 0 ? 0.0 : static_cast<double>(negative ? -whole : whole);
        }
    }
    return AnyNumber(text);
}

namespace {

double AnyNumber(std::string_view text) {
    // Gather the number's characters, leaving out blanks and tabs wherever
    // they stand, and stop at the first character that cannot belong to it.
    std::size_t i = 0;
    auto peek = [&]() {
        while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) {
            ++i;
        }
        return i < text.size() ? text[i] : '\0';
    };
    auto isDigit = [](char c) { return c >= '0' && c <= '9'; };

    bool negative = false;
    if (const char c = peek(); c == '+' || c == '-') {
        negative = c == '-';
        ++i;
    }
    std::string intDigits;
    std::string fracDigits;
    while (isDigit(peek())) {
        intDigits.push_back(text[i++]);
    }
    if (peek() == '.') {
        ++i;
        while (isDigit(peek())) {
            fracDigits.push_back(text[i++]);
        }
    }
    if (intDigits.empty() && fracDigits.empty()) {
        return 0.0;
    }
    // An exponent counts only with at least one digit.
    long long exponent = 0;
    if (const char c = peek(); c == 'e' || c == 'E') {
        const std::size_t mark = i;
        ++i;
        bool expNegative = false;
        if (const char s = peek(); s == '+' || s == '-') {
            expNegative = s == '-';
            ++i;
        }
        if (isDigit(peek())) {
            while (isDigit(peek())) {
                // Saturate: anything this large is far outside every float anyway.
                exponent = std::min(exponent * 10 + (text[i++] - '0'), 1'000'000'000LL);
            }
            exponent = expNegative ? -exponent : exponent;
        } else {
            i = mark;
        }
    }

    // Magnitude check before parsing, so that no conversion runs out of range.
    const std::size_t firstInt = intDigits.find_first_not_of('0');
    long long magnitude = 0; // value lies below 10^magnitude
    if (firstInt != std::string::npos) {
        magnitude = static_cast<long long>(intDigits.size() - firstInt) + exponent;
    } else {
        const std::size_t firstFrac = fracDigits.find_first_not_of('0');
        if (firstFrac == std::string::npos) {
            return 0.0; // all zeros, also "-0"
        }
        magnitude = -static_cast<long long>(firstFrac) + exponent;
    }
    if (magnitude > 310) {
        return negative ? -std::numeric_limits<double>::infinity()
                        : std::numeric_limits<double>::infinity();
    }
    if (magnitude < -330) {
        return 0.0;
    }

    std::string number = intDigits.empty() ? "0" : intDigits;
    if (!fracDigits.empty()) {
        number += '.';
        number += fracDigits;
    }
    number += 'e';
    number += std::to_string(exponent);
    double value = 0.0;
    const auto [ptr, ec] = std::from_chars(number.data(), number.data() + number.size(), value);
    (void)ptr;
    if (ec == std::errc::result_out_of_range) {
        value = magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    } else if (ec != std::errc()) {
        return 0.0;
    }
    if (value == 0.0) {
        return 0.0;
    }
    return negative ? -value : value;
}

} // namespace

std::int16_t ToI16(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    constexpr double lowest = std::numeric_limits<std::int16_t>::min();
    constexpr double highest = std::numeric_limits<std::int16_t>::max();
    if (value <= lowest) {
        return std::numeric_limits<std::int16_t>::min();
    }
    if (value >= highest) {
        return std::numeric_limits<std::int16_t>::max();
    }
    double whole = std::floor(value);
    const double fraction = value - whole;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(whole, 2.0) != 0.0)) {
        whole += 1.0;
    }
    return static_cast<std::int16_t>(whole);
}

float ToF32(double value) {
    if (std::isnan(value)) {
        return 0.0f;
    }
    constexpr double highest = std::numeric_limits<float>::max();
    if (value >= highest) {
        return std::numeric_limits<float>::max();
    }
    if (value <= -highest) {
        return std::numeric_limits<float>::lowest();
    }
    return static_cast<float>(value);
}

int FilterKey(int& key, int flags) {
    if (key == ',') {
        key = '.';
    }
    const bool digit = key >= '0' && key <= '9';
    const bool backspace = key == 8;
    const bool point = key == '.' && (flags & 1) != 0;
    const bool minus = key == '-' && (flags & 2) != 0;
    if (!(digit || backspace || point || minus)) {
        key = 0;
    }
    return key;
}

} // namespace quarle
