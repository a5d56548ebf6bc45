// The kinds of a model folder's files, remembered between refills: a file is
// read again only when it is new, changed, or changed too recently to trust.
#include "document/ModelFolderCache.h"

#include "QcReaderTestSupport.h"

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

// Puts a file's time stamp an hour back, well out of the clock margin.
void Age(const std::string& path) {
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1));
}

TEST(ModelFolderCache, ReadsOnlyFilesThatAreNewOrChanged) {
    TempDir dir;
    const std::string ref = dir.Write("ref.smd", Mesh);
    const std::string run = dir.Write("run.smd", Anim);
    Age(ref);
    Age(run);

    ModelFolderCache cache;
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Reference);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Animation);
    EXPECT_EQ(cache.FilesRead(), 2u);

    // A second refill of an unchanged folder reads nothing.
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Reference);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Animation);
    EXPECT_EQ(cache.FilesRead(), 2u);

    // The animation becomes a mesh: another size.
    dir.Write("run.smd", std::string(Anim) + "triangles\n");
    Age(run);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Reference);
    EXPECT_EQ(cache.FilesRead(), 3u);

    // The mesh loses its triangles at the same size: another time stamp.
    std::string same(Mesh);
    same.replace(same.find("triangles"), 9, "Triangles");
    dir.Write("ref.smd", same);
    fs::last_write_time(ref, fs::file_time_type::clock::now() - std::chrono::minutes(30));
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Animation);
    EXPECT_EQ(cache.FilesRead(), 4u);
}

TEST(ModelFolderCache, FreshFilesAreReadUntilTheyHaveSettled) {
    TempDir dir;
    const std::string ref = dir.Write("ref.smd", Mesh);
    ModelFolderCache cache;
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Reference);
    // Just written: a change within the clock's resolution could hide
    // behind the same stamp, so the file is read again.
    EXPECT_EQ(cache.KindOf(ref), SmdKind::Reference);
    EXPECT_EQ(cache.FilesRead(), 2u);
    Age(ref);
    cache.KindOf(ref);
    cache.KindOf(ref);
    EXPECT_EQ(cache.FilesRead(), 3u);
}

TEST(ModelFolderCache, UnreadableFilesAndFilesThatAreGone) {
    TempDir dir;
    dir.Write("Robot/REF.smd", Mesh);
    const std::string run = dir.Write("run.smd", Anim);
    std::filesystem::create_directory(dir / "folder.smd");
    ModelFolderCache cache;
    EXPECT_EQ(cache.KindOf(dir / "folder.smd"), SmdKind::Unreadable);
    EXPECT_EQ(cache.KindOf(dir / "robot/ref.smd"), SmdKind::Reference); // other capitals
    EXPECT_EQ(cache.KindOf(run), SmdKind::Animation);
    // A file that is gone, and the files no longer listed, leave the cache.
    fs::remove(run);
    EXPECT_EQ(cache.KindOf(run), SmdKind::Unreadable);
    const std::vector<std::string> listed{dir / "other.smd"};
    cache.Keep(listed);
    EXPECT_EQ(cache.Entries(), 0u);
}

} // namespace
} // namespace quarle
