#!/usr/bin/env bash
# Installs the Debian packages the build needs; quiet and quick when all are present.
set -euo pipefail

packages=(
  cmake g++ ninja-build pkg-config
  libpng-dev libfreetype-dev libfontconfig-dev fonts-dejavu-core fonts-vlgothic
  libpcre2-dev libsdl2-dev libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev g++-mingw-w64-i686 ccache
  rapidjson-dev nlohmann-json3-dev libuchardet-dev
  g++-mingw-w64-x86-64-posix wine64 xvfb xauth
)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done

if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# The compiler cache keys on paths relative to the checkout, so another clone of the
# same sources (CI's fresh one) reuses what this one compiled.
export CCACHE_BASEDIR="$PWD"
export CCACHE_NOHASHDIR=true
