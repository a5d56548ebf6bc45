#!/usr/bin/env bash
# Times the 3D preview on the largest reference part of the generated bench
# model (bench/PreviewBench.cpp), posed by one of its animations, and on the
# largest compiled model, each against a plain clear of the same view, under
# a virtual X display with Mesa's software renderer (llvmpipe). The compiled
# model is the bench's own (written by preview-bench --make-model) unless
# MDL names another.
#
#   bench/preview.sh           (FRAMES=200 to change; MDL=path/to/model.mdl)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${BUILD:-$root/build}
if grep -q 'QUARLE_CORE_ONLY:BOOL=ON' "$build/CMakeCache.txt" 2>/dev/null; then
    echo "bench/preview.sh needs the full build, not a core-only one: $build" >&2
    exit 1
fi
if [ ! -f "$build/CMakeCache.txt" ]; then
    generator=$(command -v ninja >/dev/null 2>&1 && echo Ninja || echo "Unix Makefiles")
    cmake -S "$root" -B "$build" -G "$generator" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
# shellcheck source=bench/common.sh
source "$root/bench/common.sh"
cmake --build "$build" --target quarle_preview_bench >/dev/null

part=$(ls -S "$data"/ref* | sed -n 1p)
anim=$(ls -S "$data"/anim* | sed -n 1p)
echo "part $(basename "$part") ($(stat -c %s "$part") bytes), animation $(basename "$anim")"
QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe \
    xvfb-run -a -s "-screen 0 1280x1024x24" \
    "$build/bin/quarle_preview_bench" "$part" "$anim" "${FRAMES:-200}"

model=${MDL:-$build/bench/compiled.mdl}
if [ -z "${MDL:-}" ] && { [ ! -f "$model" ] || [ "$build/bin/quarle_preview_bench" -nt "$model" ]; }; then
    "$build/bin/quarle_preview_bench" --make-model "$model"
fi
echo "compiled model $(basename "$model") ($(stat -c %s "$model") bytes)"
QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe \
    xvfb-run -a -s "-screen 0 1280x1024x24" \
    "$build/bin/quarle_preview_bench" "$model" "${FRAMES:-200}"
