#!/usr/bin/env bash
# Builds Velun and runs the showcase. With a display it opens a window until Escape
# or closing it; without one it runs under a virtual X server for a fixed number of
# frames and writes screenshots. Extra arguments go to the showcase
# (--frames N, --screenshots DIR, --size WxH).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build"

"$root/scripts/deps.sh"
cmake -S "$root" -B "$build" -G Ninja -DVELUN_BUILD_TESTS=OFF > /dev/null
cmake --build "$build" -j "$(nproc)" --target showcase

if [ -n "${DISPLAY:-}" ]; then
  "$build/examples/showcase" "$@"
else
  shots="$root/screenshots"
  echo "No display: running 300 frames under Xvfb; screenshots go to $shots"
  export SDL_VIDEODRIVER=x11
  args=("$@")
  [ ${#args[@]} -eq 0 ] && args=(--frames 300 --screenshots "$shots")
  xvfb-run -a -s '-screen 0 1024x768x24 -noreset' "$build/examples/showcase" "${args[@]}"
fi
