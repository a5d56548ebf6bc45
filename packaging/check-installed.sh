#!/bin/sh
# Checks a Quarle installed into a scratch root ($ROOT, as unpacked from the
# .deb): quarle-qc round-trips a script, and quarle starts and reads the
# language file its settings name from the installed data folder.
set -eu
: "${ROOT:?}" "${BUILD:?}"
here=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$ROOT/usr/bin/quarle-qc" roundtrip "$here/tests/data/qc/wild/wild.qc" "$work/out.qc" --missing=keep \
    2>/dev/null || status=$?
[ "${status:-0}" -eq 0 ] || { echo "installed quarle-qc: roundtrip exit status $status"; exit 1; }
grep -q '^\$modelname' "$work/out.qc" || { echo "installed quarle-qc wrote no script"; exit 1; }

mkdir -p "$work/config/Quarle"
printf '[Settings]\nLanguage=english.lng\n' >"$work/config/Quarle/Quarle.conf"
( cd "$work" && HOME="$work" XDG_CONFIG_HOME="$work/config" timeout 5 \
      strace -f -qq -e trace=openat -o "$work/trace" "$ROOT/usr/bin/quarle" ) || true
if ! grep -E "openat\(.*\"$ROOT/usr/(bin/\.\./)?share/quarle/english\.lng\".*= [0-9]+" "$work/trace" >/dev/null; then
    echo "installed quarle did not read $ROOT/usr/share/quarle/english.lng:"
    grep '\.lng' "$work/trace" || true
    exit 1
fi
echo "installed package: quarle-qc round-trips, quarle reads its language file"
