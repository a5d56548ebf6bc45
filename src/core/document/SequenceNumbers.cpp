#include "document/SequenceNumbers.h"

#include "document/QcGrammar.h"

namespace quarle {

int SequenceNumberOf(std::string_view token) {
    for (std::size_t i = 0; i < SequenceNumberCount; ++i) {
        const std::string_view keyword = SequenceNumbers[i].Keyword;
        if (token.size() == keyword.size() && EqualNoCase(token, keyword)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

double SequenceNumberValue(const AnimRec& anim, std::size_t row) {
    const SequenceNumberField& field = SequenceNumbers[row].Field;
    return field.Whole != nullptr ? static_cast<double>(anim.*field.Whole)
                                  : static_cast<double>(anim.*field.Real);
}

void SetSequenceNumber(AnimRec& anim, std::size_t row, double value) {
    const SequenceNumberField& field = SequenceNumbers[row].Field;
    if (field.Whole != nullptr) {
        anim.*field.Whole = static_cast<i16>(value);
    } else {
        anim.*field.Real = static_cast<f32>(value);
    }
}

double SequenceNumberDefault(std::size_t row) {
    static const AnimRec fresh{};
    return SequenceNumberValue(fresh, row);
}

} // namespace quarle
