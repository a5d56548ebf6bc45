#include "ScriptTestSupport.h"
#include "document/LoadFindings.h"
#include "document/Paths.h"

#include <gtest/gtest.h>

namespace quarle {
namespace {

using testing::Model;

// A script the forms show whole gives no finding; what the user should know
// is named by its place, and the head says whether a save changes the model.
TEST(LoadFindings, EachKindNamesItsPlaceAndTheHeadWhatASaveChanges) {
    Model plain;
    ASSERT_EQ(plain.Load(plain.Paths() + "$body head \"head\"\n$origin 0 0 8\n"
                                         "$sequence walk walk fps 29.97 { event 1 2 }\n"),
              ReadOutcome::Loaded);
    EXPECT_TRUE(plain.Findings.empty());

    Model m;
    std::vector<std::string> many;
    for (int i = 1; i <= 11; ++i) {
        many.push_back("t" + std::to_string(i) + ".bmp");
    }
    m.Dir.Write("m/many.smd", testing::Smd(many));
    m.Host.Answer(m.M());
    m.Host.KeepUnanswered = true;
    ASSERT_EQ(m.Load("$cd \"" + m.Dir / "nowhere" + "\"\n$body many many\n"
                     "$texrendermode t11.bmp masked\n$include \"gone.qci\"\n"),
              ReadOutcome::Loaded);
    const std::string model = m.Dir / "model.qc";
    EXPECT_EQ(m.Findings,
              (LoadFindings{{FindingKind::PathAnswered, model, 1, "$cd \"" + m.Dir / "nowhere" + "\"", {}},
                            {FindingKind::IncludeMissing, model, 4, "$include \"gone.qci\"", {}},
                            {FindingKind::MoreThanTenTextures, model, 0,
                             paths::Join(m.M(), "many.smd"), {}}}));
    EXPECT_EQ(FindingWarning(m.Findings[1]),
              "warning: model.qc, line 4: $include \"gone.qci\" (An included file cannot be "
              "opened: its $include line is kept as it stands, and the compiler will stop there "
              "too)");
    EXPECT_EQ(FindingPlace(m.Findings[2], EnglishMessageTexts()),
              "model.qc: " + paths::Join(m.M(), "many.smd"));
    EXPECT_EQ(FindingsHead(m.Findings),
              "A save of this script changes what the compiler reads in 1 place.");
    EXPECT_EQ(FindingsHead({m.Findings[1], m.Findings[2]}),
              "A save of this script changes nothing the compiler reads, but for what you change.");
}

// The first line the compiler refuses (and so builds no model) is named;
// it stays as it stands. Each row was checked once against the compiler.
TEST(LoadFindings, TheFirstLineTheCompilerRefusesIsNamed) {
    const struct {
        std::string script; // behind the folders of the test's model (lines 1 and 2)
        int line;           // 0: none
    } rows[] = {
        {"$body head head\n$sequence walk walk fps 30 ; a note\n", 0},
        {"$body head head\n$Scale 2\n$cd m\n", 4},
        {"$body head head\n$cd m\n", 4},
        {"$sequence walk walk fps 30 // a note\n", 3},
        {"$sequence walk walk }\n$sequence idle walk {\n", 3},
        {"$sequence walk walk {\n", 3},
        {"$body head head\n$texrendermode a.bmp MASKED\n", 4},
        {"$texturegroup t\n{\n}\n$body head head\n", 3},
        {"junk // a note\n", 3},
    };
    for (const auto& row : rows) {
        Model m;
        ASSERT_EQ(m.Load(m.Paths() + row.script), ReadOutcome::Loaded) << row.script;
        std::vector<int> lines;
        for (const LoadFinding& f : m.Findings) {
            EXPECT_EQ(f.Kind, FindingKind::CompilerRefuses) << row.script;
            lines.push_back(f.Line);
        }
        EXPECT_EQ(lines, row.line == 0 ? std::vector<int>{} : std::vector<int>{row.line})
            << row.script;
    }
}

TEST(LoadFindings, AFileThatIsNoScriptIsRefusedForWhatItLooksLike) {
    const struct {
        std::string bytes;
        ReadProblem problem;
    } files[] = {
        {std::string("$gamma 2\n\0\0", 11), ReadProblem::BinaryFile},
        {std::string("\xFF\xFE$\0g\0", 6), ReadProblem::Utf16Text},
    };
    for (const auto& file : files) {
        Model m;
        m.Doc->Gamma = 3.0f;
        EXPECT_EQ(m.Load(file.bytes), ReadOutcome::NotAScript);
        EXPECT_EQ(m.Host.ProblemKinds(), std::vector{file.problem});
        EXPECT_EQ(m.Host.NewDocuments, 1);
        EXPECT_EQ(m.Host.Finished, 0);
        EXPECT_TRUE(m.Doc->QcFile.empty()); // a save asks for a name: the file stays
    }
}

#ifndef _WIN32
// quarle-qc prints one warning a finding and keeps its exit status.
TEST(LoadFindings, RoundtripWarnsOfEachPlaceOnStandardError) {
    Model m;
    const std::string in =
        m.Dir.Write("done.qc", m.Paths() + "$cliptotextures\n$include \"gone.qci\" ; a note\n"
                                           "$sequence walk walk\n");
    const testing::ToolRun run =
        testing::RunTool({"roundtrip", in, m.Dir / "out.qc"}, m.Dir.Path());
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Err, "warning: done.qc, line 4: $include \"gone.qci\" (An included file cannot "
                       "be opened: its $include line is kept as it stands, and the compiler will "
                       "stop there too)\n");
    EXPECT_EQ(testing::ReadFile(m.Dir / "out.qc"), testing::ReadFile(in));
}
#endif

} // namespace
} // namespace quarle
