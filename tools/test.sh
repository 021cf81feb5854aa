#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test through
# ctest: with Qt 5.15 on Qt's offscreen platform unless told otherwise.
#
#   tools/test.sh [--qt6] [--xvfb]
#
# --qt6   builds with Qt 6 instead, in build-qt6 (KELCORE_QT_MAJOR=6)
# --xvfb  runs the tests on the xcb platform under a virtual X server
#         (xvfb-run), where windows get real focus, activation and input
#
# BUILD_DIR (default build, or build-qt6 with --qt6) and JOBS (default: the
# number of cores) may be set in the environment.
set -euo pipefail
cd "$(dirname "$0")/.."
qt_major=5
xvfb=0
for arg in "$@"; do
  case "$arg" in
    --qt6) qt_major=6 ;;
    --qt5) qt_major=5 ;;
    --xvfb) xvfb=1 ;;
    *) echo "usage: tools/test.sh [--qt6] [--xvfb]" >&2; exit 2 ;;
  esac
done
default_dir=build
if [ "$qt_major" -eq 6 ]; then
  default_dir=build-qt6
fi
BUILD_DIR=${BUILD_DIR:-$default_dir}
JOBS=${JOBS:-$(nproc)}

deps=(--qt"$qt_major")
if [ "$xvfb" -eq 1 ]; then
  deps+=(--xvfb)
fi
tools/install-deps.sh "${deps[@]}"
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKELCORE_QT_MAJOR="$qt_major"
cmake --build "$BUILD_DIR" -j "$JOBS"
if [ "$xvfb" -eq 1 ]; then
  # ctest gives every test the offscreen platform; the test programs let
  # KELCORE_TEST_QPA_PLATFORM override it.
  # -noreset: by default the server resets when its last client leaves,
  # and a test program that connects during the reset fails to start.
  # One test at a time: the tests share the one server and its pointer,
  # and without a window manager two test windows take the activation and
  # the keyboard focus from each other.
  export QT_QPA_PLATFORM=xcb KELCORE_TEST_QPA_PLATFORM=xcb
  xvfb-run -a -s "-screen 0 1280x1024x24 -noreset" \
    ctest --test-dir "$BUILD_DIR" --output-on-failure -j 1
else
  export QT_QPA_PLATFORM=offscreen
  ctest --test-dir "$BUILD_DIR" --output-on-failure -j "$JOBS"
fi
