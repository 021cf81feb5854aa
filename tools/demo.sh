#!/usr/bin/env bash
# Installs what is missing, builds the demo application and runs it. Without
# a display it renders the demo window to build/demo.png instead. Arguments
# are passed on to the demo (--panel TITLE, --screenshot FILE, --list-panels).
# KELCORE_QT_MAJOR=6 builds it with Qt 6, in build-qt6.
set -euo pipefail
cd "$(dirname "$0")/.."
QT_MAJOR=${KELCORE_QT_MAJOR:-5}
if [ "$QT_MAJOR" = 6 ]; then
  BUILD_DIR=${BUILD_DIR:-build-qt6}
else
  BUILD_DIR=${BUILD_DIR:-build}
fi
JOBS=${JOBS:-$(nproc)}

tools/install-deps.sh --qt"$QT_MAJOR"
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKELCORE_QT_MAJOR="$QT_MAJOR"
cmake --build "$BUILD_DIR" -j "$JOBS" --target kelcore_demo
if [ $# -eq 0 ] && [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "demo: no display; writing the demo window to $BUILD_DIR/demo.png"
  exec "$BUILD_DIR/bin/kelcore_demo" --screenshot "$BUILD_DIR/demo.png"
fi
exec "$BUILD_DIR/bin/kelcore_demo" "$@"
