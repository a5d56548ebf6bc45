// quarle-qc scan DIR: what the editor learns from each .smd file of a model
// folder. One line per file, in name order:
//
//   <file name> reference|animation <last frame, or -> <texture count>
//     <texture line>
//     ...
//
// A file is a reference mesh when it has a "triangles" value outside
// comments, as the model page sorts files. The last frame is the number of
// the last "time" value ("-" when there is none). The textures are all
// distinct .BMP lines of the file, in first-seen order, not limited to the
// ten slots of the editor's tables. Everything comes from one read per file.
//
// Exit status: 0; 1 when a file of the folder could not be read (it is left
// out, with a message that says why: a pipe or a device named .smd is not
// read; folders are passed over); 2 when DIR is not a readable folder.
#include "Commands.h"
#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/SmdScan.h"

#include <charconv>
#include <cstdio>
#include <string>

namespace quarle::qc {

int RunScan(const Args& args) {
    if (args.size() != 1) {
        std::fprintf(stderr, "usage: quarle-qc scan DIR\n");
        return 2;
    }
    const std::string& folder = args[0];
    const auto files = paths::TryListFiles(folder, ".smd", paths::Entries::NotFolders);
    if (!files) {
        std::fprintf(stderr, "quarle-qc: '%s' is not a readable folder\n", folder.c_str());
        return 2;
    }
    const std::string resolved = paths::Resolve(folder).value_or(folder);
    int status = 0;
    std::string out;
    for (const std::string& name : *files) {
        const SmdFacts facts = ScanSmdFile(paths::Join(resolved, name));
        if (!facts.Readable) {
            std::fprintf(stderr, "quarle-qc: %s\n", DescribeOpenProblem(facts.Unread).c_str());
            status = 1;
            continue;
        }
        out += name;
        out += facts.Reference ? " reference " : " animation ";
        char number[16];
        if (facts.HasTime) {
            out.append(number, std::to_chars(number, number + sizeof number, facts.LastFrame).ptr);
        } else {
            out += '-';
        }
        out += ' ';
        out.append(number,
                   std::to_chars(number, number + sizeof number, facts.Textures.size()).ptr);
        out += '\n';
        for (const std::string& texture : facts.Textures) {
            out += "  ";
            out += texture;
            out += '\n';
        }
        if (out.size() > 64 * 1024) {
            std::fwrite(out.data(), 1, out.size(), stdout);
            out.clear();
        }
    }
    std::fwrite(out.data(), 1, out.size(), stdout);
    return std::fflush(stdout) == 0 ? status : 1;
}

} // namespace quarle::qc
