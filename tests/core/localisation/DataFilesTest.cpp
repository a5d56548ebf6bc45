// The shipped language files, read as a whole without any form.
#include "localisation/Cp1252.h"
#include "localisation/LanguageFile.h"
#include "localisation/MessageTexts.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>

namespace quarle {
namespace {

const std::filesystem::path DataFolder =
    std::filesystem::path(QUARLE_TEST_DATA) / ".." / ".." / "data";

// Every form that reads a language file when it loads, and the two texture
// dialogs, which keep their designed captions but whose sections the
// language editor rewrites.
const std::set<std::string> Forms = {
    "FrmMain",
    "DlgSettings",
    "frmAbout",
    "DlgOrigin",
    "DlgController",
    "Wizard2",
    "Wizard3",
    "Wizard4",
    "Wizard5",
    "AnimWiz1",
    "AnimWiz2",
    "AnimWiz3",
    "AnimWiz4",
    "AnimWiz5",
    "DlgCompile",
    "DlgBindung",
    "DlgModeleinstellungen",
    "DlgName",
    "FrmEvents",
    "DlgAnimExt",
    "DlgRenameGroup",
    "DlgTextureGroup",
    "DlgTexturemode",
};

std::string ReadBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class DataFile : public ::testing::TestWithParam<const char*> {
protected:
    std::filesystem::path Path() const { return DataFolder / GetParam(); }
};

TEST_P(DataFile, IsCp1252WithCrLfLineEnds) {
    const std::string bytes = ReadBytes(Path());
    ASSERT_FALSE(bytes.empty()) << Path();
    EXPECT_EQ(bytes.substr(bytes.size() - 2), "\r\n");
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\n') {
            ASSERT_TRUE(i > 0 && bytes[i - 1] == '\r') << "bare LF at byte " << i;
        } else if (bytes[i] == '\r') {
            ASSERT_TRUE(i + 1 < bytes.size() && bytes[i + 1] == '\n') << "bare CR at byte " << i;
        }
    }
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(bytes)), bytes);
    // No UTF-8 in disguise: a cp1252 umlaut is one byte.
    EXPECT_EQ(bytes.find("\xC3"), std::string::npos);
    EXPECT_EQ(bytes.compare(0, 17, "Version = 0.8.4\r\n"), 0);
}

TEST_P(DataFile, HasEverySectionAndTheStringsBlockInShape) {
    const auto lines = ReadLanguageLines(Path());
    ASSERT_TRUE(lines);
    const LngContents contents = ParseLanguageFile(*lines);

    ASSERT_GE(contents.Header.size(), 2u);
    EXPECT_EQ(contents.Header[0], (LngEntry{"Version", "0.8.4"}));
    EXPECT_EQ(contents.Header[1].Key, "InfoForThis");
    EXPECT_FALSE(contents.Header[1].Value.empty());

    std::set<std::string> names;
    for (const LngSection& section : contents.Sections) {
        EXPECT_TRUE(names.insert(section.Name).second) << "two sections " << section.Name;
        EXPECT_TRUE(Forms.count(section.Name)) << "no such form: " << section.Name;
        ASSERT_FALSE(section.Entries.empty());
        EXPECT_EQ(section.Entries[0].Key, "Titel") << section.Name;
        EXPECT_FALSE(section.Entries[0].Value.empty()) << section.Name;
        // Then pairs of lines: caption and tool tip of one control, each key once.
        ASSERT_EQ(section.Entries.size() % 2, 1u) << section.Name;
        std::set<std::string> keys;
        for (std::size_t i = 1; i < section.Entries.size(); i += 2) {
            const LngEntry& caption = section.Entries[i];
            const LngEntry& tip = section.Entries[i + 1];
            EXPECT_EQ(caption.Key, tip.Key) << section.Name;
            EXPECT_NE(caption.Key, "Titel") << section.Name;
            EXPECT_TRUE(keys.insert(caption.Key).second) << section.Name << " " << caption.Key;
            EXPECT_FALSE(caption.Value.empty() && tip.Value.empty())
                << section.Name << " " << caption.Key << " has nothing to say";
        }
        // Every section ends with an empty line and the separator.
        const std::size_t end = section.HeadLine + 1 + section.Entries.size();
        ASSERT_LT(end + 1, lines->size());
        EXPECT_EQ((*lines)[end], "") << section.Name;
        EXPECT_EQ((*lines)[end + 1], SeparatorLine) << section.Name;
    }
    EXPECT_EQ(names, Forms);

    ASSERT_TRUE(contents.HasGlobalStrings);
    ASSERT_TRUE(contents.CountLine);
    EXPECT_EQ(contents.CountLine->Value, "93");
    ASSERT_EQ(contents.Strings.size(), 93u);
    for (std::size_t i = 0; i < contents.Strings.size(); ++i) {
        EXPECT_EQ(contents.Strings[i].Key, IdsKeyTable[i + 1]);
    }
    EXPECT_EQ(contents.LinesAfterStrings, 0u);
}

// The messages: every key once, in the order of the table, with a text that
// has the placeholders of the English one; the section stands ahead of the
// strings and ends as a form section does.
TEST_P(DataFile, HasEveryMessageAheadOfTheStrings) {
    const auto lines = ReadLanguageLines(Path());
    ASSERT_TRUE(lines);
    const LngContents contents = ParseLanguageFile(*lines);
    ASSERT_TRUE(contents.Messages);
    const std::vector<LngEntry>& entries = contents.Messages->Entries;
    ASSERT_EQ(entries.size(), MsgCount);
    const std::regex placeholder("%[1-9]");
    auto placeholders = [&](std::string_view text) {
        std::set<std::string> found;
        const std::string s(text);
        for (auto it = std::sregex_iterator(s.begin(), s.end(), placeholder);
             it != std::sregex_iterator(); ++it) {
            found.insert(it->str());
        }
        return found;
    };
    for (std::size_t i = 0; i < MsgCount; ++i) {
        EXPECT_EQ(entries[i].Key, MessageTable[i].Key);
        EXPECT_FALSE(entries[i].Value.empty()) << entries[i].Key;
        EXPECT_EQ(placeholders(entries[i].Value), placeholders(MessageTable[i].English))
            << entries[i].Key;
    }
    const std::size_t end = contents.Messages->HeadLine + 1 + entries.size();
    ASSERT_LT(end + 2, lines->size());
    EXPECT_EQ((*lines)[end], "");
    EXPECT_EQ((*lines)[end + 1], SeparatorLine);
    EXPECT_EQ((*lines)[end + 2], GlobalStringsLine);

    // And the program reads every one of them.
    MessageTexts texts;
    EXPECT_TRUE(ReadMessageTexts(*lines, texts));
    for (std::size_t i = 0; i < MsgCount; ++i) {
        EXPECT_EQ(texts[i], entries[i].Value);
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, DataFile, ::testing::Values("deutsch.lng", "english.lng"),
                         [](const auto& info) { return std::string(info.param).substr(0, 7); });

// The two files name the same controls in the same order, and the English
// one gives a text wherever the German one does: an empty value would leave
// the designed German text on screen.
TEST(DataFiles, EnglishTranslatesEveryGermanText) {
    const auto de = ReadLanguageLines(DataFolder / "deutsch.lng");
    const auto en = ReadLanguageLines(DataFolder / "english.lng");
    ASSERT_TRUE(de && en);
    const LngContents german = ParseLanguageFile(*de);
    const LngContents english = ParseLanguageFile(*en);
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
    }
    // The English file says what the program says without a file; the
    // German one translates every message.
    ASSERT_TRUE(german.Messages && english.Messages);
    for (std::size_t i = 0; i < MsgCount; ++i) {
        EXPECT_EQ(english.Messages->Entries[i].Value, MessageTable[i].English);
    }
    EXPECT_EQ(german.Messages->Entries[MSG_PARTS_FULL].Value,
              "Diese Bodygruppe hat schon %1 Teile, mehr kann eine Gruppe nicht aufnehmen. Es "
              "wurde kein Teil hinzugef\xC3\xBCgt.");
    EXPECT_EQ(german.CountLine->Key, "Anzahl");
    EXPECT_EQ(english.CountLine->Key, "Count");
    // German umlauts arrive as UTF-8 after reading.
    EXPECT_NE(std::find(de->begin(), de->end(),
                        "MnuHilfeUeber = &\xC3\x9C"
                        "ber"),
              de->end());
}

} // namespace
} // namespace quarle
