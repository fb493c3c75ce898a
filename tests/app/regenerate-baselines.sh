#!/bin/sh
# Rewrites the reference frames of the viewer's screenshot test from the current build. Run it only on
# purpose, after a change meant to alter what the viewer draws, and look at tests/app/baselines/*.png
# before committing them.
set -e
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../../build}
cd "$build"
flock /tmp/zr-build.lock cmake --build . --target kestrix-viewer ViewerScreenshotTest -j2
ZR_REGENERATE_BASELINES=1 xvfb-run -a -s "-screen 0 1600x1200x24" ./tests/ViewerScreenshotTest
