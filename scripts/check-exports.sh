#!/usr/bin/env bash
# The module must export exactly QxEnumPlugin, QxGetPlugin and GetFunction, undecorated.
set -euo pipefail
module=$1
expected=$'GetFunction\nQxEnumPlugin\nQxGetPlugin'
case "$module" in
  *.dll)
    actual=$(i686-w64-mingw32-objdump -p "$module" |
      awk '/\[Ordinal\/Name Pointer\] Table/{table=1; next} table && /^[[:space:]]*\[/{print $NF; next} table && NF==0{table=0}' | sort)
    ;;
  *)
    actual=$(nm -D --defined-only "$module" | awk '{print $NF}' | sort)
    ;;
esac
if [ "$actual" != "$expected" ]; then
  echo "unexpected exports in $module:"
  echo "$actual"
  exit 1
fi
echo "exports of $(basename "$module"): $(echo "$actual" | tr '\n' ' ')"
