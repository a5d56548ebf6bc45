#include "localisation/LanguageFile.h"

#include "localisation/Cp1252.h"

#include <gtest/gtest.h>

namespace quarle {
namespace {

using Lines = std::vector<std::string>;
using Texts = std::array<std::string, IdsKeyTable.size()>;

struct RecordingHost : LanguageHost {
    int Incomplete = 0;
    int Outdated = 0;
    void IncompleteWarning() override { ++Incomplete; }
    void OutdatedWarning() override { ++Outdated; }
};

// Records every write as "Title=text", "Caption:Key=text", "Tip:Key=text".
struct RecordingTarget : SectionTarget {
    explicit RecordingTarget(const std::vector<FormControl>& controls) : Controls(controls) {}
    void SetTitle(const std::string& text) override { Writes.push_back("Title=" + text); }
    void SetCaption(std::size_t control, const std::string& text) override {
        Writes.push_back("Caption:" + Controls[control].Key() + "=" + text);
    }
    void SetToolTip(std::size_t control, const std::string& text) override {
        Writes.push_back("Tip:" + Controls[control].Key() + "=" + text);
    }
    const std::vector<FormControl>& Controls;
    std::vector<std::string> Writes;
};

// Header, the strings block and n texts "text i".
Lines StringsBlock(int n, Lines head = {"Version = 0.8.4"}) {
    Lines lines = std::move(head);
    lines.push_back("Global Strings");
    lines.push_back("Anzahl = 93");
    for (int i = 1; i <= n; ++i) {
        lines.push_back(std::string(IdsKeyTable[static_cast<std::size_t>(i)]) + " = text " +
                        std::to_string(i));
    }
    return lines;
}

const std::vector<FormControl> MainControls = {
    {"CmdCompile", -1}, {"TxtTexturepath", -1}, {"MnuDatei", -1},      {"CmdAdd", -1},
    {"OptModes", 0},    {"OptModes", 1},        {"MnuDateiLast1", -1}, {"MnuDateiLast2", -1},
};
const std::array<std::string, 4> Recent = {"c:\\a.qc", "c:\\b.qc", "...", "..."};

std::vector<std::string> Apply(const Lines& lines, std::string_view form = "FrmMain") {
    RecordingTarget target(MainControls);
    ApplySection(lines, form, MainControls, Recent, target);
    return target.Writes;
}

using W = std::vector<std::string>;

TEST(LanguageFile, SplitsEntriesAtTheFirstEqualsSign) {
    EXPECT_EQ(SplitEntry("  Titel   =  Quarle  "), (LngEntry{"Titel", "Quarle"}));
    EXPECT_EQ(SplitEntry("Key = a = b =c"), (LngEntry{"Key", "a = b =c"}));
    EXPECT_EQ(SplitEntry("Key ="), (LngEntry{"Key", ""}));
    EXPECT_EQ(SplitEntry("= value"), (LngEntry{"", "value"}));
    // Only spaces are blanks.
    EXPECT_EQ(SplitEntry("\tKey = value\t"), (LngEntry{"\tKey", "value\t"}));
    EXPECT_EQ(SplitEntry("FrmMain"), std::nullopt);
    EXPECT_TRUE(IsSectionEntry("a=b"));
    EXPECT_FALSE(IsSectionEntry("=b"));
    EXPECT_FALSE(IsSectionEntry(""));
}

TEST(LanguageFile, SplitsLinesAtAnyLineEndAndConvertsFromCp1252) {
    EXPECT_EQ(SplitLines("a\r\nb\r\n"), (Lines{"a", "b"}));
    EXPECT_EQ(SplitLines("a\nb"), (Lines{"a", "b"}));
    EXPECT_EQ(SplitLines("a\rb\r\n\r\nc"), (Lines{"a", "b", "", "c"}));
    EXPECT_EQ(SplitLines("\r\n"), (Lines{""}));
    EXPECT_EQ(SplitLines(""), Lines{});
    EXPECT_EQ(SplitLines("Titel = \xDC"
                         "ber\r\n"),
              (Lines{"Titel = \xC3\x9C"
                     "ber"}));
}

TEST(LanguageFile, Cp1252RoundTripsEveryByte) {
    std::string all;
    for (int b = 0; b < 256; ++b) {
        all += static_cast<char>(b);
    }
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
    EXPECT_EQ(Cp1252ToUtf8("\x80\xE4\xDF\x84"), "\xE2\x82\xAC\xC3\xA4\xC3\x9F\xE2\x80\x9E");
    // What the code page can't hold, and broken UTF-8, become '?'.
    EXPECT_EQ(Utf8ToCp1252("\xE2\x86\x92|\xF0\x9F\x98\x80|\xC3|\xC0\x80|\xE4"), "?|?|?|??|?");
}

TEST(LanguageFile, VersionLinesWarnAsOutdated) {
    struct Case {
        Lines Head;
        int Outdated;
    };
    const Case cases[] = {
        {{}, 1},                                     // none at all
        {{"InfoForThis = x"}, 1},                    // still none
        {{"Version = 0.8.3", "Version = 0.9.0"}, 2}, // each differing line
        {{"Version = 0.8.3", "Version = 0.8.4"}, 1}, // every line is compared
        {{"Version=0.8.4"}, 1},                      // the version starts at the tenth character
        {{"Version =   0.8.4  "}, 0},                // blanks around it don't count
        {{"version = 0.8.4"}, 1},                    // exact case
    };
    for (const Case& c : cases) {
        Texts texts;
        RecordingHost host;
        EXPECT_TRUE(ReadGlobalStrings(StringsBlock(93, c.Head), texts, host));
        EXPECT_EQ(host.Outdated, c.Outdated) << (c.Head.empty() ? "" : c.Head.back());
        EXPECT_EQ(host.Incomplete, 0);
        EXPECT_EQ(texts[93], "text 93") << "the texts are applied all the same";
    }
    // Sections ahead of "Global Strings" are passed over, behind it a
    // "Version" line is just a text (keys are not compared), and slot 0 is
    // no string of the file.
    Lines lines = StringsBlock(
        93, {"Version = 0.8.4", "FrmMain", "Titel = Quarle", "", "----------------------"});
    lines[8] = "Version = 1.0 = a";
    Texts texts;
    texts[0] = "kept";
    RecordingHost host;
    EXPECT_TRUE(ReadGlobalStrings(lines, texts, host));
    EXPECT_EQ(host.Outdated + host.Incomplete, 0);
    EXPECT_EQ(texts[0], "kept");
    EXPECT_EQ(texts[1], "text 1");
    EXPECT_EQ(texts[2], "1.0 = a");
}

TEST(LanguageFile, IncompleteFilesWarnAndKeepWhatTheyDoNotReach) {
    Texts old;
    for (std::size_t i = 0; i < old.size(); ++i) {
        old[i] = "old " + std::to_string(i);
    }
    {
        // Ends before "Global Strings": nothing is read, the caller must stop.
        Texts texts = old;
        RecordingHost host;
        EXPECT_FALSE(ReadGlobalStrings({"Version = 0.8.4", "FrmMain", "Titel = x"}, texts, host));
        EXPECT_EQ(host.Incomplete, 1);
        EXPECT_EQ(host.Outdated, 0);
        EXPECT_EQ(texts, old);
    }
    {
        // Ends within the strings.
        Texts texts = old;
        RecordingHost host;
        EXPECT_TRUE(ReadGlobalStrings(StringsBlock(40), texts, host));
        EXPECT_EQ(host.Incomplete, 1);
        EXPECT_EQ(texts[40], "text 40");
        EXPECT_EQ(texts[41], "old 41");
    }
    {
        // A line without "=" ends them too.
        Lines lines = StringsBlock(93);
        lines[3 + 9] = "no entry";
        Texts texts = old;
        RecordingHost host;
        EXPECT_TRUE(ReadGlobalStrings(lines, texts, host));
        EXPECT_EQ(host.Incomplete, 1);
        EXPECT_EQ(texts[9], "text 9");
        EXPECT_EQ(texts[10], "old 10");
        EXPECT_EQ(texts[11], "old 11");
    }
    {
        // "Global Strings" on the last line: no count line, no strings.
        Texts texts = old;
        RecordingHost host;
        EXPECT_TRUE(ReadGlobalStrings({"Version = 0.8.4", "Global Strings"}, texts, host));
        EXPECT_EQ(host.Incomplete, 1);
        EXPECT_EQ(texts, old);
    }
}

TEST(LanguageFile, AppliesTheSectionOfItsForm) {
    const Lines lines = {
        "Version = 0.8.4",
        "DlgOther",
        "CmdCompile = wrong form",
        "CmdCompile = wrong form",
        "",
        "FrmMain",
        "Titel = Quarle",
        "CmdCompile = Erstelle Modell",
        "CmdCompile = Was wohl?",
        "TxtTexturepath = <not available>",
        "TxtTexturepath = Pfad = Texturen",
        "MnuDatei = &Datei",
        "MnuDatei = <not available>",
        "optmodes(1) = Zweite",
        "OptModes(1) = ",
        "",
        "----------------------",
        "Global Strings",
    };
    EXPECT_EQ(Apply(lines), (W{"Title=Quarle", "Caption:CmdCompile=Erstelle Modell",
                               "Tip:CmdCompile=Was wohl?", "Caption:TxtTexturepath=<not available>",
                               "Tip:TxtTexturepath=Pfad = Texturen", "Caption:MnuDatei=&Datei",
                               "Tip:MnuDatei=<not available>", "Caption:OptModes(1)=Zweite"}));
    EXPECT_EQ(Apply(lines, "DlgOther"),
              (W{"Caption:CmdCompile=wrong form", "Tip:CmdCompile=wrong form"}));
    // The head line is compared with case, and a form without a section is left alone.
    EXPECT_EQ(Apply(lines, "frmmain"), W{});
    EXPECT_EQ(Apply(lines, "DlgNone"), W{});
}

TEST(LanguageFile, KeysAndValuesThatAreNotApplied) {
    const Lines lines = {
        "FrmMain",
        "titel = matches no control",
        "titel = and its tip line is one more unknown entry",
        "Titel = ",
        "Unknown = x",
        "Unknown = y",
        "CmdCompile = ",
        "CmdCompile = ",
        "cmdadd = Add",
        "CmdAdd = ",
        "OptModes = no index, no control",
        "OptModes = ",
        "OptModes(0)=Erste",
        "x = ",
        "= ends the section",
        "CmdCompile = not reached",
        "CmdCompile = not reached",
        "",
    };
    EXPECT_EQ(Apply(lines), (W{"Caption:CmdAdd=Add", "Caption:OptModes(0)=Erste"}));
}

TEST(LanguageFile, CaptionOnlyEntriesAndTheEndOfTheFile) {
    // An entry without its tool tip line takes the next entry as its tool tip.
    EXPECT_EQ(Apply({"FrmMain", "CmdCompile = Build", "CmdAdd = Add", "CmdAdd = Add tip",
                     "MnuDatei = File", "MnuDatei = <not available>", ""}),
              (W{"Caption:CmdCompile=Build", "Tip:CmdCompile=Add", "Caption:CmdAdd=Add tip",
                 "Tip:CmdAdd=File", "Caption:MnuDatei=<not available>"}));
    // A caption line on the very last line is not applied; a tool tip line there is.
    EXPECT_EQ(Apply({"FrmMain", "CmdCompile = Build", "CmdCompile = Tip", "CmdAdd = Add"}),
              (W{"Caption:CmdCompile=Build", "Tip:CmdCompile=Tip"}));
    EXPECT_EQ(Apply({"FrmMain", "Titel = Q", "CmdCompile = Build", "CmdCompile = Tip"}),
              (W{"Title=Q", "Caption:CmdCompile=Build", "Tip:CmdCompile=Tip"}));
    EXPECT_EQ(Apply({"FrmMain", "Titel = Q"}), W{});
    // A head on the very last line counts as not found.
    EXPECT_EQ(Apply({"Version = 0.8.4", "FrmMain"}), W{});
    EXPECT_EQ(Apply({}), W{});
    // A tool tip line that is no entry ends the section.
    EXPECT_EQ(Apply({"FrmMain", "CmdCompile = Build", "", "CmdAdd = Add", "CmdAdd = Tip", ""}),
              (W{"Caption:CmdCompile=Build"}));
}

TEST(LanguageFile, RecentFileEntriesShowTheRecentFiles) {
    EXPECT_EQ(Apply({"FrmMain", "MnuDateiLast2 = c:\\from\\the\\file.qc",
                     "MnuDateiLast2 = <not available>", "mnudateilast1 = ...", "CmdAdd = Add",
                     "CmdAdd = Tip", ""}),
              (W{"Caption:MnuDateiLast2=c:\\b.qc", "Caption:MnuDateiLast2=c:\\b.qc",
                 "Caption:MnuDateiLast1=c:\\a.qc", "Caption:CmdAdd=Add", "Tip:CmdAdd=Tip"}));
}

} // namespace
} // namespace quarle
