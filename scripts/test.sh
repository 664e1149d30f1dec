#!/usr/bin/env bash
# Every test: the suite optimised (GCC, -O3) with a short run of every benchmark, the
# suite under ASan/UBSan (clang), the threaded tests under ThreadSanitizer, the 32-bit
# Windows cross-build with its export check, the 64-bit Windows tests under Wine, and
# short fuzzer runs.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/setup.sh
jobs=$(nproc)
started=$SECONDS

step() { echo; echo "== $* ($((SECONDS - started)) s) =="; }

step "Suite and benchmarks, optimised (GCC)"
cmake --preset release -DQX_STRICT=ON >/dev/null
cmake --build --preset release -j "$jobs"
ctest --preset release -j "$jobs"
bash scripts/bench.sh --smoke

step "Suite under AddressSanitizer and UndefinedBehaviorSanitizer (clang)"
cmake --preset asan -DQX_STRICT=ON >/dev/null
cmake --build --preset asan -j "$jobs"
ASAN_OPTIONS=detect_leaks=1 LSAN_OPTIONS=suppressions=$PWD/scripts/lsan.supp UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --preset asan -j "$jobs"

step "Threaded tests under ThreadSanitizer"
cmake --preset tsan -DQX_STRICT=ON >/dev/null
cmake --build --preset tsan -j "$jobs"
TSAN_OPTIONS=halt_on_error=1 ctest --preset tsan -j "$jobs"

step "32-bit Windows module (mingw-w64) and its exports"
cmake --preset mingw >/dev/null
cmake --build --preset mingw -j "$jobs"
bash scripts/check-exports.sh build/mingw/src/module/PreviewStrip.dll
bash scripts/check-exports.sh build/release/src/module/PreviewStrip.so

step "64-bit Windows build, its tests under Wine"
bash scripts/wine-tests.sh "$jobs"

step "Fuzzers (short runs)"
bash scripts/fuzz.sh 15

step "All steps passed"
