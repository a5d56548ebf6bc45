// quarle-qc scan, run as the built tool.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace {

namespace fs = std::filesystem;

struct ToolRun {
    int Status = -1;
    std::string Out;
    std::string Err;
};

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

ToolRun Scan(const std::string& arguments) {
    // Tests may run side by side: each has files of its own.
    const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    const fs::path out = fs::temp_directory_path() / ("quarle-scan-" + name + ".out");
    const fs::path err = fs::temp_directory_path() / ("quarle-scan-" + name + ".err");
    const std::string command = "\"" QUARLE_QC_TOOL "\" scan " + arguments + " >\"" + out.string() +
                                "\" 2>\"" + err.string() + "\"";
    ToolRun run;
    const int status = std::system(command.c_str());
#ifdef _WIN32
    run.Status = status;
#else
    run.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
    run.Out = ReadAll(out);
    run.Err = ReadAll(err);
    fs::remove(out);
    fs::remove(err);
    return run;
}

TEST(ScanCommand, ReportsKindLastFrameAndTexturesOfEachSmdFile) {
    const ToolRun run = Scan("\"" QUARLE_TEST_DATA "/smd/model\"");
    EXPECT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Out, "ref.smd reference 0 2\n"
                       "  Skin.bmp\n"
                       "  Arm.bmp\n"
                       "run.smd animation 12 0\n");
    EXPECT_EQ(run.Err, "");
}

TEST(ScanCommand, ListsSmdFilesInAnyCaseInNameOrder) {
    const fs::path dir = fs::temp_directory_path() / "quarle-scan-order";
    fs::remove_all(dir);
    fs::create_directories(dir / "folder.smd");
    std::ofstream(dir / "b.SMD", std::ios::binary) << "nodes\r\ntime 3\r\ntime 7";
    std::ofstream(dir / "A.smd", std::ios::binary) << "/*\r\ntriangles\r\n*/\r\n";
    std::ofstream(dir / "c.smd", std::ios::binary) << "";
    std::ofstream(dir / "d.txt", std::ios::binary) << "triangles\n";
    std::ofstream(dir / "e.smd", std::ios::binary)
        << "triangles\nx.bmp\nX.BMP\n" + std::string(11, 'y') + ".bmp\n";
    for (int i = 0; i < 11; ++i) { // more textures than the editor's tables hold
        std::ofstream(dir / "f.smd", std::ios::app) << "triangles\nt" << i << ".bmp\n";
    }
    const ToolRun run = Scan("\"" + dir.string() + "\"");
    EXPECT_EQ(run.Status, 0) << run.Err;
    std::string expected = "A.smd animation - 0\n"
                           "b.SMD animation 7 0\n"
                           "c.smd animation - 0\n"
                           "e.smd reference - 2\n"
                           "  x.bmp\n"
                           "  yyyyyyyyyyy.bmp\n"
                           "f.smd reference - 11\n";
    for (int i = 0; i < 11; ++i) {
        expected += "  t" + std::to_string(i) + ".bmp\n";
    }
    EXPECT_EQ(run.Out, expected);
    fs::remove_all(dir);
}

TEST(ScanCommand, RefusesWhatIsNoReadableFolder) {
    const ToolRun missing = Scan("\"" QUARLE_TEST_DATA "/smd/no-such-folder\"");
    EXPECT_EQ(missing.Status, 2);
    EXPECT_EQ(missing.Out, "");
    EXPECT_NE(missing.Err.find("no-such-folder"), std::string::npos) << missing.Err;

    const ToolRun file = Scan("\"" QUARLE_TEST_DATA "/smd/model/ref.smd\"");
    EXPECT_EQ(file.Status, 2);
    EXPECT_NE(file.Err, "");

    EXPECT_EQ(Scan("").Status, 2);
    EXPECT_EQ(Scan("a b").Status, 2);
}

} // namespace
