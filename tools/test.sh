#!/usr/bin/env bash
# Builds the library twice (SSE4.2 and portable scalar) and runs every test on both.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc 2>/dev/null || echo 2)
for variant in sse:ON portable:OFF; do
  name=${variant%%:*}
  simd=${variant##*:}
  dir=build/test-$name
  cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLUMCC_SIMD="$simd" \
        -DLUMCC_BUILD_BENCH=OFF -DLUMCC_BUILD_TOOLS=ON >/dev/null
  cmake --build "$dir" -j "$jobs"
  echo "== tests: $name build =="
  ctest --test-dir "$dir" -j "$jobs" --output-on-failure
done
