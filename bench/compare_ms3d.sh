#!/usr/bin/env bash
# MS3D load time of the engine next to the peer engine (Irrlicht) in one run, on the
# peer's own generated files (12,496 and 50,000 triangles) and on the engine's written
# grids and the sample jeep.
#   bench/compare_ms3d.sh <release build dir with bench_ms3d_load>
set -uo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
BUILD=${1:?usage: $0 <release build dir>}
PEERS=${VELUN_PEERS_DIR:-$HERE/../../shared/peers}
PEERS_BUILD=${PEERS_BUILD:-/tmp/peers-build}

cmake -S "$PEERS" -B "$PEERS_BUILD" -DCMAKE_BUILD_TYPE=Release >&2 &&
    cmake --build "$PEERS_BUILD" -j2 --target gen_ms3d irr_ms3d >&2 || { echo "peer build failed" >&2; exit 1; }

FILES=$(mktemp -d)
trap 'rm -rf "$FILES"' EXIT
"$PEERS_BUILD/gen_ms3d" "$FILES/bench50k.ms3d" 50000 4
"$PEERS_BUILD/gen_ms3d" "$FILES/bench12k.ms3d" 12496 4 | sed 's/^ms3d_/ms3d_12k_/'
echo "host_loadavg_1min_start $(cut -d' ' -f1 /proc/loadavg) load"
"$PEERS_BUILD/irr_ms3d" "$FILES/bench50k.ms3d" 50000 irr_ms3d
"$PEERS_BUILD/irr_ms3d" "$FILES/bench12k.ms3d" 12496 irr_ms3d_12k
VELUN_PEER_MS3D_DIR="$FILES" "$BUILD/bench/bench_ms3d_load" --benchmark_repetitions=5 \
    --benchmark_report_aggregates_only=true
echo "host_loadavg_1min_end $(cut -d' ' -f1 /proc/loadavg) load"
