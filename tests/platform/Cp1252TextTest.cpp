#include "platform/Cp1252Text.h"

#include <gtest/gtest.h>

namespace quarle::platform {
namespace {

// Text on its way into the document: the strict form refuses what cp1252
// cannot hold, the marked form keeps one '?' per character in its place
// (a character beyond the 16-bit plane included), and both agree on the
// rest, the undefined bytes 0x81 to 0x9D too.
TEST(Cp1252Text, StrictAndMarkedAgreeOnWhatCp1252Holds) {
    struct Row {
        QString text;
        std::optional<std::string> strict;
        std::string marked;
    };
    const Row rows[] = {
        {QStringLiteral(u"Gr\u00fc\u00dfe \u20ac\u0081"),
         std::string("Gr\xfc\xdf"
                     "e \x80\x81"),
         std::string("Gr\xfc\xdf"
                     "e \x80\x81")},
        {QStringLiteral(u"a\u2713b"), std::nullopt, "a?b"},
        {QString::fromUcs4(U"x\U0001F600y"), std::nullopt, "x?y"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ToCp1252(row.text), row.strict) << row.marked;
        EXPECT_EQ(ToCp1252Marked(row.text), row.marked);
        if (row.strict) {
            EXPECT_EQ(FromCp1252(*row.strict), row.text);
        }
    }
}

} // namespace
} // namespace quarle::platform
