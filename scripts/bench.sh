#!/usr/bin/env bash
# Builds the benchmarks optimised and runs them all, printing one table per program.
# --smoke runs each benchmark once, briefly, so that one that no longer builds or
# crashes is caught; other arguments go to every benchmark program.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/setup.sh
args=()
for arg in "$@"; do
  if [ "$arg" = "--smoke" ]; then args+=(--benchmark_min_time=0.0001); else args+=("$arg"); fi
done
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)"
count=0
while IFS= read -r bench; do
  [ -n "$bench" ] || continue
  echo "== $(basename "$bench") =="
  "$bench" --benchmark_counters_tabular=true "${args[@]}"
  count=$((count + 1))
done < build/release/benchmarks.txt
echo "$count benchmark programs ran"
