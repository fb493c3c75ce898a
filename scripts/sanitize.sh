#!/usr/bin/env bash
# Builds the project with AddressSanitizer and UndefinedBehaviorSanitizer in build-asan/ and runs the
# whole test suite there. Slower than scripts/test.sh (about 10 minutes on 2 cores); not part of CI.
set -euo pipefail
cd "$(dirname "$0")/.."
ROOT=$(pwd)
bash scripts/setup.sh
BUILD_DIR=${ZR_ASAN_BUILD_DIR:-build-asan}
FLAGS="-fsanitize=address,undefined -fno-omit-frame-pointer"
if [ ! -f "$BUILD_DIR/build.ninja" ]; then
  cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZR_BUILD_BENCHMARKS=OFF \
    -DCMAKE_CXX_FLAGS="$FLAGS" -DCMAKE_EXE_LINKER_FLAGS="$FLAGS" -DCMAKE_SHARED_LINKER_FLAGS="$FLAGS" >/dev/null
fi
cmake --build "$BUILD_DIR" -j"$(nproc)"
cd "$BUILD_DIR"
# Mesa and the X libraries keep allocations to process end: leaks are not what this run looks for.
export ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
xvfb-run -a -s "-screen 0 1600x1200x24 -noreset" ctest --output-on-failure -j"$(nproc)" "$@"
# The tests that draw nothing (label "unit") load no GL driver, so whatever they leak is ours (less the
# listed library faults): a second pass over them with leak detection on.
ASAN_OPTIONS=detect_leaks=1 LSAN_OPTIONS=suppressions="$ROOT/scripts/lsan-suppressions.txt" \
  ctest --output-on-failure -j"$(nproc)" -L unit "$@"
