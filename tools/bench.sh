#!/usr/bin/env bash
# Builds the benchmarks when needed (Release build in build-bench, no tests,
# no demo) and runs them headless. Prints one line per case: KelCore's time,
# plain Qt's time for the same work, their ratio and the target. Arguments
# go to the benchmark (--quick: fewer repetitions; --case N: one case).
# BUILD_DIR (default build-bench) and JOBS (default: the number of cores)
# may be set in the environment.
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD_DIR=${BUILD_DIR:-build-bench}
JOBS=${JOBS:-$(nproc)}

if [ ! -f "$BUILD_DIR/CMakeCache.txt" ]; then
  cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKELCORE_BUILD_BENCH=ON \
    -DKELCORE_BUILD_TESTS=OFF -DKELCORE_BUILD_DEMO=OFF -DKELCORE_BUILD_TOOLS=OFF >/dev/null
fi
cmake --build "$BUILD_DIR" -j "$JOBS" --target kelcore_bench >/dev/null

export QT_QPA_PLATFORM=offscreen
exec "$BUILD_DIR/bin/kelcore_bench" "$@"
