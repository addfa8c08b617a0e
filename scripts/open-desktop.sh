#!/usr/bin/env bash
# Opens the desktop where there is a screen, and else says how it is opened.
#   scripts/open-desktop.sh PROGRAM [FILE]
set -euo pipefail

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$@"
fi
echo
echo "There is no screen here. On a desktop \"$1\" opens the window, and \"quillara open FILE\" a file in it."
