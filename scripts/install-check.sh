#!/usr/bin/env bash
# Installs a built Velun into a scratch prefix and builds a small outside project
# against it, once through CMake's package and once through pkg-config.
# Usage: scripts/install-check.sh [build-dir] [compiler flags for the outside project]
# (a sanitizer build passes its -fsanitize flags, so the runtime comes first there too).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$root/build"}
flags=${2:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" > /dev/null
cmake -S "$root/tests/install/consumer" -B "$work/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
  -DCMAKE_CXX_FLAGS="$flags" > /dev/null
cmake --build "$work/consumer" > /dev/null
LD_LIBRARY_PATH="$work/prefix/lib" "$work/consumer/consumer"

export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
g++ $flags "$root/tests/install/consumer/main.cpp" -o "$work/consumer-pc" $(pkg-config --cflags --libs velun)
LD_LIBRARY_PATH="$work/prefix/lib" "$work/consumer-pc"
echo "install check: 2 passed, 0 failed"
