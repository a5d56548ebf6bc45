#!/usr/bin/env bash
# Times the outline of the mascot's frames (bench/ShapeBench.cpp) against a
# plain copy of each picture.
#
#   bench/shape.sh             (REPEATS=200 to change; CXX as for the build)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${BUILD:-$root/build}
tool=$build/bench/shape-bench
mkdir -p "$build/bench"
sources=("$root/bench/ShapeBench.cpp" "$root/src/platform/ShapeRuns.cpp" "$root/src/platform/WindowShape.cpp")
if [ ! -x "$tool" ] || [ -n "$(find "${sources[@]}" -newer "$tool")" ]; then
    # shellcheck disable=SC2046
    "${CXX:-c++}" -std=c++20 -O2 -fPIC -I "$root/src" -o "$tool" "${sources[@]}" \
        $(pkg-config --cflags --libs Qt6Widgets)
fi
for frame in 0 2 6; do
    echo "frame $frame"
    "$tool" "$root/data/assistant/quarle$frame.png" "${REPEATS:-200}"
done
