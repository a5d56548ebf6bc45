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

// The two files name the same controls in the same order, and the English
// one gives a text wherever the German one does: an empty value would leave
// the designed German text on screen. Each control has something to say.
TEST(DataFiles, EnglishTranslatesEveryGermanText) {
    const auto de = ReadLanguageLines(DataFolder / "deutsch.lng");
    const auto en = ReadLanguageLines(DataFolder / "english.lng");
    ASSERT_TRUE(de && en);
    const LngContents german = ParseLanguageFile(*de);
    const LngContents english = ParseLanguageFile(*en);
    ASSERT_FALSE(german.Sections.empty());
    ASSERT_EQ(german.Sections.size(), english.Sections.size());
    for (std::size_t s = 0; s < german.Sections.size(); ++s) {
        const LngSection& g = german.Sections[s];
        const LngSection& e = english.Sections[s];
        ASSERT_EQ(g.Name, e.Name);
        ASSERT_EQ(g.Entries.size(), e.Entries.size()) << g.Name;
        for (std::size_t i = 0; i < g.Entries.size(); ++i) {
            EXPECT_EQ(g.Entries[i].Key, e.Entries[i].Key) << g.Name;
            EXPECT_EQ(g.Entries[i].Value.empty(), e.Entries[i].Value.empty())
                << g.Name << " " << g.Entries[i].Key << ": \"" << g.Entries[i].Value << "\"";
            EXPECT_EQ(g.Entries[i].Value == NotAvailable, e.Entries[i].Value == NotAvailable)
                << g.Name << " " << g.Entries[i].Key;
        }
        for (std::size_t i = 1; i + 1 < g.Entries.size(); i += 2) {
            EXPECT_FALSE(g.Entries[i].Value.empty() && g.Entries[i + 1].Value.empty())
                << g.Name << " " << g.Entries[i].Key << " has nothing to say";
        }
    }
}

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
