#!/usr/bin/env bash
# The Windows leg: the 64-bit cross-build's tests run under Wine on a virtual display.
# Wine keeps its own prefix inside the build folder, so a fresh one costs one start-up.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=${1:-$(nproc)}
cmake --preset mingw64 -DQX_STRICT=ON >/dev/null
cmake --build --preset mingw64 -j "$jobs"
export WINEPREFIX="$PWD/build/mingw64/wineprefix" WINEDEBUG=-all
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  /usr/lib/wine/wine64 wineboot --init >/dev/null 2>&1 || true
fi
# A new prefix goes on setting itself up after wineboot answers; tests must not race it.
/usr/lib/wine/wineserver -w
xvfb-run -a ctest --preset mingw64
