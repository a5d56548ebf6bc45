// The commands of quarle-qc, one file each. Each takes the arguments behind
// the command word and returns the exit status.
#pragma once

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quarle::qc {

using Args = std::vector<std::string>;

// An option of a command: "--name VALUE" when it has a Value to fill (one
// of Choices, where it names any), "--name" alone when it sets a Flag.
struct Option {
    std::string_view Name;
    std::optional<std::string>* Value = nullptr;
    bool* Flag = nullptr;
    std::span<const std::string_view> Choices{};
};

// The one script a command names, its options read on the way (a later one
// of the same name wins); nothing when no script is named or an argument is
// not understood: an unknown option, one without its value, a second script.
std::optional<std::string> ScriptAndOptions(const Args& args,
                                            std::initializer_list<Option> options);

int RunScan(const Args& args);      // scan DIR
int RunRoundtrip(const Args& args); // roundtrip IN.qc OUT.qc [--missing=keep|refuse]
int RunCheck(const Args& args);     // check IN.qc [--language FILE]
int RunSkeleton(const Args& args);  // skeleton MODEL.qc [--for attachment|controller]
int RunMdl(const Args& args);       // mdl MODEL.mdl
int RunCompile(const Args& args);   // compile IN.qc [--compiler PATH] [--ignore-checks]

} // namespace quarle::qc
