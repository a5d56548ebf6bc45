#include "document/ModelTextures.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/SmdScan.h"

namespace quarle {

namespace {

bool CanRead(const std::string& path) {
    return static_cast<bool>(InputFile::Open(path, FileKind::Smd));
}

} // namespace

TextureScanResult CollectModelTextures(const Document& doc, std::span<std::string> names,
                                       int& count) {
    TextureScanResult result;
    for (int g = 1; g <= doc.BodyGroupCount && g <= limits::LastBodyGroup; ++g) {
        const BodyGroupRec& group = doc.BodyGroups[static_cast<std::size_t>(g)];
        for (int p = 1; p <= group.PartCount && p <= limits::LastPart; ++p) {
            const std::string& part = group.Parts[static_cast<std::size_t>(p)];
            if (part.empty() || part == Blank) {
                continue;
            }
            const std::string path = paths::Join(doc.ModelPath, part + ".smd");
            if (!CanRead(path)) {
                result.Unreadable.push_back(path);
                continue;
            }
            if (!result.Full && !CollectBmpLines(path, names, count)) {
                result.Full = true;
            }
        }
    }
    return result;
}

} // namespace quarle
