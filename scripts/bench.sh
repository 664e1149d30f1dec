#!/usr/bin/env bash
# Builds the benchmarks optimised and runs them all, printing one table per program.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)"
while IFS= read -r bench; do
  [ -n "$bench" ] || continue
  echo "== $(basename "$bench") =="
  "$bench" --benchmark_counters_tabular=true "$@"
done < build/release/benchmarks.txt
