#!/usr/bin/env bash
# Main job: set up, build the module and the host simulator, and run a scenario file (the
# built-in one unless --scenario FILE is given) headless.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/setup.sh
cmake --preset dev >/dev/null
cmake --build --preset dev --target hostsim PreviewStrip
out=./build/hostsim-out
./build/dev/apps/hostsim/hostsim --module ./build/dev/src/module/PreviewStrip.so --out "$out" "$@"
echo "pictures: $(cd "$out" && pwd) (one PNG per capture, contact-sheet.png, animation.png)"
