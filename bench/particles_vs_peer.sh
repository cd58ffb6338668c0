#!/usr/bin/env bash
# Runs the particle benchmarks and the peer engine's particle system (Irrlicht, box
# emitter and gravity on the same 16 ms clock, ../shared/peers) back to back, so that
# both numbers come from the same machine state. Compare update/100000's
# particles_per_ms with irr_particles_N100000_update_particles_per_ms.median.
#   bench/particles_vs_peer.sh <release build dir with VELUN_BUILD_BENCH=ON> [peers dir]
set -euo pipefail
BUILD=${1:?release build directory}
PEERS=${2:-$(cd "$(dirname "${BASH_SOURCE[0]}")/../../shared/peers" && pwd)}
PEERS_BUILD=${PEERS_BUILD:-/tmp/peers-build}

cmake -S "$PEERS" -B "$PEERS_BUILD" -DCMAKE_BUILD_TYPE=Release >&2
cmake --build "$PEERS_BUILD" --target irr_particles >&2
ninja -C "$BUILD" bench_particles >&2

echo "loadavg_start $(cut -d' ' -f1 /proc/loadavg)"
"$BUILD/bench/bench_particles" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
"$PEERS_BUILD/irr_particles" null 10000 100000
echo "loadavg_end $(cut -d' ' -f1 /proc/loadavg)"
