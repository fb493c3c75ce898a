#!/usr/bin/env bash
# Sets up, builds and starts the viewer; with no file it opens the bundled sample: its shipped state
# (the grain image by phase beside its grain boundaries) when nothing asks for another picture, the
# sample file itself otherwise.
#   scripts/run-viewer.sh [FILE...] [OPTION...]     any option of kestrix-viewer (see --help)
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh kestrix-viewer kestrix-sample-data >&2
BUILD_DIR=${ZR_BUILD_DIR:-build}
# Is any argument a file? Options that take a value consume the next argument.
has_file=0
skip_next=0
for arg in "$@"; do
  if [ $skip_next -eq 1 ]; then
    skip_next=0
    continue
  fi
  case "$arg" in
    --state) has_file=1 skip_next=1 ;; # a state brings its own files
    --screenshot | --size | --theme | --geometry | --view | --color-by | --preset | --save-state | \
      --clip-plane | --clip-box | --slice | --threshold | --resample | --decimate | --mask-out | \
      --slice-number | --slice-axis | --glyph | --glyph-orient | --glyph-scale | --opacity-curve | \
      --build-plate | --plate-spacing | --pick | --table | \
      --export-table | --delimiter | --notation | --precision | --chart | --series | --bins | \
      --export-chart | --convert | --spreadsheet) skip_next=1 ;;
    -*) ;;
    *) has_file=1 ;;
  esac
done
# Only options that do not choose the picture leave the shipped state as the first sight.
only_window_options=1
skip_next=0
for arg in "$@"; do
  if [ $skip_next -eq 1 ]; then
    skip_next=0
    continue
  fi
  case "$arg" in
    --screenshot | --size | --theme) skip_next=1 ;;
    --verbose) ;;
    *) only_window_options=0 ;;
  esac
done
sample_state="$BUILD_DIR/data/grains-and-boundaries.ksxstate"
if [ $has_file -eq 0 ] && [ $only_window_options -eq 1 ] && [ -f "$sample_state" ]; then
  set -- --state "$sample_state" "$@"
elif [ $has_file -eq 0 ]; then
  set -- "$BUILD_DIR/data/sample.kestrix" "$@"
fi
exec "$BUILD_DIR/bin/kestrix-viewer" "$@"
