#!/usr/bin/env bash
# Checks what a host developer and a user get from the existing build (./build, nothing rebuilt):
#  1. `cmake --install` into a scratch prefix; the installed package points nowhere into this tree;
#  2. the example host in examples/embed-host is built against that prefix alone and renders the
#     sample off screen;
#  3. `cpack -G DEB` writes the Debian package; its file list and computed dependencies are checked,
#     it is unpacked into a scratch root (dpkg -x) and the viewer runs from there;
#  4. the desktop entry and the MIME types validate, and the manual page names the options --help does.
set -euo pipefail
cd "$(dirname "$0")/.."
ROOT=$(pwd)
BUILD_DIR=$(cd "${ZR_BUILD_DIR:-build}" 2>/dev/null && pwd || true)
[ -n "$BUILD_DIR" ] && [ -f "$BUILD_DIR/build.ninja" ] || { echo "check-install: no build; run scripts/build.sh first" >&2; exit 1; }
bash scripts/setup.sh
bash scripts/build.sh ZRVtkLib zorelib zorekestrix ZRComponents kestrix-viewer kestrix-sample kestrix-viewer-man >/dev/null

# A fixed scratch folder keeps the example's compile lines alike from run to run, for ccache.
SCRATCH="$BUILD_DIR/check-install"
rm -rf "$SCRATCH"
mkdir -p "$SCRATCH"
failures=0
fail() {
  echo "check-install: FAIL: $*" >&2
  failures=$((failures + 1))
}
step() { echo "check-install: $*"; }
start=$(date +%s)

# 1. Install.
PREFIX="$SCRATCH/prefix"
cmake --install "$BUILD_DIR" --prefix "$PREFIX" >"$SCRATCH/install.log"
LIBDIR="$PREFIX/$(sed -n 's/^CMAKE_INSTALL_LIBDIR:PATH=//p' "$BUILD_DIR/CMakeCache.txt")"
for f in bin/kestrix-viewer bin/kestrix-sample include/kestrix-zr/main/VXMainWidget.h \
  include/kestrix-zr/data_bridge/zr_contract/DataStructure.h include/kestrix-zr/platform/ZRPlatformExport.h; do
  [ -e "$PREFIX/$f" ] || fail "cmake --install did not install $f"
done
for lib in ZRVtkLib zorelib zorekestrix ZRComponents; do
  real=$(ls "$LIBDIR/lib$lib.so."*.*.* 2>/dev/null | head -1)
  [ -n "$real" ] || { fail "lib$lib.so has no versioned file"; continue; }
  soname=$(readelf -d "$real" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
  [ -n "$soname" ] && [ -e "$LIBDIR/$soname" ] || fail "lib$lib.so: SONAME '$soname' is not installed beside it"
done
# libzorekestrix.so is opened by that name at run time.
[ -e "$LIBDIR/libzorekestrix.so" ] || fail "libzorekestrix.so (opened at run time) is not installed"
# Text files (CMake package, headers) and the run-time search paths of the binaries.
for f in "$PREFIX"/bin/* "$LIBDIR"/*.so.*.*.*; do
  if readelf -d "$f" | grep -E 'RPATH|RUNPATH' | grep -qF "$ROOT"; then
    fail "$f searches the source or build tree for libraries"
  fi
done
if grep -rlIF -e "$ROOT" -e "$BUILD_DIR" "$PREFIX" >"$SCRATCH/leaks.txt"; then
  fail "installed files point back into the source or build tree: $(tr '\n' ' ' <"$SCRATCH/leaks.txt")"
fi
step "installed into a scratch prefix"

# 2. The example host, against the installed package only.
HOST_BUILD="$SCRATCH/host-build"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
export CCACHE_BASEDIR="$ROOT" CCACHE_NOHASHDIR=true
if cmake -S examples/embed-host -B "$HOST_BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_PREFIX_PATH="$PREFIX" "${launcher[@]}" >"$SCRATCH/host-configure.log" 2>&1 &&
  cmake --build "$HOST_BUILD" >"$SCRATCH/host-build.log" 2>&1; then
  "$PREFIX/bin/kestrix-sample" "$SCRATCH/sample.kestrix" >/dev/null
  host="$HOST_BUILD/kestrix-embed-host"
  if ! ldd "$host" | grep -F "libZRVtkLib.so" | grep -qF "$LIBDIR/"; then
    fail "the example host does not load the installed libZRVtkLib: $(ldd "$host" | grep ZRVtkLib)"
  fi
  rm -f "$SCRATCH/host.png"
  QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1600x1200x24" "$host" "$SCRATCH/sample.kestrix" \
    --screenshot "$SCRATCH/host.png" >"$SCRATCH/host-run.log" 2>&1 || fail "the example host failed: $(tail -5 "$SCRATCH/host-run.log")"
  [ -s "$SCRATCH/host.png" ] || fail "the example host saved no frame"
  step "example host built against the installed package and rendered the sample ($SCRATCH/host.png)"
else
  fail "the example host does not build against the installed package: $(tail -20 "$SCRATCH"/host-*.log)"
fi

# 3. The Debian package.
(cd "$BUILD_DIR" && cpack -G DEB -B "$SCRATCH/deb" >"$SCRATCH/cpack.log" 2>&1) || fail "cpack failed: $(tail -20 "$SCRATCH/cpack.log")"
deb=$(ls "$SCRATCH"/deb/*.deb 2>/dev/null | head -1)
if [ -n "$deb" ]; then
  dpkg-deb -c "$deb" | awk '{print $6}' | sed 's|^\./|/|' >"$SCRATCH/deb-files.txt"
  for f in /usr/bin/kestrix-viewer /usr/bin/kestrix-sample /usr/lib/libZRVtkLib.so /usr/lib/libzorelib.so \
    /usr/lib/libzorekestrix.so /usr/lib/libZRComponents.so /usr/include/kestrix-zr/main/VXMainWidget.h \
    /usr/include/kestrix-zr/pipeline/VXPipeline.h /usr/lib/cmake/ZRVtkLib/ZRVtkLibConfig.cmake \
    /usr/lib/cmake/ZRVtkLib/ZRVtkLibConfigVersion.cmake /usr/lib/cmake/ZRVtkLib/ZRVtkLibTargets.cmake \
    /usr/share/applications/kestrix-viewer.desktop /usr/share/mime/packages/kestrix-zr.xml \
    /usr/share/icons/hicolor/scalable/apps/kestrix-viewer.svg \
    /usr/share/icons/hicolor/scalable/mimetypes/application-x-kestrix.svg \
    /usr/share/icons/hicolor/scalable/mimetypes/application-x-kestrix-state.svg \
    /usr/share/man/man1/kestrix-viewer.1; do
    grep -qxF "$f" "$SCRATCH/deb-files.txt" || fail "the package lacks $f"
  done
  grep -q '^/usr/lib/libZRVtkLib\.so\.[0-9]' "$SCRATCH/deb-files.txt" || fail "the package lacks the versioned libZRVtkLib"
  depends=$(dpkg-deb -f "$deb" Depends)
  for d in libvtk9 libqt5widgets5 libtbb libfmt libhdf5 libc6 libstdc++6; do
    grep -q "$d" <<<"$depends" || fail "the package's computed dependencies name no $d: $depends"
  done
  step "package $(basename "$deb"): $(wc -l <"$SCRATCH/deb-files.txt") entries; Depends: $depends"

  # A user's install, in a scratch root: the viewer runs from there without the build tree.
  dpkg -x "$deb" "$SCRATCH/root"
  viewer="$SCRATCH/root/usr/bin/kestrix-viewer"
  if ! "$viewer" --help >"$SCRATCH/help.txt" 2>&1; then
    fail "the packaged viewer's --help failed: $(tail -5 "$SCRATCH/help.txt")"
  fi
  grep -q -- '--list' "$SCRATCH/help.txt" || fail "the packaged viewer's --help names no --list"
  "$SCRATCH/root/usr/bin/kestrix-sample" "$SCRATCH/packaged-sample.kestrix" >/dev/null || fail "the packaged sample writer failed"
  if ! "$viewer" --list "$SCRATCH/packaged-sample.kestrix" >"$SCRATCH/list.txt" 2>&1; then
    fail "the packaged viewer's --list failed: $(tail -5 "$SCRATCH/list.txt")"
  fi
  grep -q "Sample/Grains" "$SCRATCH/list.txt" || fail "the packaged viewer's --list shows no Sample/Grains: $(head -5 "$SCRATCH/list.txt")"
  step "the packaged viewer ran from a scratch root with --help and --list"
fi

# 4. Desktop entry, MIME types and manual page.
sample="$SCRATCH/sample.kestrix"
[ -f "$sample" ] || "$PREFIX/bin/kestrix-sample" "$sample" >/dev/null
bash scripts/check-mime-types.sh "$sample" >"$SCRATCH/mime.log" 2>&1 || fail "MIME types or desktop entry: $(cat "$SCRATCH/mime.log")"
bash scripts/check-man-page.sh "$BUILD_DIR/bin/kestrix-viewer" "$BUILD_DIR/man/kestrix-viewer.1" || fail "manual page and --help differ"
step "desktop entry, MIME types and manual page checked"

echo "check-install: $(($(date +%s) - start)) s"
if [ $failures -ne 0 ]; then
  echo "check-install: $failures check(s) failed" >&2
  exit 1
fi
echo "check-install: all checks passed"
