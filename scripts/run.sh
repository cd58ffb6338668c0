#!/usr/bin/env bash
# Builds Velun and runs the example program; under a virtual X server when there is no display.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build"

"$root/scripts/deps.sh"
cmake -S "$root" -B "$build" -G Ninja -DVELUN_BUILD_TESTS=OFF
cmake --build "$build" -j "$(nproc)" --target hello

export SDL_VIDEODRIVER=${SDL_VIDEODRIVER:-x11}
if [ -n "${DISPLAY:-}" ]; then
  "$build/examples/hello" "$@"
else
  xvfb-run -a -s '-screen 0 1024x768x24' "$build/examples/hello" "$@"
fi
