#include "compile/Activities.h"

#include "compile/CompilerText.h"

#include <algorithm>

namespace quarle::compile {

bool IsCompilerActivity(std::string_view word) {
    if (std::any_of(CompilerActivities.begin(), CompilerActivities.end(),
                    [word](std::string_view name) { return EqualsNoCase(name, word); })) {
        return true;
    }
    return PrefixNoCase("ACT_", word, 4) && Atoi(word.substr(std::min<std::size_t>(4, word.size()))) != 0;
}

} // namespace quarle::compile
