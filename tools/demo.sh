#!/usr/bin/env bash
# Installs what is missing, builds the demo application and runs it. Without
# a display it renders the demo window to build/demo.png instead. Arguments
# are passed on to the demo (--panel TITLE, --screenshot FILE, --list-panels).
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD_DIR=${BUILD_DIR:-build}
JOBS=${JOBS:-$(nproc)}

tools/install-deps.sh
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build "$BUILD_DIR" -j "$JOBS" --target kelcore_demo
if [ $# -eq 0 ] && [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "demo: no display; writing the demo window to $BUILD_DIR/demo.png"
  exec "$BUILD_DIR/bin/kelcore_demo" --screenshot "$BUILD_DIR/demo.png"
fi
exec "$BUILD_DIR/bin/kelcore_demo" "$@"
