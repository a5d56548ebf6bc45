// skeleton MODEL.qc [--for attachment|controller]: the bone tree of the
// model's first reference mesh as the attachment dialog (the default) or the
// controller dialog reads it. One line per named bone in index order,
//
//   <index> "<name>" <parent index> <X> <Y> <Z>
//
// then "range <SkeletonMin> <SkeletonMax>", numbers with a decimal point.
// The script is loaded as roundtrip --missing=keep loads it.
//
// Exit status: 0; 1 when there is no reference part or its file cannot be
// read; 2 for a usage error or a script that cannot be read.
#include "Commands.h"
#include "LoadScript.h"
#include "document/NumberText.h"
#include "document/Skeleton.h"

#include <cstdio>
#include <memory>
#include <string>

namespace quarle::qc {

namespace {

int Usage() {
    std::fprintf(stderr, "usage: quarle-qc skeleton MODEL.qc [--for attachment|controller]\n");
    return 2;
}

} // namespace

int RunSkeleton(const Args& args) {
    static constexpr std::string_view Variants[] = {"attachment", "controller"};
    std::optional<std::string> which;
    const std::optional<std::string> script =
        ScriptAndOptions(args, {{"--for", &which, nullptr, Variants}});
    if (!script || script->empty()) {
        return Usage();
    }
    const std::string& in = *script;
    const SkeletonVariant variant =
        which == "controller" ? SkeletonVariant::Controller : SkeletonVariant::Attachment;

    const LoadedScript loaded = LoadScript(in, Missing::Keep);
    if (loaded.Status != 0) {
        std::fprintf(stderr, "quarle-qc: cannot read the script %s\n", in.c_str());
        return 2;
    }
    auto tables = std::make_unique<SkeletonTables>();
    const SkeletonLoad load = LoadSkeleton(*tables, *loaded.Doc, variant);
    if (load.Source == SkeletonSource::NoPart) {
        std::fprintf(stderr, "quarle-qc: the model has no reference part\n");
        return 1;
    }
    if (load.Source == SkeletonSource::Unreadable) {
        std::fprintf(stderr, "quarle-qc: cannot read the skeleton file: %s\n",
                     DescribeOpenProblem(load.Unread).c_str());
        return 1;
    }
    std::string out;
    for (const int b : load.ListedBones) {
        const BoneRec& bone = tables->Bones[b];
        out += IntToText(b) + " \"" + tables->BoneNames[b] + "\" " + IntToText(bone.Parent) +
               ' ' + FloatToPointText(bone.X) + ' ' + FloatToPointText(bone.Y) + ' ' +
               FloatToPointText(bone.Z) + '\n';
    }
    out += "range " + FloatToPointText(tables->SkeletonMin) + ' ' +
           FloatToPointText(tables->SkeletonMax) + '\n';
    std::fwrite(out.data(), 1, out.size(), stdout);
    return std::fflush(stdout) == 0 ? 0 : 2;
}

} // namespace quarle::qc
