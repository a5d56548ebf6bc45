// The commands of quarle-qc, one file each. Each takes the arguments behind
// the command word and returns the exit status.
#pragma once

#include <string>
#include <vector>

namespace quarle::qc {

using Args = std::vector<std::string>;

int RunScan(const Args& args);      // scan DIR
int RunRoundtrip(const Args& args); // roundtrip IN.qc OUT.qc [--missing=keep|refuse]
int RunCheck(const Args& args);     // check IN.qc [--language FILE]
int RunSkeleton(const Args& args);  // skeleton MODEL.qc [--for attachment|controller]
int RunMdl(const Args& args);       // mdl MODEL.mdl
int RunCompile(const Args& args);   // compile IN.qc [--compiler PATH] [--ignore-checks]

} // namespace quarle::qc
