#include "document/SequenceNumbers.h"

#include "document/QcGrammar.h"

namespace quarle {

namespace {

// The first letters of the keywords, either case: most tokens of a sequence
// start with none of them.
struct FirstLetters {
    bool Has[256] = {};
    constexpr FirstLetters() {
        for (const SequenceNumber& row : SequenceNumbers) {
            const char c = row.Keyword[0];
            Has[static_cast<unsigned char>(c)] = true;
            if (c >= 'a' && c <= 'z') {
                Has[static_cast<unsigned char>(c - 'a' + 'A')] = true;
            } else if (c >= 'A' && c <= 'Z') {
                Has[static_cast<unsigned char>(c - 'A' + 'a')] = true;
            }
        }
    }
};
constexpr FirstLetters Starts;

} // namespace

int SequenceNumberOf(std::string_view token) {
    if (token.empty() || !Starts.Has[static_cast<unsigned char>(token.front())]) {
        return -1;
    }
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
