#include "localisation/LanguageEdit.h"

#include <gtest/gtest.h>

namespace quarle {
namespace {

using Lines = std::vector<std::string>;
using Table = std::array<std::string, IdsKeyTable.size()>;

std::string Bytes(const Lines& lines) {
    std::string bytes;
    for (const std::string& line : lines) {
        bytes += line + "\r\n";
    }
    return bytes;
}

Table Names() {
    Table names;
    for (std::size_t i = 0; i < names.size(); ++i) {
        names[i] = IdsKeyTable[i];
    }
    return names;
}

// The 93 string lines as a file holds them, "t1" .. "t93", with the one at
// `changed` replaced.
Lines StringLines(std::size_t changed = 0, const std::string& text = {}) {
    Lines lines;
    for (std::size_t i = 1; i < IdsKeyTable.size(); ++i) {
        lines.push_back(std::string(IdsKeyTable[i]) + " = " +
                        (i == changed ? text : "t" + std::to_string(i)));
    }
    return lines;
}

Lines Join(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

const Lines Main = {"Version = 0.8.3",       "InfoForThis = Test",  "FrmMain",
                    "Titel = Quarle",        "CmdAdd = Add",        "CmdAdd = Adds a part",
                    "OptModes(1) = One",     "OptModes(1) = tip 1", "",
                    "----------------------"};
const Lines Strings = Join({{"Global Strings", "Count = 93"}, StringLines()});

struct Case {
    const char* Name;
    Lines File;
    EditMode Mode;
    const char* Form;
    LngEdit Edit;
    Lines Expected;
};

TEST(LanguageEdit, SaveEntryRewritesTheFileAsTheEditorExpects) {
    const Lines head = {"Version = 0.8.4", "InfoForThis = Test"};
    const Lines mainTail = {"OptModes(1) = One", "OptModes(1) = tip 1", "",
                            "----------------------"};
    const std::vector<Case> cases = {
        {"existing section, control replaced",
         Join({Main, Strings}),
         EditMode::Controls,
         "FrmMain",
         {"cmdadd", -1, "Hinzu", "Neu", true},
         Join({head,
               {"FrmMain", "Titel = Quarle", "cmdadd = Hinzu", "cmdadd = Neu"},
               mainTail,
               Strings})},
        {"title is one line",
         Join({Main, Strings}),
         EditMode::Controls,
         "FrmMain",
         {"Titel", -1, "Quarle 2", "<not available>", false},
         Join({head,
               {"FrmMain", "Titel = Quarle 2", "CmdAdd = Add", "CmdAdd = Adds a part"},
               mainTail,
               Strings})},
        {"control array member added at the end of its section",
         Join({Main, Strings}),
         EditMode::Controls,
         "FrmMain",
         {"OptModes", 0, "Zero", "tip 0", true},
         Join({head,
               {"FrmMain", "Titel = Quarle", "CmdAdd = Add", "CmdAdd = Adds a part",
                "OptModes(1) = One", "OptModes(1) = tip 1", "OptModes(0) = Zero",
                "OptModes(0) = tip 0", "", "----------------------"},
               Strings})},
        {"new section ahead of the strings",
         Join({Main, Strings}),
         EditMode::Controls,
         "DlgName",
         {"Label1", -1, "Name:", "<not available>", true},
         Join({head,
               {"FrmMain", "Titel = Quarle", "CmdAdd = Add", "CmdAdd = Adds a part"},
               mainTail,
               {"DlgName", "Label1 = Name:", "Label1 = <not available>", "",
                "----------------------"},
               Strings})},
        {"tool tip line missing at the end of the file",
         {"FrmMain", "CmdAdd = Add"},
         EditMode::Controls,
         "FrmMain",
         {"CmdAdd", -1, "Plus", "tip", true},
         {"Version = 0.8.4", "FrmMain", "CmdAdd = Plus", "CmdAdd = tip"}},
        {"a line starting with = ends the section",
         {"FrmMain", "CmdAdd = Add", "CmdAdd = tip", "= odd", "CmdAdd = later", "CmdAdd = x"},
         EditMode::Controls,
         "FrmMain",
         {"CmdAdd", -1, "Plus", "t", true},
         {"Version = 0.8.4", "FrmMain", "CmdAdd = Plus", "CmdAdd = t", "= odd", "CmdAdd = later",
          "CmdAdd = x"}},
        {"strings: the block is rewritten, other sections kept",
         Join({Main, Strings, {"after"}}),
         EditMode::Strings,
         "",
         {"IDS_NONE", -1, "nichts", "<not available>", false},
         Join({head,
               {"FrmMain", "Titel = Quarle", "CmdAdd = Add", "CmdAdd = Adds a part"},
               mainTail,
               {"Global Strings", "Anzahl = 93"},
               StringLines(IDS_NONE, "nichts"),
               {"after"}})},
        {"strings: a file without the block gets one",
         {"Version = 0.8.4", "Quarle Messages", "MSG_X = x"},
         EditMode::Strings,
         "",
         {"IDS_0DUMMI", -1, "dropped", "", false},
         Join({{"Version = 0.8.4", "Quarle Messages", "MSG_X = x", "----------------------",
                "Global Strings", "Anzahl = 93"},
               StringLines()})},
    };
    const Table names = Names();
    for (const Case& c : cases) {
        Table texts;
        for (std::size_t i = 1; i < texts.size(); ++i) {
            texts[i] = "t" + std::to_string(i);
        }
        texts[0] = "zero";
        EXPECT_EQ(SaveEntry(Bytes(c.File), c.Mode, c.Form, c.Edit, names, texts), Bytes(c.Expected))
            << c.Name;
        if (c.Mode == EditMode::Strings) {
            EXPECT_EQ(texts[0], "zero") << c.Name;
            EXPECT_EQ(texts[IDS_NONE], c.Edit.Item == "IDS_NONE" ? "nichts" : "t2") << c.Name;
        }
    }
}

TEST(LanguageEdit, SaveMessageRewritesTheMessagesSection) {
    const Lines head = {"Version = 0.8.3", "FrmMain", "Titel = Quarle", "",
                        "----------------------"};
    const Lines tail = {"Global Strings", "Anzahl = 93", "IDS_VERSION = Version"};
    const struct {
        const char* Name;
        Lines File;
        const char* Text;
        Lines Expected;
    } cases[] = {
        {"replaced, key without case",
         Join({head, {"Quarle Messages", "msg_parts_full = alt", "MSG_GROUPS_FULL = g", ""}, tail}),
         "neu %1",
         Join({{"Version = 0.8.4"},
               Lines(head.begin() + 1, head.end()),
               {"Quarle Messages", "MSG_PARTS_FULL = neu %1", "MSG_GROUPS_FULL = g", ""},
               tail})},
        {"added at the end of the section",
         Join({head, {"Quarle Messages", "MSG_GROUPS_FULL = g", ""}, tail}), "",
         Join({{"Version = 0.8.4"},
               Lines(head.begin() + 1, head.end()),
               {"Quarle Messages", "MSG_GROUPS_FULL = g", "MSG_PARTS_FULL = ", ""},
               tail})},
        {"section made ahead of the strings", Join({head, tail}), "neu",
         Join({{"Version = 0.8.4"},
               Lines(head.begin() + 1, head.end()),
               {"Quarle Messages", "MSG_PARTS_FULL = neu", "", "----------------------"},
               tail})},
    };
    for (const auto& c : cases) {
        MessageTexts texts = EnglishMessageTexts();
        texts[MSG_PARTS_FULL] = "before";
        EXPECT_EQ(SaveMessage(Bytes(c.File), MSG_PARTS_FULL, c.Text, texts), Bytes(c.Expected))
            << c.Name;
        // In memory as a reader of the new file takes it.
        MessageTexts read;
        EXPECT_TRUE(ReadMessageTexts(c.Expected, read));
        EXPECT_EQ(texts[MSG_PARTS_FULL], read[MSG_PARTS_FULL]) << c.Name;
    }
}

TEST(LanguageEdit, NewLanguageCopiesUnderANewHeader) {
    const std::string active = Bytes({"Version = 0.8.4", "InfoForThis = English", "FrmMain",
                                      "versionless = x", "Titel = \xc4rger"});
    EXPECT_EQ(NewLanguage(active, "Fran\xc3\xa7"
                                  "ais, test\nzwei"),
              Bytes({"InfoForThis = Fran\xe7"
                     "ais, test",
                     "zwei", "Version = 0.8.4", "FrmMain", "Titel = \xc4rger"}));
    EXPECT_EQ(LanguageFileName(" fran cais "), "francais.lng");
}

TEST(LanguageEdit, HeaderForDisplay) {
    struct Row {
        Lines File;
        std::optional<std::string> Info;
        std::optional<std::string> Version;
    };
    const std::vector<Row> rows = {
        {{"Version = 0.8.4", "InfoForThis = English"}, "English", "0.8.4"},
        {{"InfoForThis = Deutsch, von Hand", "Version = 0.8.4"}, "Deutsch", std::nullopt},
        {{"x, Version =  0.8.3 ", "\"InfoForThis = a, b\""}, "a, b", "0.8.3"},
        {{"FrmMain", "Titel = x"}, std::nullopt, std::nullopt},
    };
    for (const Row& row : rows) {
        const LanguageHeader header = ReadLanguageHeader(row.File);
        EXPECT_EQ(header.Info, row.Info) << row.File[0];
        EXPECT_EQ(header.Version, row.Version) << row.File[0];
    }
}

} // namespace
} // namespace quarle
