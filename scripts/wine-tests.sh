#!/usr/bin/env bash
# The Windows leg: the 64-bit cross-build's tests run under Wine on a virtual display.
# Wine keeps its own prefix inside the build folder, so a fresh one costs one start-up.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=${1:-$(nproc)}
cmake --preset mingw64 -DQX_STRICT=ON >/dev/null
cmake --build --preset mingw64 -j "$jobs"
export WINEPREFIX="${WINEPREFIX:-$PWD/build/mingw64/wineprefix}" WINEDEBUG=-all
# No Mono or Gecko: a fresh prefix would otherwise offer to download them.
export WINEDLLOVERRIDES="mscoree,mshtml="
wine=/usr/lib/wine/wine64 wineserver=/usr/lib/wine/wineserver
# Wine's desktop process binds to the display it first sees and outlives its programs by a
# few seconds; one left from a prefix set-up (or an earlier run) on another display or on
# none makes every window creation fail. So the prefix is set up on the tests' own display,
# and any session still alive is ended first.
"$wineserver" -k 2>/dev/null || true
"$wineserver" -w 2>/dev/null || true
xvfb-run -a -s "-screen 0 1280x1024x24" bash -c "
  set -e
  if [ ! -f \"\$WINEPREFIX/system.reg\" ]; then
    '$wine' wineboot --init >/dev/null 2>&1
    '$wineserver' -w
  fi
  ctest --preset mingw64"
"$wineserver" -w 2>/dev/null || true
