#!/usr/bin/env bash
# Sets up, builds and runs the whole test suite under a virtual X server (real OpenGL via Mesa).
set -euo pipefail
cd "$(dirname "$0")/.."
start=$(date +%s)
bash scripts/build.sh
BUILD_DIR=${ZR_BUILD_DIR:-build}
built=$(date +%s)
cd "$BUILD_DIR"
# -noreset: with no client left the X server would reset, and a test connecting just then fails.
xvfb-run -a -s "-screen 0 1600x1200x24 -noreset" ctest --output-on-failure -j"$(nproc)" "$@"
echo "build: $((built - start)) s, tests: $(($(date +%s) - built)) s"
