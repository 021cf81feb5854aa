#!/usr/bin/env bash
# run-sanitizer-tests.sh - build KelCore with clang, AddressSanitizer,
# UndefinedBehaviorSanitizer and libFuzzer, run the whole test suite, then
# fuzz every fuzz target for a while.
#
# Usage:   tools/run-sanitizer-tests.sh [BUILD_DIR]
#
#   BUILD_DIR      build folder, relative to the source tree unless absolute
#                  (default: build-sanitize). Configured on first use with
#                  -DKELCORE_FUZZ=ON, which implies the sanitizers. A folder
#                  configured earlier with another compiler is refused:
#                  delete it or pick another one.
#
# Environment:
#   FUZZ_SECONDS   how long each fuzz target runs (default 60; 0 skips fuzzing)
#   STRESS_OPS     steps per seed of the model library's lifecycle stress test
#                  (default 1000000; 0 skips it)
#   STRESS_SEEDS   its seeds (default 1,2,3)
#   JOBS           parallel build and test jobs (default 2)
#   CXX_COMPILER   the clang++ to use (default: clang++, else clang++-14)
#   CMAKE_ARGS     extra arguments for the first configuration
#
# Steps, each of which must succeed for the script to succeed (a failing
# step is reported and the later steps still run, so one run shows
# everything):
#   1. configure and build everything;
#   2. ctest, headless (QT_QPA_PLATFORM=offscreen), with the LeakSanitizer
#      suppressions of tools/lsan.supp;
#   3. the model library's randomized lifecycle test, STRESS_OPS steps for
#      each of STRESS_SEEDS;
#   4. for every fuzz/fuzz_<name>.cpp, run the built target on a copy of
#      its seed corpus fuzz/corpus/fuzz_<name>/ (with fuzz/fuzz_<name>.dict
#      when present) for FUZZ_SECONDS, with -timeout=10 -rss_limit_mb=2048.
#      Crashes, leaks, timeouts and out-of-memory runs fail the step; the
#      reproducer and the log are kept under BUILD_DIR/fuzz-runs/<target>/.
#
# Exit status: 0 when everything passed, 1 when a step failed, 2 on bad
# usage or a missing tool.
set -uo pipefail

die() { echo "run-sanitizer-tests: $*" >&2; exit 2; }

[[ $# -le 1 ]] || die "usage: $0 [BUILD_DIR]"
case "${1:-}" in -h|--help) sed -n '2,/^$/s/^# \{0,1\}//p' "$0"; exit 0 ;; esac

SOURCE_DIR=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd) || die "cannot find the source tree"
BUILD_DIR=${1:-build-sanitize}
[[ $BUILD_DIR = /* ]] || BUILD_DIR=$SOURCE_DIR/$BUILD_DIR
FUZZ_SECONDS=${FUZZ_SECONDS:-60}
STRESS_OPS=${STRESS_OPS:-1000000}
STRESS_SEEDS=${STRESS_SEEDS:-1,2,3}
JOBS=${JOBS:-2}
[[ $FUZZ_SECONDS =~ ^[0-9]+$ ]] || die "FUZZ_SECONDS must be a whole number of seconds"
[[ $STRESS_OPS =~ ^[0-9]+$ ]] || die "STRESS_OPS must be a whole number"
[[ $STRESS_SEEDS =~ ^[0-9]+(,[0-9]+)*$ ]] || die "STRESS_SEEDS must be numbers separated by commas"
[[ $JOBS =~ ^[1-9][0-9]*$ ]] || die "JOBS must be a positive number"

if [[ -z ${CXX_COMPILER:-} ]]; then
    for candidate in clang++ clang++-14; do
        if command -v "$candidate" >/dev/null; then CXX_COMPILER=$candidate; break; fi
    done
fi
[[ -n ${CXX_COMPILER:-} ]] || die "clang++ not found (set CXX_COMPILER)"
command -v "$CXX_COMPILER" >/dev/null || die "$CXX_COMPILER not found"
command -v cmake >/dev/null || die "cmake not found"
command -v ctest >/dev/null || die "ctest not found"

export QT_QPA_PLATFORM=offscreen
export LSAN_OPTIONS="suppressions=$SOURCE_DIR/tools/lsan.supp${LSAN_OPTIONS:+:$LSAN_OPTIONS}"
export ASAN_OPTIONS="detect_leaks=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"

failures=()
step() { echo; echo "=== $*"; }

# 1. Configure (only the first time: the compiler of a build folder cannot
# change) and build.
step "configure and build in $BUILD_DIR"
if [[ -f $BUILD_DIR/CMakeCache.txt ]]; then
    grep -q '^KELCORE_FUZZ:BOOL=ON' "$BUILD_DIR/CMakeCache.txt" \
        || die "$BUILD_DIR was configured without KELCORE_FUZZ; use another folder"
    cmake "$BUILD_DIR" >/dev/null || failures+=("configure")
else
    # shellcheck disable=SC2086 # CMAKE_ARGS is a list of arguments
    cmake -S "$SOURCE_DIR" -B "$BUILD_DIR" -DCMAKE_CXX_COMPILER="$CXX_COMPILER" -DKELCORE_FUZZ=ON \
        ${CMAKE_ARGS:-} || failures+=("configure")
fi
if [[ ${#failures[@]} -eq 0 ]]; then
    cmake --build "$BUILD_DIR" -j "$JOBS" || failures+=("build")
fi

if [[ ${#failures[@]} -ne 0 ]]; then
    echo "run-sanitizer-tests: FAILED: ${failures[*]}" >&2
    exit 1
fi

# 2. The test suite.
step "ctest"
(cd "$BUILD_DIR" && ctest --output-on-failure -j "$JOBS") || failures+=("ctest")

# 3. The lifecycle stress test at full length.
if [[ $STRESS_OPS -gt 0 ]]; then
    step "lifecycle stress test: $STRESS_OPS steps for seeds $STRESS_SEEDS"
    KEL_STRESS_OPS=$STRESS_OPS KEL_STRESS_SEEDS=$STRESS_SEEDS \
        "$BUILD_DIR/bin/test_platform" --gtest_filter='LifecycleStress.*' \
        || failures+=("lifecycle stress")
fi

# 4. Fuzzing.
if [[ $FUZZ_SECONDS -gt 0 ]]; then
    shopt -s nullglob
    for source in "$SOURCE_DIR"/fuzz/fuzz_*.cpp; do
        target=$(basename "$source" .cpp)
        binary=$BUILD_DIR/bin/$target
        work=$BUILD_DIR/fuzz-runs/$target
        step "fuzz $target for ${FUZZ_SECONDS}s"
        if [[ ! -x $binary ]]; then
            echo "missing $binary" >&2
            failures+=("$target: not built")
            continue
        fi
        rm -rf "$work"
        mkdir -p "$work/corpus" "$work/artifacts" || die "cannot create $work"
        seeds=$SOURCE_DIR/fuzz/corpus/$target
        [[ -d $seeds ]] && cp -R "$seeds/." "$work/corpus/"
        options=(-max_total_time="$FUZZ_SECONDS" -timeout=10 -rss_limit_mb=2048
                 -artifact_prefix="$work/artifacts/" -print_final_stats=1)
        [[ -f $SOURCE_DIR/fuzz/$target.dict ]] && options+=(-dict="$SOURCE_DIR/fuzz/$target.dict")
        if "$binary" "${options[@]}" "$work/corpus" >"$work/log" 2>&1; then
            grep -E '^(Done|stat::number_of_executed_units)' "$work/log" || true
        else
            tail -n 40 "$work/log" >&2
            echo "log: $work/log; reproducers: $(ls "$work/artifacts")" >&2
            failures+=("$target")
        fi
    done
fi

echo
if [[ ${#failures[@]} -ne 0 ]]; then
    echo "run-sanitizer-tests: FAILED: ${failures[*]}" >&2
    exit 1
fi
echo "run-sanitizer-tests: all passed"
