#!/usr/bin/env bash
# Times `quarle-qc scan` on a generated model folder against `grep -c triangles`
# over the same files: same run, warm cache, median of RUNS runs each.
#
#   bench/scan.sh            (BUILD=build RUNS=5 SEED=1 to change)
#
# BASELINE=path/to/quarle-qc also times another build of the tool in the same
# runs, so that a change is measured against the code before it under the
# same load.
#
# A second folder holds one reference mesh of 100,000 triangles, each with a
# texture of its own: the scan gathers the names of a file in linear time, so
# the time per name stays that of a few names (a quadratic gathering took a
# minute at 40,000).
#
# The folder (about 390 MB: 40 reference meshes of 2-5 MB, 160 animations of
# 0.1-3 MB) is generated once into $BUILD/bench/model and reused while the
# generator and the seed stay the same.
set -euo pipefail

source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cmake --build "$build" --target quarle-qc >/dev/null
tool=$build/bin/quarle-qc

mapfile -t files < <(find "$data" -maxdepth 1 -type f -iname '*.smd' | sort)
bytes=$(cat "${files[@]}" | wc -c)

# Microseconds of one run of the command, output to the file OUT. grep and the
# scan write to a file: grep stops at its first match when its output is
# /dev/null. cat writes to /dev/null, so it only reads.
elapsed() {
    local out=$1 start end
    shift
    start=$(date +%s%N)
    "$@" >"$out"
    end=$(date +%s%N)
    echo $(((end - start) / 1000))
}
median() { printf '%s\n' "$@" | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# Warm the cache and check that the tool works.
cat "${files[@]}" >/dev/null
"$tool" scan "$data" >"$bench/scan.txt"
echo "scan: $(grep -c ' reference ' "$bench/scan.txt") reference, $(grep -c ' animation ' "$bench/scan.txt") animation files"
grep -c triangles "${files[@]}" >/dev/null || true

# cat is the plain read, for reference.
cat_us=()
grep_us=()
scan_us=()
base_us=()
for ((i = 0; i < runs; i++)); do
    cat_us+=("$(elapsed /dev/null cat "${files[@]}")")
    grep_us+=("$(elapsed "$bench/out.txt" grep -c triangles "${files[@]}" || true)")
    scan_us+=("$(elapsed "$bench/out.txt" "$tool" scan "$data")")
    if [ -n "${BASELINE:-}" ]; then
        base_us+=("$(elapsed "$bench/out.txt" "$BASELINE" scan "$data")")
    fi
done
c=$(median "${cat_us[@]}")
g=$(median "${grep_us[@]}")
s=$(median "${scan_us[@]}")
a=0
if [ -n "${BASELINE:-}" ]; then a=$(median "${base_us[@]}"); fi
awk -v n="${#files[@]}" -v b="$bytes" -v c="$c" -v g="$g" -v s="$s" -v a="$a" -v r="$runs" 'BEGIN {
    printf "%d files, %.1f MB, median of %d runs, warm cache\n", n, b / 1e6, r
    printf "cat (plain read)    %8.1f ms  %6.2f GB/s\n", c / 1000, b / c / 1000
    printf "grep -c triangles   %8.1f ms  %6.2f GB/s\n", g / 1000, b / g / 1000
    printf "quarle-qc scan      %8.1f ms  %6.2f GB/s\n", s / 1000, b / s / 1000
    if (a > 0) printf "baseline scan       %8.1f ms  %6.2f GB/s\n", a / 1000, b / a / 1000
    printf "ratio scan/grep     %8.2f\n", s / g
    printf "ratio scan/cat      %8.2f\n", s / c
    if (a > 0) printf "ratio scan/baseline %8.2f\n", s / a
}'

# One mesh with 100,000 distinct texture names.
names=$bench/names
if [ ! -f "$names/names.smd" ]; then
    mkdir -p "$names"
    awk 'BEGIN {
        print "version 1"; print "nodes"; print "0 \"root\" -1"; print "end"
        print "skeleton"; print "time 0"; print "0 0 0 0 0 0 0"; print "end"; print "triangles"
        for (i = 0; i < 100000; i++) {
            printf "tex%06d.bmp\n", i
            print "0 0 0 0 0 0 1 0 0"; print "0 1 0 0 0 0 1 1 0"; print "0 0 1 0 0 0 1 0 1"
        }
        print "end"
    }' >"$names/names.smd.part"
    mv "$names/names.smd.part" "$names/names.smd"
fi
"$tool" scan "$names" >/dev/null
ng_us=()
ns_us=()
for ((i = 0; i < runs; i++)); do
    ng_us+=("$(elapsed "$bench/out.txt" grep -c triangles "$names/names.smd" || true)")
    ns_us+=("$(elapsed "$bench/out.txt" "$tool" scan "$names")")
done
awk -v g="$(median "${ng_us[@]}")" -v s="$(median "${ns_us[@]}")" 'BEGIN {
    printf "100,000 distinct texture names in one file:\n"
    printf "grep -c triangles   %8.1f ms\n", g / 1000
    printf "quarle-qc scan      %8.1f ms\n", s / 1000
    printf "scan per 1,000 names %7.2f ms\n", s / 100000
}'
