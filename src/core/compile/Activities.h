// The activity names the model compiler knows, in the order of their
// letters. In a $sequence line it takes one of these (in any capitals) for
// an activity with a weight behind it; so it takes "ACT_" with a number
// ("ACT_12"). Any other word, "ACT_" or not, is the name of a file to it.
#pragma once

#include <array>
#include <string_view>

namespace quarle::compile {

inline constexpr std::array<std::string_view, 76> CompilerActivities = {
    "ACT_ARM",
    "ACT_BARNACLE_CHEW",
    "ACT_BARNACLE_CHOMP",
    "ACT_BARNACLE_HIT",
    "ACT_BARNACLE_PULL",
    "ACT_BIG_FLINCH",
    "ACT_BITE",
    "ACT_COMBAT_IDLE",
    "ACT_COWER",
    "ACT_CROUCH",
    "ACT_CROUCHIDLE",
    "ACT_DETECT_SCENT",
    "ACT_DIEBACKWARD",
    "ACT_DIEFORWARD",
    "ACT_DIESIMPLE",
    "ACT_DIEVIOLENT",
    "ACT_DIE_BACKSHOT",
    "ACT_DIE_CHESTSHOT",
    "ACT_DIE_GUTSHOT",
    "ACT_DIE_HEADSHOT",
    "ACT_DISARM",
    "ACT_EAT",
    "ACT_EXCITED",
    "ACT_FALL",
    "ACT_FEAR_DISPLAY",
    "ACT_FLINCH_CHEST",
    "ACT_FLINCH_HEAD",
    "ACT_FLINCH_LEFTARM",
    "ACT_FLINCH_LEFTLEG",
    "ACT_FLINCH_RIGHTARM",
    "ACT_FLINCH_RIGHTLEG",
    "ACT_FLINCH_STOMACH",
    "ACT_FLY",
    "ACT_FLY_LEFT",
    "ACT_FLY_RIGHT",
    "ACT_GLIDE",
    "ACT_GUARD",
    "ACT_HOP",
    "ACT_HOVER",
    "ACT_IDLE",
    "ACT_IDLE_ANGRY",
    "ACT_INSPECT_FLOOR",
    "ACT_INSPECT_WALL",
    "ACT_LAND",
    "ACT_LEAP",
    "ACT_MELEE_ATTACK1",
    "ACT_MELEE_ATTACK2",
    "ACT_RANGE_ATTACK1",
    "ACT_RANGE_ATTACK2",
    "ACT_RELOAD",
    "ACT_ROLL_LEFT",
    "ACT_ROLL_RIGHT",
    "ACT_RUN",
    "ACT_RUN_HURT",
    "ACT_RUN_SCARED",
    "ACT_SIGNAL1",
    "ACT_SIGNAL2",
    "ACT_SIGNAL3",
    "ACT_SLEEP",
    "ACT_SMALL_FLINCH",
    "ACT_SNIFF",
    "ACT_SPECIAL_ATTACK1",
    "ACT_SPECIAL_ATTACK2",
    "ACT_STAND",
    "ACT_STRAFE_LEFT",
    "ACT_STRAFE_RIGHT",
    "ACT_SWIM",
    "ACT_THREAT_DISPLAY",
    "ACT_TURN_LEFT",
    "ACT_TURN_RIGHT",
    "ACT_TWITCH",
    "ACT_USE",
    "ACT_VICTORY_DANCE",
    "ACT_WALK",
    "ACT_WALK_HURT",
    "ACT_WALK_SCARED",
};

// Whether the compiler reads the word as an activity.
bool IsCompilerActivity(std::string_view word);

} // namespace quarle::compile
