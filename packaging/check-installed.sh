#!/bin/sh
# Checks a Quarle installed into a scratch root ($ROOT, as unpacked from the
# .deb): quarle-qc round-trips a script, quarle starts and reads the language
# file its settings name from the installed data folder, prints its help and
# version, and the desktop entry and the scripts' type are valid, with *.qc
# and *.qci given to the type and no type of the system's taken over.
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

"$ROOT/usr/bin/quarle" --version | grep -q '^Quarle [0-9]' || { echo "quarle --version printed no version"; exit 1; }
"$ROOT/usr/bin/quarle" --help | grep -q 'script' || { echo "quarle --help printed no usage"; exit 1; }

entry="$ROOT/usr/share/applications/quarle.desktop"
desktop-file-validate "$entry"
grep -qx 'Exec=quarle %f' "$entry" || { echo "the desktop entry passes no file"; exit 1; }
type=$(sed -n 's/^MimeType=\([^;]*\);.*/\1/p' "$entry")
package="$ROOT/usr/share/mime/packages/quarle.xml"
grep -q "<mime-type type=\"$type\">" "$package" || { echo "no type $type in $package"; exit 1; }

# The type database as a desktop builds it: the system's types and ours.
system=/usr/share/mime/packages/freedesktop.org.xml
if grep -q "type=\"$type\"" "$system"; then echo "shared-mime-info defines $type already"; exit 1; fi
mkdir -p "$work/mime/packages"
cp "$system" "$package" "$work/mime/packages/"
XDG_DATA_HOME="$work" update-mime-database "$work/mime"
for glob in '*.qc' '*.qci'; do
    owners=$(awk -F: -v g="$glob" '$3 == g { print $2 }' "$work/mime/globs2" | sort -u)
    [ "$owners" = "$type" ] || { echo "$glob belongs to: ${owners:-nothing}, not only $type"; exit 1; }
done
grep -q "^$type text/plain\$" "$work/mime/subclasses" || { echo "$type is no text/plain"; exit 1; }

echo "installed package: quarle-qc round-trips, quarle reads its language file," \
    "the desktop entry opens $type (*.qc, *.qci)"
