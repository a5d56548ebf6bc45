#!/usr/bin/env bash
# Load and save of a large script through `quarle-qc roundtrip`, timed against
# `cat` of the same bytes into a file in the same run. The script has 11
# sequence groups of 101 sequences with 20 events each, and a few hundred
# lines behind three nested includes. Prints the median of RUNS runs of each
# and their ratio. A save syncs the script to the disk before it replaces the
# old one, which cat does not: `cat` followed by `sync` of the file and its
# folder is timed as well, as the reference that does what a safe save does.
#
#   bench/loadsave.sh [path/to/quarle-qc] [RUNS]
#
# BASELINE=path/to/quarle-qc also times another build of the tool in the same
# runs, so that a change is measured against the code before it under the
# same load.
set -euo pipefail

tool="${1:-$(dirname "$0")/../build/bin/quarle-qc}"
runs="${2:-9}"
[ -x "$tool" ] || { echo "quarle-qc not found at $tool (build it first)" >&2; exit 2; }

work="$(mktemp -d)"
trap '[ -n "${KEEP:-}" ] || rm -rf "$work"' EXIT; [ -n "${KEEP:-}" ] && echo "work folder: $work"

# The model folder: reference parts with textures, so nothing is asked.
for part in body head arm; do
    { echo "version 1"; echo "triangles"; echo "$part.bmp"; echo "${part}_b.bmp"; echo "end"; } \
        >"$work/$part.smd"
done

events=""
for e in $(seq 1 20); do
    events+=" { event 50$((e % 10))$((e % 7)) $e \"sound/step$e.wav\" }"
done

{
    echo "// a large model"
    echo "\$modelname \"$work/big.mdl\""
    echo "\$cd \"$work\""
    echo "\$cdtexture \"$work\""
    echo "\$include \"$work/inc1.qc\""
    echo "\$body body \"body\""
    echo "\$bodygroup heads"
    echo "{"
    echo "studio \"head\" reverse"
    echo "blank"
    echo "studio \"arm\""
    echo "}"
    echo "\$texrendermode \"head.bmp\" masked"
    echo "\$texturegroup skins"
    echo "{"
    echo "{ \"head.bmp\" \"arm.bmp\" }"
    echo "{ \"head2.bmp\" \"arm.bmp\" }"
    echo "}"
    for g in $(seq 0 10); do
        if [ "$g" -gt 0 ]; then
            echo ""
            echo "\$sequencegroup seqgroup$g"
        fi
        for s in $(seq 0 100); do
            echo "\$sequence \"anim${g}_$s\" \"anim${g}_$s\" fps 24 loop frame 0 40 ACT_WALK 1 LX scale 1.5 rotate 90$events"
        done
    done
} >"$work/big.qc"

for level in 1 2 3; do
    {
        for i in $(seq 1 100); do
            case $((i % 4)) in
                0) echo "\$hbox $((i % 8)) \"Bip01 Bone$i\" -1.5 -2 -3 4 5 6.25" ;;
                1) echo "\$attachment $((i % 4)) \"Bip01 Bone$i\" 1.5 -2 $i" ;;
                2) echo "\$controller $((i % 4)) \"Bip01 Bone$i\" XR -30 30" ;;
                3) echo "// comment line $i" ;;
            esac
        done
        [ "$level" -lt 3 ] && echo "\$include \"$work/inc$((level + 1)).qc\""
        true
    } >"$work/inc$level.qc"
done

inputs=("$work/big.qc" "$work/inc1.qc" "$work/inc2.qc" "$work/inc3.qc")
bytes=$(cat "${inputs[@]}" | wc -c)
lines=$(cat "${inputs[@]}" | wc -l)

now() { date +%s%N; }
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

tool_times=()
cat_times=()
sync_times=()
base_times=()
for _ in $(seq 1 "$runs"); do
    if [ -n "${BASELINE:-}" ]; then
        t0=$(now)
        "$BASELINE" roundtrip "$work/big.qc" "$work/base.qc"
        base_times+=($(($(now) - t0)))
    fi
    t0=$(now)
    "$tool" roundtrip "$work/big.qc" "$work/out.qc"
    t1=$(now)
    cat "${inputs[@]}" >"$work/cat.out"
    t2=$(now)
    cat "${inputs[@]}" >"$work/synced.out"
    sync "$work/synced.out" "$work"
    t3=$(now)
    tool_times+=($((t1 - t0)))
    cat_times+=($((t2 - t1)))
    sync_times+=($((t3 - t2)))
done

tool_ns=$(printf '%s\n' "${tool_times[@]}" | median)
cat_ns=$(printf '%s\n' "${cat_times[@]}" | median)
sync_ns=$(printf '%s\n' "${sync_times[@]}" | median)
out_bytes=$(wc -c <"$work/out.qc")
sequences=$(grep -c '^\$sequence "' "$work/out.qc")

printf 'input: %d lines, %d bytes (4 files); output: %d bytes, %d sequences\n' \
    "$lines" "$bytes" "$out_bytes" "$sequences"
base_ns=0
if [ -n "${BASELINE:-}" ]; then
    base_ns=$(printf '%s\n' "${base_times[@]}" | median)
fi
awk -v runs="$runs" -v t="$tool_ns" -v c="$cat_ns" -v s="$sync_ns" -v b="$base_ns" 'BEGIN {
    printf "median of %d runs: roundtrip %.2f ms, cat %.2f ms, ratio %.1f\n", runs, t / 1e6, c / 1e6, t / c
    printf "cat and sync %.2f ms, ratio %.1f\n", s / 1e6, t / s
    if (b > 0) printf "baseline %.2f ms, ratio %.1f (against cat and sync %.1f)\n", b / 1e6, b / c, b / s
}'
