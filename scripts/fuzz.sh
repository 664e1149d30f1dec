#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for the given number of seconds.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-15}
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"
count=0
while IFS= read -r fuzzer; do
  [ -n "$fuzzer" ] || continue
  name=$(basename "$fuzzer")
  corpus="build/fuzz/corpus/$name"
  mkdir -p "$corpus"
  seeds="$(dirname "$(grep -l "$name" fuzz/*/CMakeLists.txt | head -1)")/seeds"
  args=("$corpus")
  [ -d "$seeds" ] && args+=("$seeds")
  echo "fuzzing $name for ${seconds}s"
  if ! "$fuzzer" -max_total_time="$seconds" "${args[@]}" >"build/fuzz/$name.log" 2>&1; then
    tail -50 "build/fuzz/$name.log"
    exit 1
  fi
  count=$((count + 1))
done < build/fuzz/fuzzers.txt
echo "$count fuzz targets ran clean"
