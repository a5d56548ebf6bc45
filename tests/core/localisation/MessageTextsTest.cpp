// The messages beyond the key table: their section in a language file, the
// placeholders, and the reader's problems told in the active language.
#include "localisation/MessageTexts.h"

#include "document/ReaderHost.h"
#include "localisation/LanguageFile.h"

#include <gtest/gtest.h>
#include <set>

namespace quarle {
namespace {

using Lines = std::vector<std::string>;

std::string Text(const MessageTexts& texts, Msg key) {
    return texts[static_cast<std::size_t>(key)];
}

TEST(MessageTexts, TableHasOneKeyPerMessageAndFindsItInAnyCase) {
    const MessageTexts english = DefaultMessageTexts();
    std::set<std::string> keys;
    for (const MessageEntry& entry : MessageTable) {
        EXPECT_TRUE(keys.insert(std::string(entry.Key)).second) << entry.Key;
        EXPECT_TRUE(entry.Key.starts_with("MSG_")) << entry.Key;
        EXPECT_FALSE(entry.English.empty()) << entry.Key;
        EXPECT_EQ(FindMessageKey(entry.Key), entry.Id);
        EXPECT_EQ(Text(english, entry.Id), entry.English);
    }
    EXPECT_EQ(FindMessageKey("msg_Parts_Full"), MSG_PARTS_FULL);
    EXPECT_EQ(FindMessageKey("MSG_PARTS_FULL "), std::nullopt);
    EXPECT_EQ(FindMessageKey("IDS_ERROR"), std::nullopt);
    EXPECT_EQ(FindMessageKey(""), std::nullopt);
}

TEST(MessageTexts, SectionReplacesTheTextsOfItsKeysAndNothingElse) {
    const Lines lines = {
        "Version = 0.8.4",
        "FrmMain",
        "Titel = Quarle",
        "MSG_ONE_ERROR = a form's entry, not a message",
        "",
        "Quarle Messages",
        "msg_parts_full = Schon %1 Teile", // another case
        "MSG_NO_SUCH_MESSAGE = skipped",   // unknown
        "MSG_SAVE_SCRIPT = ",              // empty: the default stays
        "MSG_READ_DETAIL = %1 = \"%2\"",   // "=" in the value
        "MSG_ERRORS   =   %1 Fehler  ",    // blanks around key and value
        "",                                // the end of the section
        "MSG_ONE_WARNING = behind the end",
        "----------------------",
        "Global Strings",
        "Anzahl = 93",
    };
    MessageTexts texts = DefaultMessageTexts();
    texts[MSG_GROUPS_FULL] = "a text of the language before";
    EXPECT_TRUE(ReadMessageTexts(lines, texts));

    EXPECT_EQ(Text(texts, MSG_PARTS_FULL), "Schon %1 Teile");
    EXPECT_EQ(Text(texts, MSG_READ_DETAIL), "%1 = \"%2\"");
    EXPECT_EQ(Text(texts, MSG_ERRORS), "%1 Fehler");
    EXPECT_EQ(Text(texts, MSG_SAVE_SCRIPT), "Script: %1");
    EXPECT_EQ(Text(texts, MSG_ONE_ERROR), "1 error");
    EXPECT_EQ(Text(texts, MSG_ONE_WARNING), "1 warning");
    // A key the file doesn't give is English again, whatever it held.
    EXPECT_EQ(Text(texts, MSG_GROUPS_FULL), Text(EnglishMessageTexts(), MSG_GROUPS_FULL));
}

TEST(MessageTexts, WithoutASectionAheadOfTheStringsEverythingIsEnglish) {
    MessageTexts texts;
    texts[MSG_PARTS_FULL] = "old";
    EXPECT_FALSE(ReadMessageTexts({"Version = 0.8.4", "Global Strings", "Anzahl = 93"}, texts));
    EXPECT_EQ(texts, EnglishMessageTexts());

    // Behind "Global Strings" a line of that name is no head.
    texts[MSG_PARTS_FULL] = "old";
    EXPECT_FALSE(ReadMessageTexts(
        {"Global Strings", "Anzahl = 93", "Quarle Messages", "MSG_PARTS_FULL = x"}, texts));
    EXPECT_EQ(texts, EnglishMessageTexts());

    // The head is compared with case; a head on the last line gives nothing.
    EXPECT_FALSE(ReadMessageTexts({"quarle messages", "MSG_PARTS_FULL = x"}, texts));
    EXPECT_TRUE(ReadMessageTexts({"Quarle Messages"}, texts));
    EXPECT_EQ(texts, EnglishMessageTexts());
}

TEST(MessageTexts, PlaceholdersAreReplacedInOnePass) {
    EXPECT_EQ(FormatMessage("%1 cannot be written in %2: %3", {"compile.sh", "/w", "full"}),
              "compile.sh cannot be written in /w: full");
    // Any order, twice, and an argument that looks like a placeholder.
    EXPECT_EQ(FormatMessage("%2 %1 %2", {"a", "%1"}), "%1 a %1");
    // Placeholders without an argument, and what is no placeholder, stay.
    EXPECT_EQ(FormatMessage("%1 %3 %0 100% %", {"x"}), "x %3 %0 100% %");
    EXPECT_EQ(FormatMessage("no parts", {}), "no parts");
    EXPECT_EQ(FormatMessage("%1%1", {""}), "");
}

TEST(MessageTexts, ReaderProblemsAreToldInTheTextsGiven) {
    // Every kind has a message of its own.
    std::set<Msg> seen;
    for (int k = 0; k < ReadProblemKinds; ++k) {
        EXPECT_TRUE(seen.insert(ProblemMessage(static_cast<ReadProblem>(k))).second);
    }
    EXPECT_EQ(ProblemMessage(ReadProblem::ScriptUnreadable), MSG_READ_SCRIPT_UNREADABLE);
    EXPECT_EQ(ProblemMessage(ReadProblem::PartNotInModelPath), MSG_READ_PART_NOT_IN_MODEL_PATH);

    EXPECT_EQ(DescribeProblem(ReadProblem::ScriptUnreadable, ""), "The script cannot be opened");
    EXPECT_EQ(DescribeProblem(ReadProblem::ScriptUnreadable, "a.qc"),
              "The script cannot be opened: \"a.qc\"");

    MessageTexts german = DefaultMessageTexts();
    german[MSG_READ_SCRIPT_UNREADABLE] = "Die qc-Datei kann nicht ge\xC3\xB6" "ffnet werden";
    german[MSG_READ_DETAIL] = "%1: \xE2\x80\x9E%2\xE2\x80\x9C";
    EXPECT_EQ(DescribeProblem(ReadProblem::ScriptUnreadable, "a.qc", german),
              "Die qc-Datei kann nicht ge\xC3\xB6" "ffnet werden: \xE2\x80\x9E"
              "a.qc\xE2\x80\x9C");
    // A detail that holds a placeholder is taken as it is.
    EXPECT_EQ(DescribeProblem(ReadProblem::ScriptUnreadable, "%1.qc", german),
              "Die qc-Datei kann nicht ge\xC3\xB6" "ffnet werden: \xE2\x80\x9E%1.qc\xE2\x80\x9C");
}

} // namespace
} // namespace quarle
