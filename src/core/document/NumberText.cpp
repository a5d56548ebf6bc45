#include "document/NumberText.h"

#include "document/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <langinfo.h>
#include <locale.h>
#if defined(__APPLE__)
#include <xlocale.h>
#endif
#endif

namespace quarle {

namespace {

// Languages that write a decimal comma, with the regions of those languages
// that write a point. Only asked when the named locale is not installed.
constexpr std::array<std::string_view, 45> CommaLanguages = {
    "af", "az", "be", "bg", "bs", "ca", "cs", "da", "de", "el", "es", "et", "eu", "fi", "fo",
    "fr", "gl", "hr", "hu", "hy", "id", "is", "it", "ka", "kk", "ky", "lt", "lv", "mk", "nb",
    "nl", "nn", "no", "pl", "pt", "ro", "ru", "sk", "sl", "sq", "sr", "sv", "tr", "uk", "vi"};
constexpr std::array<std::string_view, 13> PointRegions = {
    "de_CH", "de_LI", "it_CH", "es_MX", "es_US", "es_PR", "es_DO",
    "es_GT", "es_HN", "es_NI", "es_PA", "es_SV", "es_PE"};

char SeparatorFromTable(std::string_view name) {
    // "de_DE.UTF-8@euro": language and region end at the code set or modifier.
    std::string languageRegion(name.substr(0, name.find_first_of(".@")));
    for (char& c : languageRegion) {
        c = c == '-' ? '_' : c;
    }
    for (std::string_view region : PointRegions) {
        if (languageRegion == region) {
            return '.';
        }
    }
    const std::string_view language =
        std::string_view(languageRegion).substr(0, languageRegion.find('_'));
    for (std::string_view comma : CommaLanguages) {
        if (language == comma) {
            return ',';
        }
    }
    return '.';
}

[[maybe_unused]] char SeparatorOfText(const char* text) {
    // Only a one-byte separator can be written into a script line.
    if (text != nullptr && text[0] != '\0' && text[1] == '\0' &&
        static_cast<unsigned char>(text[0]) < 0x80) {
        return text[0];
    }
    return '.';
}

// Digits and decimal exponent of a float rounded to seven significant digits.
struct Decimal {
    std::string Digits; // no trailing zeros, at least one digit
    int Exponent = 0;   // value = D.DDDDDD x 10^Exponent
};

Decimal ToDecimal(float magnitude) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                      std::chars_format::scientific, 6);
    const std::string_view text(buffer.data(),
                                static_cast<std::size_t>(result.ptr - buffer.data()));
    // "d.dddddde+XX"
    Decimal d;
    const std::size_t e = text.find('e');
    for (char c : text.substr(0, e)) {
        if (c != '.') {
            d.Digits.push_back(c);
        }
    }
    const std::string_view exponent = text.substr(e + 1);
    const char* first = exponent.data() + (exponent.front() == '+' ? 1 : 0);
    std::from_chars(first, exponent.data() + exponent.size(), d.Exponent);
    while (d.Digits.size() > 1 && d.Digits.back() == '0') {
        d.Digits.pop_back();
    }
    return d;
}

} // namespace

char DecimalSeparatorOfLocale(std::string_view localeName) {
    if (localeName.empty() || localeName == "C" || localeName == "POSIX" ||
        localeName.substr(0, 2) == "C.") {
        return '.';
    }
#if !defined(_WIN32)
    const std::string name(localeName);
    if (locale_t locale = newlocale(LC_NUMERIC_MASK, name.c_str(), locale_t{});
        locale != locale_t{}) {
        const char separator = SeparatorOfText(nl_langinfo_l(RADIXCHAR, locale));
        freelocale(locale);
        return separator;
    }
#endif
    return SeparatorFromTable(localeName);
}

char SystemDecimalSeparator() {
    static const char separator = [] {
#if defined(_WIN32)
        wchar_t text[8] = {};
        if (GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, text, 8) == 2 &&
            text[0] > 0 && text[0] < 0x80) {
            return static_cast<char>(text[0]);
        }
        return '.';
#else
        for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
            const char* value = std::getenv(variable);
            if (value != nullptr && value[0] != '\0') {
                return DecimalSeparatorOfLocale(value);
            }
        }
        return '.';
#endif
    }();
    return separator;
}

std::string FloatToText(f32 value, char decimalSeparator) {
    if (std::isnan(value) || value == 0.0f) {
        return "0";
    }
    if (std::isinf(value)) {
        value =
            value > 0 ? std::numeric_limits<float>::max() : std::numeric_limits<float>::lowest();
    }
    if (std::fabs(value) < 1e7f && value == std::trunc(value)) {
        // A whole number of at most seven digits is its digits.
        return IntToText(static_cast<long long>(value));
    }
    const Decimal d = ToDecimal(std::fabs(value));
    std::string text = value < 0 ? "-" : "";
    if (d.Exponent >= 7 || d.Exponent <= -5) {
        text += d.Digits[0];
        if (d.Digits.size() > 1) {
            text += decimalSeparator;
            text.append(d.Digits, 1);
        }
        text += d.Exponent < 0 ? "E-" : "E+";
        const int magnitude = std::abs(d.Exponent);
        if (magnitude < 10) {
            text += '0';
        }
        text += IntToText(magnitude);
    } else if (d.Exponent >= 0) {
        const std::size_t whole = static_cast<std::size_t>(d.Exponent) + 1;
        if (d.Digits.size() <= whole) {
            text += d.Digits;
            text.append(whole - d.Digits.size(), '0');
        } else {
            text.append(d.Digits, 0, whole);
            text += decimalSeparator;
            text.append(d.Digits, whole);
        }
    } else {
        text += '0';
        text += decimalSeparator;
        text.append(static_cast<std::size_t>(-d.Exponent - 1), '0');
        text += d.Digits;
    }
    return text;
}

std::string FloatToPointText(f32 value) {
    return FloatToText(value, '.');
}

std::string IntToText(long long value) {
    std::array<char, 24> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}


std::optional<double> StrictNumber(std::string_view text, char decimalSeparator) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    std::string plain; // the text in the C library's own spelling
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        plain += text[i++];
    }
    int digits = 0;
    bool separator = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9') {
            plain += c;
            ++digits;
        } else if ((c == decimalSeparator || c == '.') && !separator) {
            plain += '.';
            separator = true;
        } else {
            break;
        }
    }
    if (digits == 0) {
        return std::nullopt;
    }
    if (i < text.size() && (text[i] == 'E' || text[i] == 'e')) {
        plain += 'e';
        ++i;
        if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
            plain += text[i++];
        }
        int exponentDigits = 0;
        for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
            plain += text[i];
            ++exponentDigits;
        }
        if (exponentDigits == 0) {
            return std::nullopt;
        }
    }
    if (i != text.size()) {
        return std::nullopt;
    }
    const char* first = plain.c_str();
    if (*first == '+') {
        ++first;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(first, plain.c_str() + plain.size(), value);
    if (error != std::errc() || end != plain.c_str() + plain.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value == 0 ? 0.0 : value;
}

std::optional<i16> StrictToI16(std::string_view text, char decimalSeparator) {
    const std::optional<double> value = StrictNumber(text, decimalSeparator);
    if (!value) {
        return std::nullopt;
    }
    const double rounded = std::nearbyint(*value); // the default mode: halves to even
    if (rounded < -32768.0 || rounded > 32767.0) {
        return std::nullopt;
    }
    return static_cast<i16>(rounded);
}

std::optional<f32> StrictToF32(std::string_view text, char decimalSeparator) {
    const std::optional<double> value = StrictNumber(text, decimalSeparator);
    if (!value || std::fabs(*value) > static_cast<double>(std::numeric_limits<f32>::max())) {
        return std::nullopt;
    }
    return static_cast<f32>(*value);
}

double FieldNumber(std::string_view text, char decimalSeparator) {
    if (decimalSeparator == '.') {
        return TextToNumber(text);
    }
    std::string pointed(text);
    for (char& c : pointed) {
        if (c == decimalSeparator) {
            c = '.';
        }
    }
    return TextToNumber(pointed);
}

} // namespace quarle
