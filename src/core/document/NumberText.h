// The number forms of the system: how the document's numbers become text.
//
// The text of a float, FloatToText:
// - the float is rounded to seven significant digits (from its exact binary
//   value, an exact half to the even digit), and trailing zeros are dropped:
//   1.8f is "1.8", 0.1f is "0.1", 1234567.75f is "1234568";
// - a minus stands before negatives, a zero before the separator below one;
// - plain notation while the rounded value's decimal exponent is -4 to 6, so
//   from 0.0001 up to 9999999; outside that an exponent form with the same
//   mantissa rules, "E", a sign and at least two digits: 1E+07, 1.234568E+08,
//   1E-05, -2.5E-06, 3.402823E+38;
// - negative zero is "0"; NaN is "0"; an infinity is written as the largest
//   float of its sign (3.402823E+38), so that a script stays readable by the
//   compiler and the reader. None of them can come from TextToNumber.
#pragma once

#include "document/Document.h"

#include <optional>
#include <string>
#include <string_view>

namespace quarle {

// The decimal separator of the user's locale, read once and then kept.
// On POSIX systems it is the locale named by the environment, in the usual
// order LC_ALL, LC_NUMERIC, LANG (the first one set and not empty); unset,
// "C" and "POSIX" give '.'. On Windows it is the user's regional setting.
// Nothing here touches the process's global locale.
char SystemDecimalSeparator();

// The decimal separator of a POSIX locale name such as "de_DE.UTF-8": asked
// of the system's locale data, and when the locale is not installed, taken
// from a small table of languages that write a decimal comma. '.' when it
// cannot be told, and when the locale's separator is not one byte.
char DecimalSeparatorOfLocale(std::string_view localeName);

// The float as text in the user's locale (or with the given separator).
std::string FloatToText(f32 value, char decimalSeparator = SystemDecimalSeparator());
// FloatToText with a point, whatever the locale.
std::string FloatToPointText(f32 value);
// Plain decimal digits with a leading minus for negatives.
std::string IntToText(long long value);

// The strict conversion of the number fields: the whole text, blanks around
// it aside, is one number: an optional sign, digits with at most one decimal
// separator (the locale's, or a point, which no locale here uses to group
// thousands), at least one digit, an optional exponent (E or e, optional
// sign, digits). Anything else, "-", "1.2.3", "", "1e", has no value.
std::optional<double> StrictNumber(std::string_view text,
                                   char decimalSeparator = SystemDecimalSeparator());
// StrictNumber into an i16 field: rounded to the nearest, halves to even;
// no value outside -32768..32767.
std::optional<i16> StrictToI16(std::string_view text,
                               char decimalSeparator = SystemDecimalSeparator());
// StrictNumber into an f32 field: the nearest float; no value beyond the
// largest finite float.
std::optional<f32> StrictToF32(std::string_view text,
                               char decimalSeparator = SystemDecimalSeparator());

// TextToNumber for the fields that show their number with FloatToText: the
// same reading (it never fails, it reads the number at the start of the
// text, "1.2.3" is 1.2), but the user's decimal separator counts as a point
// too, so that "1,8" shown on a decimal-comma system comes back as 1.8 and
// not as 1. With a point locale it is TextToNumber as it stands ("1,5" is 1).
double FieldNumber(std::string_view text, char decimalSeparator = SystemDecimalSeparator());

} // namespace quarle
