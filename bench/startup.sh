#!/usr/bin/env bash
# Times the start of the editor to its first visible window against a bare
# Qt Widgets window (bench/BareWindow.cpp) built alongside, under a virtual X
# display: each run starts the program in a scratch home of its own (no
# settings, no caches of its own) and polls `xdotool search --onlyvisible
# --pid` until a top-level window of the process is mapped. The two programs
# take turns, RUNS runs each; it prints the best and the median of each and
# their ratios, with the machine's load before and after. The bare window
# with one caption is timed too: it shows what any window with text pays
# before the editor's own work starts (fonts, accessibility).
#
#   bench/startup.sh            (BUILD=build RUNS=9 to change)
#
# It needs xdotool and Xvfb (Debian: xdotool, xvfb) and installs them when it can.
#
# The scratch home holds only the mark that the first start's note about a
# missing compiler was given, so that the main window is the first window
# (the look for the tools still runs, as on a first start).
# BASELINE=path/to/quarle also times another build of the editor in the same
# runs, so that a change is measured against the code before it.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${BUILD:-$root/build}
runs=${RUNS:-9}

# Xvfb picks a free display itself (-displayfd), so that benches and tests of
# others on the same machine cannot take it in between.
if [ -z "${QUARLE_BENCH_DISPLAY:-}" ]; then
    if grep -q 'QUARLE_CORE_ONLY:BOOL=ON' "$build/CMakeCache.txt" 2>/dev/null; then
        echo "bench/startup.sh needs the full build, not a core-only one: $build" >&2
        exit 1
    fi
    if ! command -v xdotool >/dev/null || ! command -v Xvfb >/dev/null; then
        make --no-print-directory -C "$root" install-optional OPTIONAL="xdotool xvfb"
    fi
    for tool in xdotool Xvfb; do
        if ! command -v $tool >/dev/null; then
            echo "bench/startup.sh needs $tool (Debian packages: xdotool xvfb)" >&2
            exit 2
        fi
    done
    if [ ! -f "$build/CMakeCache.txt" ]; then
        generator=$(command -v ninja >/dev/null 2>&1 && echo Ninja || echo "Unix Makefiles")
        cmake -S "$root" -B "$build" -G "$generator" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    fi
    cmake --build "$build" --target quarle quarle_bare_window >/dev/null
    displayfile=$(mktemp)
    Xvfb -displayfd 3 -nolisten tcp -screen 0 1280x1024x24 3>"$displayfile" 2>/dev/null &
    xvfb=$!
    trap 'kill "$xvfb" 2>/dev/null; rm -f "$displayfile"' EXIT
    until [ -s "$displayfile" ]; do
        kill -0 "$xvfb" 2>/dev/null || { echo "Xvfb did not start" >&2; exit 1; }
        sleep 0.05
    done
    QUARLE_BENCH_DISPLAY=:$(head -n 1 "$displayfile") "$0" "$@"
    exit
fi

export DISPLAY=$QUARLE_BENCH_DISPLAY
export LC_ALL=C QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME SESSION_MANAGER
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Microseconds from the start of the program to its first visible top-level
# window. The program is ended once it shows one.
startup() {
    local home pid start now
    home=$(mktemp -d "$scratch/home.XXXXXX")
    mkdir -p "$home/.config/Quarle"
    printf '[Settings]\nToolNotice=1\n' >"$home/.config/Quarle/Quarle.conf"
    start=${EPOCHREALTIME/./}
    HOME=$home "$@" >"$home.log" 2>&1 &
    pid=$!
    until xdotool search --onlyvisible --pid "$pid" >/dev/null 2>&1; do
        if ! kill -0 "$pid" 2>/dev/null; then
            # Under load a connection to the display is at times refused;
            # such a run is started again.
            if grep -q 'could not connect to display' "$home.log" && ((${tries:-0} < 3)); then
                rm -rf "$home" "$home.log"
                tries=$((${tries:-0} + 1)) startup "$@"
                return
            fi
            echo "$1 ended without a window:" >&2
            cat "$home.log" >&2
            exit 1
        fi
    done
    now=${EPOCHREALTIME/./}
    kill "$pid"
    wait "$pid" 2>/dev/null || true
    rm -rf "$home" "$home.log"
    echo $((now - start))
}
best() { printf '%s\n' "$@" | sort -n | head -n 1; }
median() { printf '%s\n' "$@" | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
load() { cut -d ' ' -f 1-3 /proc/loadavg; }

quarle=$build/bin/quarle
bare=$build/bin/quarle_bare_window
before=$(load)
# One start of each first, for the page cache.
startup "$quarle" >/dev/null
startup "$bare" >/dev/null
quarle_us=()
bare_us=()
caption_us=()
base_us=()
for ((i = 0; i < runs; i++)); do
    # Who goes first changes, so that neither always follows the other.
    if ((i % 2 == 0)); then
        quarle_us+=("$(startup "$quarle")")
        bare_us+=("$(startup "$bare")")
    else
        bare_us+=("$(startup "$bare")")
        quarle_us+=("$(startup "$quarle")")
    fi
    caption_us+=("$(startup "$bare" --caption)")
    if [ -n "${BASELINE:-}" ]; then
        base_us+=("$(startup "$BASELINE")")
    fi
done
cb=$(best "${caption_us[@]}")
cm=$(median "${caption_us[@]}")
qb=$(best "${quarle_us[@]}")
qm=$(median "${quarle_us[@]}")
bb=$(best "${bare_us[@]}")
bm=$(median "${bare_us[@]}")
ab=0
am=0
if [ -n "${BASELINE:-}" ]; then
    ab=$(best "${base_us[@]}")
    am=$(median "${base_us[@]}")
fi
awk -v r="$runs" -v qb="$qb" -v qm="$qm" -v bb="$bb" -v bm="$bm" -v ab="$ab" -v am="$am" \
    -v cb="$cb" -v cm="$cm" \
    -v l0="$before" -v l1="$(load)" 'BEGIN {
    printf "time to the first visible window, %d runs each, load %s before, %s after\n", r, l0, l1
    printf "                    best       median\n"
    printf "bare Qt window  %8.1f ms  %8.1f ms\n", bb / 1000, bm / 1000
    printf "with a caption  %8.1f ms  %8.1f ms\n", cb / 1000, cm / 1000
    printf "quarle          %8.1f ms  %8.1f ms\n", qb / 1000, qm / 1000
    if (ab > 0) printf "baseline        %8.1f ms  %8.1f ms\n", ab / 1000, am / 1000
    printf "ratio quarle/bare   %6.2f      %6.2f\n", qb / bb, qm / bm
    if (ab > 0) printf "ratio baseline/bare %6.2f      %6.2f\n", ab / bb, am / bm
    printf "ratio quarle/caption%6.2f      %6.2f\n", qb / cb, qm / cm
}'
