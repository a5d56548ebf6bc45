// The entries of the activity box of an animation (TxtAnimID, and the same box
// in the animation wizard): each activity name the model compiler knows, in
// the order of their letters, with a blank and the weight 1 behind it.
#pragma once

#include "compile/Activities.h"

#include <array>
#include <string>

namespace quarle::ui {

inline const std::array<std::string, compile::CompilerActivities.size()>& ActivityIds() {
    static const auto ids = [] {
        std::array<std::string, compile::CompilerActivities.size()> out;
        for (std::size_t i = 0; i < out.size(); ++i) {
            out[i] = std::string(compile::CompilerActivities[i]) + " 1";
        }
        return out;
    }();
    return ids;
}

} // namespace quarle::ui
