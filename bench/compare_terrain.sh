#!/usr/bin/env bash
# The terrain benchmarks of the engine next to the peers' irr_terrain, in one run on the
# same machine and with the same environment as the peers' run.sh (llvmpipe, Xvfb,
# glibc heap kept).
#   bench/compare_terrain.sh <release build dir with bench_terrain_queries and bench_terrain_draw>
# Prints "name value unit" lines like the peers do, then the ratios to check: the peer's
# height query time over the engine's (above 1 means the engine is faster), the engine's
# frame over the raw-GL frame of the same buffers (at most 1.2) and over the peer's
# full-detail frame (below 1 means the engine is faster).
set -uo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
BUILD=${1:?usage: $0 <release build dir>}
PEERS=${VELUN_PEERS_DIR:-$HERE/../../shared/peers}
PEERS_BUILD=${PEERS_BUILD:-/tmp/peers-build}

cmake -S "$PEERS" -B "$PEERS_BUILD" -DCMAKE_BUILD_TYPE=Release >&2 &&
    cmake --build "$PEERS_BUILD" -j2 --target irr_terrain >&2 || { echo "peer build failed" >&2; exit 1; }

run() {
    xvfb-run -a -s '-screen 0 1024x768x24' env GALLIUM_DRIVER=llvmpipe LIBGL_ALWAYS_SOFTWARE=1 SDL_VIDEODRIVER=x11 \
        GLIBC_TUNABLES=glibc.malloc.trim_threshold=268435456:glibc.malloc.mmap_threshold=33554432 "$@"
}

OUT=$(mktemp -d)
trap 'rm -rf "$OUT"' EXIT
echo "host_loadavg_1min_start $(cut -d' ' -f1 /proc/loadavg) load"
run "$PEERS_BUILD/irr_terrain" | tee "$OUT/irr.txt"
"$BUILD/bench/bench_terrain_queries" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
    --benchmark_format=json --benchmark_out="$OUT/queries.json" --benchmark_out_format=json >/dev/null
run "$BUILD/bench/bench_terrain_draw" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
    --benchmark_format=json --benchmark_out="$OUT/draw.json" --benchmark_out_format=json >/dev/null
echo "host_loadavg_1min_end $(cut -d' ' -f1 /proc/loadavg) load"

python3 - "$OUT" <<'PY'
import json, re, sys
out = sys.argv[1]
peer = {}
for line in open(f"{out}/irr.txt"):
    m = re.match(r"(irr_terrain_\S+) (\S+)", line)
    if m:
        peer[m.group(1)] = m.group(2)
medians = {}
for file in ("queries.json", "draw.json"):
    for b in json.load(open(f"{out}/{file}"))["benchmarks"]:
        if b["name"].endswith("_median"):
            medians[b["name"][:-len("_median")]] = b
for name, b in sorted(medians.items()):
    if "items_per_second" in b:
        print(f"velun_{name}_ns {1e9 / b['items_per_second']:.4g} ns/query")
    elif "time_per_vertex" in b:
        print(f"velun_{name}_ns_per_vertex {b['time_per_vertex'] * 1e9:.4g} ns/vertex")
    else:
        unit = {"ms": 1.0, "us": 1e-3, "ns": 1e-6}[b["time_unit"]]
        print(f"velun_{name}_ms_per_frame {b['real_time'] * unit:.4g} ms/frame")
        for counter in ("draw_calls_per_frame", "buffer_loads_per_frame", "coverage"):
            if counter in b:
                print(f"velun_{name}_{counter} {b[counter]:.4g}")
peer_ns = float(peer["irr_terrain_getHeight_ns.median"])
ours_ns = 1e9 / medians["BM_PeerTerrainSurfacePoint"]["items_per_second"]
print(f"peer_over_velun_height_query {peer_ns / ours_ns:.3g} ratio")
frame = lambda n: medians[n]["real_time"] * {"ms": 1.0, "us": 1e-3, "ns": 1e-6}[medians[n]["time_unit"]]
print(f"velun_over_rawgl_frame {frame('BM_TerrainFrame') / frame('BM_TerrainFrameRawGL'):.3g} ratio")
print(f"velun_over_peer_full_frame {frame('BM_TerrainFrame') / float(peer['irr_terrain_full_ms_per_frame.median']):.3g} ratio")
PY
