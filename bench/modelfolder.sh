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

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${BUILD:-$root/build}
runs=${RUNS:-5}
seed=${SEED:-1}
export LC_ALL=C

if [ ! -f "$build/CMakeCache.txt" ]; then
    generator=$(command -v ninja >/dev/null 2>&1 && echo Ninja || echo "Unix Makefiles")
    cmake -S "$root" -B "$build" -G "$generator" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DQUARLE_CORE_ONLY=ON >/dev/null
fi
cmake --build "$build" --target quarle_core >/dev/null
core=$(find "$build" -name 'libquarle_core.a' -print -quit)

bench=$build/bench
mkdir -p "$bench"
gen=$bench/gen-model
if [ ! -x "$gen" ] || [ "$root/bench/GenModel.cpp" -nt "$gen" ]; then
    "${CXX:-c++}" -std=c++20 -O2 -o "$gen" "$root/bench/GenModel.cpp"
fi
tool=$bench/modelfolder-bench
if [ ! -x "$tool" ] || [ "$root/bench/ModelFolderBench.cpp" -nt "$tool" ] || [ "$core" -nt "$tool" ]; then
    "${CXX:-c++}" -std=c++20 -O2 -I "$root/src/core" -o "$tool" \
        "$root/bench/ModelFolderBench.cpp" "$core"
fi

data=$bench/model
stamp="$(cksum <"$root/bench/GenModel.cpp") seed $seed"
if [ ! -f "$data/.stamp" ] || [ "$(cat "$data/.stamp")" != "$stamp" ]; then
    rm -rf "$data"
    "$gen" "$data" "$seed"
    echo "$stamp" >"$data/.stamp"
fi
# Files changed in the last seconds are read again at every refill (their
# time stamp could hide a change); a folder being worked in is older.
find "$data" -maxdepth 1 -type f -iname '*.smd' -newermt '-10 seconds' \
    -exec touch -d '-1 hour' {} +

"$tool" "$data" "$runs"
