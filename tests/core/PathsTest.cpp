#include "document/Paths.h"

#include "TestFiles.h"
#include "document/InputFile.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace quarle::paths {
namespace {

constexpr Style Win = Style::Windows;
constexpr Style Posix = Style::Posix;

TEST(Paths, AbsoluteTestDiffersOnlyForRootedPaths) {
    for (const Style style : {Win, Posix}) {
        SCOPED_TRACE(style == Win ? "windows" : "posix");
        EXPECT_TRUE(IsAbsolute("c:\\models\\a.qc", style));
        EXPECT_TRUE(IsAbsolute("C:/models/a.qc", style));
        EXPECT_TRUE(IsAbsolute("c:a.qc", style)); // ':' as second character
        EXPECT_TRUE(IsAbsolute("\\\\server\\share\\a.qc", style));
        EXPECT_FALSE(IsAbsolute("models\\a.qc", style));
        EXPECT_FALSE(IsAbsolute("a.qc", style));
        EXPECT_FALSE(IsAbsolute("", style));
        EXPECT_FALSE(IsAbsolute("ab:c", style));
    }
    // A rooted path hangs off the current drive on Windows.
    EXPECT_FALSE(IsAbsolute("\\models\\a.qc", Win));
    EXPECT_FALSE(IsAbsolute("/models/a.qc", Win));
    EXPECT_TRUE(IsAbsolute("/home/a.qc", Posix));
    EXPECT_TRUE(IsAbsolute("\\models\\a.qc", Posix));
}

TEST(Paths, FolderNameAndJoinTakeBothSeparatorsAndWriteTheStylesOwn) {
    EXPECT_EQ(FolderOf("c:\\models\\robot\\arm.smd", Win), "c:\\models\\robot");
    EXPECT_EQ(FileNameOf("c:\\models\\robot\\arm.smd", Win), "arm.smd");
    EXPECT_EQ(FolderOf("c:\\arm.smd", Win), "c:"); // folders are held without a closing '\'
    EXPECT_EQ(FolderOf("c:/models\\arm.smd", Posix), "c:/models");
    EXPECT_EQ(FolderOf("/arm.smd", Posix), "/");
    EXPECT_EQ(FolderOf("//arm.smd", Posix), "/");
    EXPECT_EQ(FolderOf("arm.smd", Posix), "");
    EXPECT_EQ(FileNameOf("arm.smd", Posix), "arm.smd");
    EXPECT_EQ(FolderOf("c:\\models\\", Win), "c:\\models");
    EXPECT_EQ(FileNameOf("c:\\models\\", Win), "");
    EXPECT_EQ(FolderOf("a\\\\b.smd", Win), "a"); // a doubled separator is not kept

    EXPECT_EQ(Join("c:\\models", "arm.smd", Win), "c:\\models\\arm.smd");
    EXPECT_EQ(Join("/models", "arm.smd", Posix), "/models/arm.smd");
    EXPECT_EQ(Join("c:", "arm.smd", Win), "c:\\arm.smd");
    EXPECT_EQ(Join("/", "arm.smd", Posix), "/arm.smd");
    EXPECT_EQ(Join("c:\\models\\", "\\arm.smd", Win), "c:\\models\\arm.smd");
    EXPECT_EQ(Join("", "arm.smd", Posix), "arm.smd");
    EXPECT_EQ(Join("/models", "", Posix), "/models");

    EXPECT_EQ(ToStyle("c:/models\\robot/arm.smd", Win), "c:\\models\\robot\\arm.smd");
    EXPECT_EQ(ToStyle("models\\robot/arm.smd", Posix), "models/robot/arm.smd");
}

TEST(Paths, NamesCompareWithoutCaseOnlyForAsciiLetters) {
    EXPECT_TRUE(EqualsNoCase("Head.SMD", "head.smd"));
    EXPECT_FALSE(EqualsNoCase("head.smd", "head.smd "));
    EXPECT_FALSE(EqualsNoCase("\xC4rmel", "\xE4rmel")); // Latin-1 letters stay as they are
    EXPECT_FALSE(EqualsNoCase("[", "{"));               // 0x5B and 0x7B are not letters

    std::vector<std::string> names{"run.smd", "B.smd", "a.smd", "A.smd", "_x.smd"};
    std::sort(names.begin(), names.end(), NameLess);
    EXPECT_EQ(names, (std::vector<std::string>{"_x.smd", "A.smd", "a.smd", "B.smd", "run.smd"}));
}

// A model folder made on Windows, on a case-sensitive file system.
class PathsOnDisk : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(dir_ / "Models/Sub.smd");
        for (const char* name : {"Models/Head.smd", "Models/run.SMD", "Models/notes.txt",
                                 "Models/.smd", "Models/A.bmp", "Models/a.bmp"}) {
            dir_.Write(name, "x");
        }
        if (std::filesystem::exists(dir_ / "MODELS")) {
            GTEST_SKIP() << "the file system ignores case";
        }
    }
    std::string At(const std::string& relative) const { return Join(dir_.Path(), relative, Posix); }

    testing::TempDir dir_;
};

TEST_F(PathsOnDisk, FileTestsFallBackToAnyCaseComponentByComponent) {
    EXPECT_EQ(Resolve(At("Models/Head.smd")), At("Models/Head.smd"));
    EXPECT_EQ(Resolve(At("models/head.smd")), At("Models/Head.smd"));
    EXPECT_EQ(Resolve(At("MODELS\\HEAD.SMD")), At("Models/Head.smd"));
    EXPECT_TRUE(FileExists(At("models\\Run.smd")));
    EXPECT_FALSE(FileExists(At("models")));         // a folder is no file
    EXPECT_FALSE(FileExists(At("models/sub.smd"))); // nor is this one
    EXPECT_TRUE(FolderExists(At("MODELS/SUB.SMD")));
    EXPECT_FALSE(FolderExists(At("models/head.smd")));
    EXPECT_FALSE(Resolve(At("models/arm.smd")));
    EXPECT_FALSE(Resolve(At("other/head.smd")));
    EXPECT_FALSE(Resolve(""));
    // The exact spelling wins; among other spellings the first in byte order.
    EXPECT_EQ(Resolve(At("Models/a.bmp")), At("Models/a.bmp"));
    EXPECT_EQ(Resolve(At("Models/A.BMP")), At("Models/A.bmp"));
}

TEST_F(PathsOnDisk, ListingMatchesTheExtensionInAnyCaseAndSortsByName) {
    EXPECT_EQ(ListFiles(At("models"), ".smd"), (std::vector<std::string>{"Head.smd", "run.SMD"}));
    EXPECT_EQ(ListFiles(At("Models"), ".BMP"), (std::vector<std::string>{"A.bmp", "a.bmp"}));
    EXPECT_EQ(ListFiles(At("Models/Sub.smd"), ".smd"), std::vector<std::string>{});
    EXPECT_FALSE(TryListFiles(At("missing"), ".smd"));
    EXPECT_FALSE(TryListFiles(At("Models/Head.smd"), ".smd"));
    EXPECT_TRUE(ListFiles(At("missing"), ".smd").empty());
}

// The document's paths are cp1252; names on disk are UTF-8.
TEST_F(PathsOnDisk, Cp1252PathsMeetUtf8NamesOnDisk) {
    dir_.Write("Umlaut/K\xC3\xB6rper.smd", "");
    EXPECT_TRUE(FileExists(At("umlaut/K\xF6rper.smd")));
    EXPECT_EQ(Resolve(At("umlaut/K\xF6rper.smd")), At("Umlaut/K\xF6rper.smd"));
    EXPECT_EQ(ListFiles(At("Umlaut"), ".smd"), std::vector<std::string>{"K\xF6rper.smd"});
    EXPECT_EQ(ToFsPath("K\xF6rper").string(), "K\xC3\xB6rper");
}

#ifndef _WIN32
// A name made where Latin-1 ruled is no UTF-8: it is taken as its bytes, which
// cp1252 reads as the letters they were, and found again from them.
TEST_F(PathsOnDisk, NamesThatAreNoUtf8AreTakenAsTheirBytes) {
    dir_.Write("Umlaut/\xC4rmel/Gr\xFC\xDF.smd", "version 1\n");
    const std::string path = At("umlaut/\xC4rmel/gr\xFC\xDF.smd");
    EXPECT_TRUE(FileExists(path));
    EXPECT_EQ(ListFiles(At("Umlaut/\xC4rmel"), ".smd"), std::vector<std::string>{"Gr\xFC\xDF.smd"});
    EXPECT_EQ(Resolve(path), At("Umlaut/\xC4rmel/Gr\xFC\xDF.smd"));
    EXPECT_EQ(FromFsPath(ToFsPath(*Resolve(path))), *Resolve(path));
    EXPECT_EQ(ReadFileText(path, FileKind::Smd), "version 1\n");
}
#endif

} // namespace
} // namespace quarle::paths
