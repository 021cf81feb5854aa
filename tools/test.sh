#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test headless
# through ctest. BUILD_DIR (default build) and JOBS (default: the number of
# cores) may be set in the environment.
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD_DIR=${BUILD_DIR:-build}
JOBS=${JOBS:-$(nproc)}

tools/install-deps.sh
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build "$BUILD_DIR" -j "$JOBS"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "$BUILD_DIR" --output-on-failure -j "$JOBS"
