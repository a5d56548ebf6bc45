// quarle-qc: the command-line companion of the editor, on the same core.
#include "Commands.h"
#include "document/Paths.h"
#include "localisation/Cp1252.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

struct Command {
    const char* Name;
    const char* Usage;
    int (*Run)(const quarle::qc::Args&);
};

constexpr Command Commands[] = {
    {"scan", "scan DIR", quarle::qc::RunScan},
    {"roundtrip", "roundtrip IN.qc OUT.qc [--missing=keep|refuse]", quarle::qc::RunRoundtrip},
    {"check", "check IN.qc [--language FILE]", quarle::qc::RunCheck},
    {"skeleton", "skeleton MODEL.qc [--for attachment|controller]", quarle::qc::RunSkeleton},
    {"mdl", "mdl MODEL.mdl", quarle::qc::RunMdl},
    {"compile", "compile IN.qc [--compiler PATH] [--ignore-checks] [--language FILE]",
     quarle::qc::RunCompile},
};

int Usage() {
    std::fprintf(stderr, "usage:\n");
    for (const Command& c : Commands) {
        std::fprintf(stderr, "  quarle-qc %s\n", c.Usage);
    }
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return Usage();
    }
    for (const Command& c : Commands) {
        if (std::strcmp(argv[1], c.Name) == 0) {
            // The core takes paths as the document holds text, in cp1252.
            // The command line is UTF-8, but a name on disk need not be:
            // the path rules take such bytes as they are, so the file is found.
            quarle::qc::Args args;
            for (int i = 2; i < argc; ++i) {
#ifdef _WIN32
                args.push_back(quarle::Utf8ToCp1252(argv[i]));
#else
                args.push_back(quarle::paths::FromFsPath(std::filesystem::path(argv[i])));
#endif
            }
            return c.Run(args);
        }
    }
    std::fprintf(stderr, "quarle-qc: unknown command '%s'\n", argv[1]);
    return Usage();
}
