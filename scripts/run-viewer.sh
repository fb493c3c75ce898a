#!/usr/bin/env bash
# Sets up, builds and starts the viewer; with no file it opens the bundled sample.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh kestrix-viewer kestrix-sample-data >&2
BUILD_DIR=${ZR_BUILD_DIR:-build}
if [ $# -eq 0 ]; then
  set -- "$BUILD_DIR/data/sample.kestrix"
fi
exec "$BUILD_DIR/bin/kestrix-viewer" "$@"
