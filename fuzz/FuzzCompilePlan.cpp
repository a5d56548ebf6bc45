// A script read as the compiler reads it, with the model folder of the run
// holding parts, animations and includes that it may name. Nothing may
// crash, hang or touch memory outside a table.
#include "FuzzSupport.h"
#include "compile/CompilePlan.h"

namespace {

using quarle::fuzz::ProcessFolder;

const ProcessFolder& Folder() {
    static const ProcessFolder folder;
    static const bool ready = [] {
        folder.Write("loop_idle.smd", "version 1\n");
        folder.Write("inc.qci", "$sequence \"inc\" \"inc\" fps 10 {\n$include \"inc.qci\"\n");
        folder.Write("body.qci", "$bodygroup b\n{\nstudio \"x\"\nblank\n}\n");
        return true;
    }();
    (void)ready;
    return folder;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string qc = Folder().Write("m.qc", quarle::fuzz::Bytes(data, size));
    const quarle::compile::CompilePlan plan = quarle::compile::ReadCompilePlan(qc);
    std::size_t sum = plan.Issues.size() + plan.Sources.size();
    for (const auto& issue : plan.Issues) {
        sum += static_cast<std::size_t>(issue.At.Source) < plan.Sources.size() ? 0 : 1;
    }
    return sum == static_cast<std::size_t>(-1) ? 1 : 0;
}
