#!/usr/bin/env bash
# Main job: set up, build the module and the host simulator, and run its built-in scenario.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/setup.sh
cmake --preset dev >/dev/null
cmake --build --preset dev --target hostsim PreviewStrip
./build/dev/apps/hostsim/hostsim --module ./build/dev/src/module/PreviewStrip.so --out ./build/hostsim-out "$@"
