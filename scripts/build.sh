#!/usr/bin/env bash
# Configures (once) and builds the project in ./build with Ninja and ccache.
#   scripts/build.sh                 builds everything
#   scripts/build.sh TARGET...       builds only the named targets
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
BUILD_DIR=${ZR_BUILD_DIR:-build}
if [ ! -f "$BUILD_DIR/build.ninja" ]; then
  cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
targets=()
if [ $# -gt 0 ]; then
  targets=(--target "$@")
fi
cmake --build "$BUILD_DIR" -j"$(nproc)" "${targets[@]}"
