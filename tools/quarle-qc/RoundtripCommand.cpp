// roundtrip IN.qc OUT.qc [--missing=keep|refuse]: loads IN as the editor's
// open command does and writes it back through the writer. Nothing is asked:
// with "keep" every folder or part file that cannot be found stays as the
// script wrote it; with "refuse" the first such question breaks the load off.
//
// Written over IN itself, a script whose load found something (an include
// that cannot be read, a line the compiler refuses, ...) is first copied to
// IN.orig (or the next free name), as the editor's first save over it does.
//
// Exit status: 0 when OUT was written, 1 when IN is no script (binary or
// UTF-16; nothing is written), 3 when the load was refused, 2 for a usage
// error or a file that cannot be read or written.
#include "Commands.h"
#include "LoadScript.h"
#include "document/LoadFindings.h"
#include "document/Paths.h"
#include "document/QcWriter.h"

#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>
#include <string>

namespace quarle::qc {

namespace {

bool SameFile(const std::string& a, const std::string& b) {
    std::error_code ec;
    return std::filesystem::equivalent(paths::ToFsPath(a), paths::ToFsPath(b), ec) && !ec;
}

int Usage() {
    std::fprintf(stderr, "usage: quarle-qc roundtrip IN.qc OUT.qc [--missing=keep|refuse]\n");
    return 2;
}

} // namespace

int RunRoundtrip(const Args& args) {
    std::string in;
    std::string out;
    Missing missing = Missing::Keep;
    for (const std::string& arg : args) {
        if (arg == "--missing=keep") {
            missing = Missing::Keep;
        } else if (arg == "--missing=refuse") {
            missing = Missing::Refuse;
        } else if (arg.starts_with("--")) {
            return Usage();
        } else if (in.empty()) {
            in = arg;
        } else if (out.empty()) {
            out = arg;
        } else {
            return Usage();
        }
    }
    if (in.empty() || out.empty()) {
        return Usage();
    }

    const LoadedScript loaded = LoadScript(in, missing);
    if (loaded.Status != 0) {
        return loaded.Status;
    }
    if (!loaded.Findings.empty() && SameFile(in, out)) {
        std::string error;
        const std::optional<std::string> kept = KeepOriginal(in, error);
        if (!kept) {
            std::fprintf(stderr, "quarle-qc: %s: %s\n", KeptOriginalName(in).c_str(),
                         error.c_str());
            return 2;
        }
        std::fprintf(stderr, "quarle-qc: the original script is kept as %s\n", kept->c_str());
    }
    const WriteResult written = WriteQcFile(*loaded.Doc, out, '.');
    if (!written.Ok) {
        std::fprintf(stderr, "quarle-qc: %s: %s\n", out.c_str(), written.Error.c_str());
        return 2;
    }
    return 0;
}

} // namespace quarle::qc
