#!/usr/bin/env bash
# Builds Velun and runs every test. Usage: scripts/test.sh [build-dir] [extra cmake options...]
# Window and GL tests run under a virtual X server when there is no display.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$root/build"}
shift || true

"$root/scripts/deps.sh"

cmake -S "$root" -B "$build" -G Ninja "$@"
cmake --build "$build" -j "$(nproc)"

cd "$build"
export SDL_VIDEODRIVER=x11 SDL_AUDIODRIVER=dummy
if [ -n "${DISPLAY:-}" ]; then
  ctest --output-on-failure --timeout 600
else
  xvfb-run -a -s '-screen 0 1024x768x24 -noreset' ctest --output-on-failure --timeout 600
fi
