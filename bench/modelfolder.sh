#!/usr/bin/env bash
# Times the refill of the main window's file list on a generated model folder
# of 200 .smd files: the first refill (every file read) and a repeated one
# (files unchanged: none read), against a plain read of the same files.
#
#   bench/modelfolder.sh            (BUILD=build RUNS=5 SEED=1 to change)
#
# The folder is the one of bench/scan.sh (bench/GenModel.cpp), generated once
# into $BUILD/bench/model and reused while the generator and the seed stay the
# same. Its files are dated an hour back, as in a folder the user works in.
set -euo pipefail

source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cmake --build "$build" --target quarle_core >/dev/null
core=$(find "$build" -name 'libquarle_core.a' -print -quit)
tool=$bench/modelfolder-bench
if [ ! -x "$tool" ] || [ "$root/bench/ModelFolderBench.cpp" -nt "$tool" ] || [ "$core" -nt "$tool" ]; then
    "${CXX:-c++}" -std=c++20 -O2 -I "$root/src/core" -o "$tool" \
        "$root/bench/ModelFolderBench.cpp" "$core"
fi

# Files changed in the last seconds are read again at every refill (their
# time stamp could hide a change); a folder being worked in is older.
find "$data" -maxdepth 1 -type f -iname '*.smd' -newermt '-10 seconds' \
    -exec touch -d '-1 hour' {} +

"$tool" "$data" "$runs"
