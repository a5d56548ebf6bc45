// The three .smd scans over any file.
#include "FuzzSupport.h"
#include "document/SmdScan.h"

#include <array>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const quarle::fuzz::ProcessFolder folder;
    const std::string path = folder.Write("fuzz.smd", quarle::fuzz::Bytes(data, size));

    int line = size > 0 ? data[0] % 8 : 1;
    quarle::FindFileValue(path, "triangles", line);
    quarle::IsReferenceSmd(path);
    quarle::i16 frames = 0;
    quarle::ScanSmdFrames(path, frames);
    std::array<std::string, quarle::limits::LastTexture + 1> names{};
    int count = 0;
    quarle::CollectBmpLines(path, names, count);
    quarle::CollectBmpLines(path, names, count); // a second part adds to the same table
    return 0;
}
