# Shared by the benchmark scripts: the core build and the generated model folder.
#   source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
# Sets root, build, runs, seed, bench and data (the model folder, generated
# once into $BUILD/bench/model and reused while the generator and seed stay).
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

bench=$build/bench
mkdir -p "$bench"
gen=$bench/gen-model
if [ ! -x "$gen" ] || [ "$root/bench/GenModel.cpp" -nt "$gen" ]; then
    "${CXX:-c++}" -std=c++20 -O2 -o "$gen" "$root/bench/GenModel.cpp"
fi
data=$bench/model
stamp="$(cksum <"$root/bench/GenModel.cpp") seed $seed"
if [ ! -f "$data/.stamp" ] || [ "$(cat "$data/.stamp")" != "$stamp" ]; then
    rm -rf "$data"
    "$gen" "$data" "$seed"
    echo "$stamp" >"$data/.stamp"
fi
