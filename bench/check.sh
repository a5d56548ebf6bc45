#!/usr/bin/env bash
# Times `quarle-qc check` of the largest model here (the generated folder of
# bench/scan.sh: 40 reference meshes as parts, 160 animations as sequences,
# bitmaps for every texture) against `quarle-qc scan` of the same folder in
# the same run: warm cache, median of RUNS runs each, and their ratio.
#
#   bench/check.sh            (BUILD=build RUNS=5 SEED=1 to change)
set -euo pipefail

source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cmake --build "$build" --target quarle-qc >/dev/null
tool=$build/bin/quarle-qc

# The script: parts in body groups of up to 16, animations as sequences of
# up to 101 a group; the bitmaps (64 x 64, 8 bits) in the model folder.
mapfile -t refs < <(find "$data" -maxdepth 1 -type f -iname 'ref*.smd' -printf '%f\n' | sort)
mapfile -t anims < <(find "$data" -maxdepth 1 -type f -iname 'anim*.smd' -printf '%f\n' | sort)
qc=$bench/check-model.qc
{
    echo "\$modelname \"$bench/check-model.mdl\""
    echo "\$cd \"$data\""
    echo "\$cdtexture \"$data\""
    for ((i = 0; i < ${#refs[@]}; i += 16)); do
        echo "\$bodygroup group$i"
        echo "{"
        for r in "${refs[@]:i:16}"; do echo "studio \"${r%.*}\""; done
        echo "}"
    done
    for ((i = 0; i < ${#anims[@]}; ++i)); do
        if ((i > 0 && i % 101 == 0)); then echo "\$sequencegroup seqgroup$((i / 101))"; fi
        echo "\$sequence \"${anims[i]%.*}\" \"${anims[i]%.*}\" fps 30 loop"
    done
} >"$qc"
python3 - "$data" <<'PY'
import os, re, struct, sys
folder = sys.argv[1]
names = set()
for f in os.listdir(folder):
    if f.lower().startswith('ref'):
        with open(os.path.join(folder, f), 'rb') as smd:
            names.update(l.strip().decode() for l in smd if l.strip().lower().endswith(b'.bmp'))
for n in names:
    path = os.path.join(folder, n)
    if not os.path.exists(path):
        head = struct.pack('<2sIHHI', b'BM', 54 + 1024 + 4096, 0, 0, 54 + 1024)
        info = struct.pack('<IiiHHIIiiII', 40, 64, 64, 1, 8, 0, 4096, 0, 0, 0, 0)
        with open(path, 'wb') as bmp:
            bmp.write(head + info + bytes(1024 + 4096))
PY

elapsed() {
    local start end
    start=$(date +%s%N)
    "$@" >"$bench/out.txt" || true
    end=$(date +%s%N)
    echo $(((end - start) / 1000))
}
median() { printf '%s\n' "$@" | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

lng=$root/data/english.lng
"$tool" check "$qc" --language "$lng" >"$bench/check.txt" || true
echo "check: $(grep -c '^error: ' "$bench/check.txt" || true) errors, $(grep -c '^warning: ' "$bench/check.txt" || true) warnings"
scan_us=()
check_us=()
for ((i = 0; i < runs; i++)); do
    scan_us+=("$(elapsed "$tool" scan "$data")")
    check_us+=("$(elapsed "$tool" check "$qc" --language "$lng")")
done
s=$(median "${scan_us[@]}")
c=$(median "${check_us[@]}")
bytes=$(cat "$data"/*.smd "$data"/*.SMD 2>/dev/null | wc -c)
awk -v b="$bytes" -v s="$s" -v c="$c" -v r="$runs" -v p="${#refs[@]}" -v a="${#anims[@]}" 'BEGIN {
    printf "%d parts, %d sequences, %.1f MB of .smd, median of %d runs, warm cache\n", p, a, b / 1e6, r
    printf "quarle-qc scan      %8.1f ms\n", s / 1000
    printf "quarle-qc check     %8.1f ms\n", c / 1000
    printf "ratio check/scan    %8.2f\n", c / s
}'
