// The shipped language files as the program reads them. Their layout is
// tools/lng/generate.py's (its --check runs as a test of its own); the
// controls they name are checked against the built forms in the ui tests.
#include "localisation/LanguageFile.h"
#include "localisation/MessageTexts.h"

#include <gtest/gtest.h>

namespace quarle {
namespace {

const std::filesystem::path DataFolder =
    std::filesystem::path(QUARLE_TEST_DATA) / ".." / ".." / "data";

// The program reads every message of both files; the English file says what
// the program says without a file.
TEST(DataFiles, TheProgramReadsEveryMessage) {
    for (const char* file : {"deutsch.lng", "english.lng"}) {
        SCOPED_TRACE(file);
        const auto lines = ReadLanguageLines(DataFolder / file);
        ASSERT_TRUE(lines);
        const LngContents contents = ParseLanguageFile(*lines);
        ASSERT_TRUE(contents.Messages);
        ASSERT_EQ(contents.Messages->Entries.size(), MsgCount);
        MessageTexts texts;
        ASSERT_TRUE(ReadMessageTexts(*lines, texts));
        for (std::size_t i = 0; i < MsgCount; ++i) {
            EXPECT_EQ(texts[i], contents.Messages->Entries[i].Value) << MessageTable[i].Key;
        }
        if (std::string_view(file) == "english.lng") {
            EXPECT_EQ(texts, EnglishMessageTexts());
        }
    }
}

} // namespace
} // namespace quarle
