#include "document/InputFile.h"

#include "ScriptTestSupport.h"
#include "document/BmpHeader.h"
#include "document/Document.h"
#include "document/Skeleton.h"
#include "document/SmdReader.h"
#include "document/SmdScan.h"
#include "localisation/LanguageFile.h"
#include "studio/StudioModel.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace quarle {
namespace {

using quarle::testing::TempDir;
namespace fs = std::filesystem;

// Every reader of the program on one path: each must refuse what is not a
// plain file at once, without waiting on a pipe or reading a device for
// ever. True when the reader took the file as read.
std::vector<std::pair<const char*, std::function<bool(const std::string&)>>> Readers() {
    return {
        {"script",
         [](const std::string& p) {
             quarle::testing::Model model;
             return model.LoadFile(p) == ReadOutcome::Loaded;
         }},
        {"smd scan", [](const std::string& p) { return ScanSmdFile(p).Readable; }},
        {"smd frames",
         [](const std::string& p) {
             i16 frames = -7;
             ScanSmdFrames(p, frames);
             return frames != -7;
         }},
        {"smd reader", [](const std::string& p) { return ReadSmdFile(p).Readable; }},
        {"bitmap", [](const std::string& p) { return ReadBmpFile(p).Readable; }},
        {"compiled model",
         [](const std::string& p) {
             // Read, although what it holds is no model.
             const studio::StudioLoad load = studio::ReadStudioFile(p);
             return !load.Error || !load.Error->Unread;
         }},
        {"language",
         [](const std::string& p) { return ReadLanguageLines(fs::path(p)).has_value(); }},
        {"skeleton",
         [](const std::string& p) {
             auto doc = std::make_unique<Document>();
             doc->ModelPath = fs::path(p).parent_path().string();
             doc->BodyGroupCount = 1;
             doc->BodyGroups[1].PartCount = 1;
             doc->BodyGroups[1].Parts[1] = fs::path(p).stem().string();
             auto tables = std::make_unique<SkeletonTables>();
             return LoadSkeleton(*tables, *doc, SkeletonVariant::Attachment).Source ==
                    SkeletonSource::Read;
         }},
    };
}

TEST(InputFile, OnlyPlainFilesWithinTheirSizeAreReadByAnyReader) {
    TempDir dir;
    const std::string text = "version 1\ntime 3\n";
    dir.Write("plain.smd", text);
    fs::create_directory(dir / "folder.smd");
    // Larger than any kind allows, without taking the room: a file with a hole.
    {
        std::ofstream big(dir / "huge.smd", std::ios::binary);
        big.seekp(std::streamoff{2} << 30);
        big.put('x');
    }
#ifndef _WIN32
    ASSERT_EQ(::mkfifo((dir / "pipe.smd").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", dir / "zero.smd");
    fs::create_symlink(dir / "folder.smd", dir / "linkedfolder.smd");
    fs::create_symlink(dir / "plain.smd", dir / "linked.smd");
    fs::create_symlink(dir / "gone.smd", dir / "dangling.smd");
#endif

    struct Row {
        const char* Name;
        OpenFailure Expected;
    };
    const Row rows[] = {
        {"plain.smd", OpenFailure::None},
        {"PLAIN.SMD", OpenFailure::None}, // found in other capitals
        {"folder.smd", OpenFailure::Folder},
        {"huge.smd", OpenFailure::TooLarge},
        {"missing.smd", OpenFailure::Missing},
#ifndef _WIN32
        {"linked.smd", OpenFailure::None},
        {"pipe.smd", OpenFailure::Special},
        {"zero.smd", OpenFailure::Special},
        {"linkedfolder.smd", OpenFailure::Folder},
        {"dangling.smd", OpenFailure::Missing},
#endif
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Name);
        const std::string path = dir / row.Name;
        InputFile file = InputFile::Open(path, FileKind::Smd);
        EXPECT_EQ(file.Problem().Failure, row.Expected);
        EXPECT_EQ(file.Problem().Path, path);
        std::string read;
        EXPECT_EQ(file.ReadAll(read), row.Expected == OpenFailure::None);
        EXPECT_EQ(read, row.Expected == OpenFailure::None ? text : "");
        if (row.Expected != OpenFailure::None) {
            // The finding names the file.
            EXPECT_NE(DescribeOpenProblem(file.Problem()).find(path), std::string::npos)
                << DescribeOpenProblem(file.Problem());
        }
        // The case fallback is a name's, not a language file's.
        const bool exact = std::string(row.Name) != "PLAIN.SMD";
        for (const auto& [reader, read] : Readers()) {
            SCOPED_TRACE(reader);
            if (exact || std::string(reader) != "language") {
                EXPECT_EQ(read(path), row.Expected == OpenFailure::None);
            }
        }
    }
}

TEST(InputFile, AFileThatGrowsPastTheLimitWhileReadEndsThere) {
    TempDir dir;
    const std::string path = dir.Write("grows.lng", "a\n");
    InputFile file = InputFile::Open(path, FileKind::Language);
    ASSERT_TRUE(file);
    std::filesystem::resize_file(path, SizeLimit(FileKind::Language) + 1);
    std::string read;
    EXPECT_FALSE(file.ReadAll(read));
    EXPECT_EQ(file.Problem().Failure, OpenFailure::TooLarge);
    EXPECT_LE(read.size(), SizeLimit(FileKind::Language));
}

} // namespace
} // namespace quarle
