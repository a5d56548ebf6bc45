#include "compile/CompilerText.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <type_traits>
#include <cstdlib>
#include <string>

namespace quarle::compile {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

char Fold(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

namespace {

// A plain decimal number ("-12.5", "0.001953") of at most 15 digits: the
// quotient of its digits and a power of ten, both exact in double
// precision, is the nearest double. Rounded on to float it is the nearest
// float too, unless it fell right on the middle between two floats (then
// the general routine decides). The common case of .smd files, read without
// the general routine.
bool QuickFloat(const char* first, const char* last, float& value, const char*& end) {
    constexpr double Powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7,
                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    std::uint64_t digits = 0;
    int count = 0;
    int after = -1;
    const char* p = first;
    for (; p < last; ++p) {
        if (*p >= '0' && *p <= '9') {
            if (++count > 15) {
                return false;
            }
            digits = digits * 10 + static_cast<std::uint64_t>(*p - '0');
            after += after >= 0 ? 1 : 0;
        } else if (*p == '.' && after < 0) {
            after = 0;
        } else {
            break;
        }
    }
    if (count == 0 || (p < last && (*p == 'e' || *p == 'E' || *p == 'x' || *p == 'X'))) {
        return false;
    }
    const double exact = static_cast<double>(digits) / Powers[after < 0 ? 0 : after];
    // The 29 bits a float drops: exactly one half of its last place.
    if ((std::bit_cast<std::uint64_t>(exact) & 0x1FFFFFFFu) == 0x10000000u) {
        return false;
    }
    value = static_cast<float>(exact);
    end = p;
    return true;
}

} // namespace

template <class T> std::optional<T> ReadCNumber(std::string_view s, std::size_t& pos) {
    std::size_t j = pos;
    const bool negative = j < s.size() && s[j] == '-';
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) {
        ++j;
    }
    if (j >= s.size() || s[j] == '+' || s[j] == '-') {
        return std::nullopt;
    }
    const char* first = s.data() + j;
    const char* last = s.data() + s.size();
    T value = 0;
    if constexpr (std::is_same_v<T, float>) {
        const char* end = nullptr;
        if (QuickFloat(first, last, value, end)) {
            pos = static_cast<std::size_t>(end - s.data());
            return negative ? -value : value;
        }
    }
    std::from_chars_result r{};
    if (last - first >= 2 && first[0] == '0' && (first[1] == 'x' || first[1] == 'X')) {
        r = std::from_chars(first + 2, last, value, std::chars_format::hex);
        if (r.ptr == first + 2) {
            r = {first + 1, std::errc()}; // "0x" without digits reads as 0
            value = 0;
        }
    } else {
        r = std::from_chars(first, last, value);
        if (r.ptr == first) {
            return std::nullopt;
        }
    }
    if (r.ec == std::errc::result_out_of_range) {
        // Too large: infinity; too small: zero, as the C library reads it.
        const std::string copy(first, r.ptr);
        value = static_cast<T>(std::strtod(copy.c_str(), nullptr));
    }
    pos = static_cast<std::size_t>(r.ptr - s.data());
    return negative ? -value : value;
}

template std::optional<float> ReadCNumber(std::string_view, std::size_t&);
template std::optional<double> ReadCNumber(std::string_view, std::size_t&);

double Atof(std::string_view s) {
    std::size_t pos = 0;
    while (pos < s.size() && IsBlank(s[pos])) {
        ++pos;
    }
    return ReadCNumber<double>(s, pos).value_or(0.0);
}

std::optional<int> ReadCInt(std::string_view s, std::size_t& pos) {
    std::size_t j = pos;
    const bool negative = j < s.size() && s[j] == '-';
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) {
        ++j;
    }
    unsigned long long value = 0;
    const auto [end, ec] = std::from_chars(s.data() + j, s.data() + s.size(), value);
    if (end == s.data() + j) {
        return std::nullopt;
    }
    pos = static_cast<std::size_t>(end - s.data());
    // Beyond the range of an int the C library holds the largest one.
    const long long limited = ec == std::errc::result_out_of_range || value > 0x7FFFFFFFull
                                  ? 0x7FFFFFFFll
                                  : static_cast<long long>(value);
    return static_cast<int>(negative ? -limited : limited);
}

int Atoi(std::string_view s) {
    std::size_t pos = 0;
    while (pos < s.size() && IsBlank(s[pos])) {
        ++pos;
    }
    return ReadCInt(s, pos).value_or(0);
}

bool StartsWithNumber(std::string_view s) {
    std::size_t j = 0;
    while (j < s.size() && IsBlank(s[j])) {
        ++j;
    }
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) {
        ++j;
    }
    return j < s.size() && s[j] >= '0' && s[j] <= '9';
}

bool PrefixNoCase(std::string_view word, std::string_view token, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const char a = i < word.size() ? Fold(word[i]) : '\0';
        const char b = i < token.size() ? Fold(token[i]) : '\0';
        if (a != b) {
            return false;
        }
        if (a == '\0') {
            return true;
        }
    }
    return true;
}

} // namespace quarle::compile
