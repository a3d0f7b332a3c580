#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test: a plain build,
# the same tests under AddressSanitizer + UndefinedBehaviorSanitizer, and the
# threading tests under ThreadSanitizer, then a short run of every fuzz
# target, then the Windows cross build's tests under Wine. Fails when any
# test fails.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
jobs=$(nproc 2>/dev/null || echo 2)

run_suite() {  # run_suite DIR [cmake options...]
  local dir=$1
  shift
  cmake -S . -B "$dir" -G Ninja "$@"
  cmake --build "$dir" -j "$jobs"
}

echo "== plain build =="
run_suite build -DCMAKE_BUILD_TYPE=RelWithDebInfo
ctest --test-dir build --output-on-failure -j "$jobs" -LE slow

echo "== AddressSanitizer + UndefinedBehaviorSanitizer =="
run_suite build-asan -DCMAKE_BUILD_TYPE=Debug -DVXUTILITY_SANITIZE=address,undefined \
  -DVXUTILITY_BENCH=OFF -DVXUTILITY_TOOLS=ON
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir build-asan --output-on-failure -j "$jobs" -LE slow

if [ "$(ctest --test-dir build -N -L threading | sed -n 's/^Total Tests: //p')" != "0" ]; then
  echo "== ThreadSanitizer (threading tests) =="
  run_suite build-tsan -DCMAKE_BUILD_TYPE=Debug -DVXUTILITY_SANITIZE=thread \
    -DVXUTILITY_BENCH=OFF -DVXUTILITY_TOOLS=OFF
  TSAN_OPTIONS=halt_on_error=1 ctest --test-dir build-tsan -L threading --output-on-failure -j "$jobs"
fi

if command -v clang++ >/dev/null 2>&1; then
  echo "== fuzz targets (short smoke run each) =="
  CC=clang CXX=clang++ run_suite build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVXUTILITY_FUZZ=ON \
    -DVXUTILITY_TESTS=OFF -DVXUTILITY_BENCH=OFF -DVXUTILITY_TOOLS=OFF
  bash scripts/fuzz-smoke.sh build-fuzz 10
fi

bash scripts/test-windows.sh

echo "all test suites passed"
