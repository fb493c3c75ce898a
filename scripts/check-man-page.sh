#!/usr/bin/env bash
# The manual page names exactly the options kestrix-viewer --help names.
#   scripts/check-man-page.sh VIEWER MANPAGE
set -euo pipefail
viewer=$1
page=$2
options() { grep -oE -- '(^|[^[:alnum:]-])--?[[:alpha:]][[:alnum:]-]*' | sed 's/^[^-]*//' | sort -u; }
from_help=$(QT_QPA_PLATFORM=offscreen "$viewer" --help | options)
# Rendered as a reader sees it when man is there, else with roff's escaped hyphens undone.
if command -v man >/dev/null; then
  from_page=$(MANWIDTH=200 man -l "$page" 2>/dev/null | col -b | options)
else
  from_page=$(sed 's/\\-/-/g' "$page" | options)
fi
[ -n "$from_help" ] || { echo "check-man-page: --help names no option" >&2; exit 1; }
if [ "$from_help" != "$from_page" ]; then
  echo "check-man-page: options differ (< --help, > manual page):" >&2
  diff <(echo "$from_help") <(echo "$from_page") >&2 || true
  exit 1
fi
echo "check-man-page: the manual page names the $(wc -l <<<"$from_help") options of --help"
