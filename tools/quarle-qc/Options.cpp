#include "Commands.h"

#include <algorithm>

namespace quarle::qc {

std::optional<std::string> ScriptAndOptions(const Args& args,
                                            std::initializer_list<Option> options) {
    std::optional<std::string> script;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        const Option* known = nullptr;
        for (const Option& option : options) {
            if (arg == option.Name) {
                known = &option;
            }
        }
        if (known != nullptr && known->Flag != nullptr) {
            *known->Flag = true;
        } else if (known != nullptr && i + 1 < args.size()) {
            const std::string& value = args[++i];
            if (!known->Choices.empty() && std::find(known->Choices.begin(), known->Choices.end(),
                                                     value) == known->Choices.end()) {
                return std::nullopt;
            }
            *known->Value = value;
        } else if (arg.starts_with("--") || (script && !script->empty())) {
            return std::nullopt;
        } else {
            script = arg;
        }
    }
    return script;
}

} // namespace quarle::qc
