#!/bin/sh
# Rewrites the reference images of the render window tests from the current build. Run it only on
# purpose, after a change that is meant to alter what a render window draws, and look at the new
# images (tests/views/baselines/*.png) before committing them.
set -e
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../../build}
cd "$build"
flock /tmp/zr-build.lock cmake --build . --target VXRenderWindowImageTest -j2
ZR_REGENERATE_BASELINES=1 xvfb-run -a -s "-screen 0 1600x1200x24" ./tests/VXRenderWindowImageTest
