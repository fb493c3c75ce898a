#!/usr/bin/env bash
# The viewer's MIME types (packaging/kestrix-zr.xml) are valid and tell its files apart: compiled with
# update-mime-database into a scratch database beside the system's types, a .kestrix file is known by
# its name and, renamed, by its content, while another HDF5 file is not taken for one.
#   scripts/check-mime-types.sh SAMPLE.kestrix
set -euo pipefail
cd "$(dirname "$0")/.."
sample=$(realpath "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0
fail() {
  echo "check-mime-types: FAIL: $*" >&2
  failures=$((failures + 1))
}

xmllint --noout packaging/kestrix-zr.xml
desktop-file-validate packaging/kestrix-viewer.desktop
mkdir -p "$scratch/mime/packages"
cp /usr/share/mime/packages/freedesktop.org.xml packaging/kestrix-zr.xml "$scratch/mime/packages/"
update-mime-database "$scratch/mime" >/dev/null 2>&1
for t in x-kestrix x-kestrix-state; do
  [ -s "$scratch/mime/application/$t.xml" ] || fail "update-mime-database made no application/$t"
done

# The files to tell apart.
cp "$sample" "$scratch/grains.kestrix"
cp "$sample" "$scratch/renamed.bin"
echo '{"views": []}' >"$scratch/layout.ksxstate"
# Another program's HDF5 file: the format's signature, then a superblock that names no FileVersion.
{
  printf '\211HDF\r\n\032\n'
  head -c 2040 /dev/zero
} >"$scratch/other.bin"

type_of() {
  XDG_DATA_HOME="$scratch/none" XDG_DATA_DIRS="$scratch" gio info -a standard::content-type "$1" |
    sed -n 's/^ *standard::content-type: //p'
}
expect() {
  local got
  got=$(type_of "$scratch/$1")
  [ "$got" = "$2" ] || fail "$1 is '$got', not '$2'"
}
expect grains.kestrix application/x-kestrix
expect renamed.bin application/x-kestrix
expect layout.ksxstate application/x-kestrix-state
got=$(type_of "$scratch/other.bin")
[ "$got" != application/x-kestrix ] || fail "another HDF5 file is taken for a .kestrix file"
[ $failures -eq 0 ] || exit 1
echo "check-mime-types: the types validate and tell .kestrix, .ksxstate and other HDF5 files apart"
