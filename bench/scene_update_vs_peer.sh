#!/usr/bin/env bash
# Runs the scene update benchmark and the peer engine's update measurement
# (Irrlicht's OnAnimate over a tree of the same size, ../shared/peers) back to back,
# so that both numbers come from the same machine state.
#   bench/scene_update_vs_peer.sh <release build dir with VELUN_BUILD_BENCH=ON> [peers dir]
set -euo pipefail
BUILD=${1:?release build directory}
PEERS=${2:-$(cd "$(dirname "${BASH_SOURCE[0]}")/../../shared/peers" && pwd)}
PEERS_BUILD=${PEERS_BUILD:-/tmp/peers-build}

cmake -S "$PEERS" -B "$PEERS_BUILD" -DCMAKE_BUILD_TYPE=Release >&2
cmake --build "$PEERS_BUILD" --target irr_update >&2
ninja -C "$BUILD" bench_scene_update >&2

echo "loadavg_start $(cut -d' ' -f1 /proc/loadavg)"
"$BUILD/bench/bench_scene_update" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
"$PEERS_BUILD/irr_update"
echo "loadavg_end $(cut -d' ' -f1 /proc/loadavg)"
