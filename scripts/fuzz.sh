#!/usr/bin/env bash
# Builds the fuzz targets with clang (sanitizers on, library instrumented for coverage)
# and runs each for a bounded time, seeded with the sample files and the tests' own
# files. Fails on any crash, sanitizer report or leak.
# Usage: scripts/fuzz.sh [build-dir] [seconds per target, default 60]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$root/build-fuzz"}
seconds=${2:-${FUZZ_SECONDS:-60}}

"$root/scripts/deps.sh"

CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVELUN_BUILD_FUZZ=ON -DVELUN_SANITIZE=ON -DVELUN_BUILD_TESTS=OFF -DVELUN_BUILD_EXAMPLES=OFF \
  -DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link -DCMAKE_C_FLAGS=-fsanitize=fuzzer-no-link >/dev/null
cmake --build "$build" -j "$(nproc)" --target fuzz_ms3d fuzz_image fuzz_dds

corpus="$build/fuzz-corpus"
rm -rf "$corpus"
mkdir -p "$corpus/ms3d" "$corpus/image" "$corpus/dds"
cp "$root"/fuzz/seeds/ms3d/*.ms3d "$root"/tests/data/models/*.ms3d "$corpus/ms3d/"
cp "$root"/fuzz/seeds/image/*.dds "$root"/tests/data/images/*.dds "$corpus/dds/"
# The image target reads a type byte first: 0 png, 1 jpg, 2 tga, 3 bmp, 4 dds.
types=(png jpg tga bmp dds)
for i in "${!types[@]}"; do
  for file in "$root"/tests/data/images/*."${types[$i]}" "$root"/tests/data/textures/*."${types[$i]}" \
      "$root"/fuzz/seeds/image/*."${types[$i]}"; do
    [ -e "$file" ] || continue
    { printf "\\x0$i"; cat "$file"; } > "$corpus/image/$(basename "$file")"
  done
done

export LSAN_OPTIONS="suppressions=$root/fuzz/lsan.supp:print_suppressions=0"
status=0
for target in ms3d image dds; do
  log="$build/fuzz-$target.log"
  echo "== fuzz_$target for ${seconds}s"
  if "$build/fuzz/fuzz_$target" "$corpus/$target" -max_total_time="$seconds" -print_final_stats=1 \
       -max_len=262144 -rss_limit_mb=2048 -timeout=20 -artifact_prefix="$build/fuzz-$target-" >"$log" 2>&1; then
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo "?")
    echo "fuzz_$target: $runs executions, no finding"
  else
    echo "fuzz_$target: FAILED, see $log"
    tail -n 40 "$log"
    status=1
  fi
done
exit $status
