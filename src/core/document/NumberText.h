// The number forms of the system: how the document's numbers become text.
#pragma once

#include <string>

#include "document/Document.h"

namespace quarle {

// The decimal separator of the user's locale, read once from the environment
// (LC_ALL, LC_NUMERIC, LANG); '.' when it cannot be told.
char SystemDecimalSeparator();

// At most seven significant digits, no trailing zeros, a zero before the
// separator below one, a minus for negatives, the given separator.
std::string FloatToText(f32 value, char decimalSeparator = SystemDecimalSeparator());
// FloatToText with a point, whatever the locale.
std::string FloatToPointText(f32 value);
// Plain decimal digits with a leading minus for negatives.
std::string IntToText(long long value);

} // namespace quarle
