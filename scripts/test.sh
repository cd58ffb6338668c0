#!/usr/bin/env bash
# Builds Velun and its tests and runs every test. Usage: scripts/test.sh [build-dir] [extra cmake options...]
# The tests are switched on whatever an earlier configure (scripts/run.sh) left in the
# cache, and finding no tests at all is a failure.
# Window and GL tests run under a virtual X server when there is no display.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$root/build"}
shift || true

"$root/scripts/deps.sh"

cmake -S "$root" -B "$build" -G Ninja "$@" -DVELUN_BUILD_TESTS=ON
cmake --build "$build" -j "$(nproc)"

cd "$build"
export SDL_VIDEODRIVER=x11 SDL_AUDIODRIVER=dummy
if [ -n "${DISPLAY:-}" ]; then
  ctest --output-on-failure --no-tests=error --timeout 600
else
  xvfb-run -a -s '-screen 0 1024x768x24 -noreset' ctest --output-on-failure --no-tests=error --timeout 600
fi
