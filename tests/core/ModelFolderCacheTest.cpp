// The kinds of a model folder's files, remembered between refills: a file is
// read again only when it is new, changed, or changed too recently to trust.
#include "document/ModelFolderCache.h"

#include "TestFiles.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarle {
namespace {

namespace fs = std::filesystem;
using testing::TempDir;

const char* const Mesh = "version 1\nnodes\nend\ntriangles\nend\n";
const char* const Anim = "version 1\nskeleton\ntime 0\ntime 1\nend\n";

// Puts a file's time stamp back, well out of the clock margin.
void Age(const std::string& path, std::chrono::minutes by = std::chrono::minutes(60)) {
    fs::last_write_time(path, fs::file_time_type::clock::now() - by);
}

TEST(ModelFolderCache, ReadsOnlyFilesThatAreNewChangedOrNotYetSettled) {
    TempDir dir;
    const std::string ref = dir.Write("ref.smd", Mesh);
    const std::string run = dir.Write("run.smd", Anim);
    Age(run);

    ModelFolderCache cache;
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Reference);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Animation);
    // Just written: a change within the clock's resolution could hide behind
    // the same stamp, so the fresh file is read again; the aged one is not.
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Reference);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Animation);
    EXPECT_EQ(cache.FilesRead(), 3u);
    Age(ref);
    cache.KindOf(ref);
    cache.KindOf(ref);
    EXPECT_EQ(cache.FilesRead(), 4u);

    // The animation becomes a mesh: another size.
    dir.Write("run.smd", std::string(Anim) + "triangles\n");
    Age(run);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Reference);
    // The mesh loses its triangles at the same size: another time stamp.
    std::string same(Mesh);
    same.replace(same.find("triangles"), 9, "Triangles");
    dir.Write("ref.smd", same);
    Age(ref, std::chrono::minutes(30));
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Animation);
    EXPECT_EQ(cache.FilesRead(), 6u);
}

TEST(ModelFolderCache, UnreadableFilesOtherCapitalsAndForgetting) {
    TempDir dir;
    dir.Write("Robot/REF.smd", Mesh);
    const std::string run = dir.Write("Robot/run.smd", Anim);
    fs::create_directory(dir / "folder.smd");
    ModelFolderCache cache;
    EXPECT_EQ(cache.KindOf(dir / "gone.smd"), SmdKind::Unreadable);
    EXPECT_EQ(cache.KindOf(dir / "folder.smd"), SmdKind::Unreadable);
    EXPECT_EQ(cache.KindOf(dir / "robot/ref.smd"), SmdKind::Reference);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Animation);
    const std::vector<std::string> keep{run, dir / "other.smd"};
    cache.Keep(keep);
    EXPECT_EQ(cache.Entries(), 1u);
    // A file that goes away loses its entry with it.
    fs::remove(run);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Unreadable);
    EXPECT_EQ(cache.Entries(), 0u);
}

} // namespace
} // namespace quarle
