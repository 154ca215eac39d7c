#!/usr/bin/env bash
# build.sh PRESET: configures and builds one preset of CMakePresets.json. Says little unless something fails.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1

if [[ -z ${CMAKE_CXX_COMPILER_LAUNCHER:-} ]] && command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi
[[ -d build/$preset ]] || printf 'Building %s for the first time; this takes some minutes.\n' "$preset"

mkdir -p "build/$preset"
log=build/$preset/configure.log
if ! cmake --preset "$preset" >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
cmake --build --preset "$preset"
