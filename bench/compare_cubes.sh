#!/usr/bin/env bash
# The cube benchmark of the engine next to the peers' raw-GL program and Irrlicht, in
# one run on the same machine, with the same scene (the peers' draw_scene.h) and the
# same environment as the peers' run.sh (llvmpipe, Xvfb, glibc heap kept).
#   bench/compare_cubes.sh <release build dir with bench_gl_cubes and bench_gl_cubes_raw>
# Prints "name value unit" lines like the peers do, then the per-object slopes and the
# engine's slope over the raw-GL slope; the modified case is also compared with the
# raw-GL program that gives each cube its own buffers (bench_gl_cubes_raw). The *_both_sides
# baselines draw with face culling off, as the engine does, so the rasteriser fills the same
# fragments. VELUN_NO_RASTER=1 compares without rasterisation (the peers' PEERS_NO_RASTER).
set -uo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
BUILD=${1:?usage: $0 <release build dir>}
PEERS=${VELUN_PEERS_DIR:-$HERE/../../shared/peers}
PEERS_BUILD=${PEERS_BUILD:-/tmp/peers-build}
NS="200 2000 20000"

cmake -S "$PEERS" -B "$PEERS_BUILD" -DCMAKE_BUILD_TYPE=Release >&2 &&
    cmake --build "$PEERS_BUILD" -j2 --target gl_draw irr_draw >&2 || { echo "peer build failed" >&2; exit 1; }

NO_RASTER=()
[[ -n "${VELUN_NO_RASTER:-}" ]] && NO_RASTER=(PEERS_NO_RASTER=1 VELUN_NO_RASTER=1)
run() {
    xvfb-run -a -s '-screen 0 1024x768x24' env GALLIUM_DRIVER=llvmpipe LIBGL_ALWAYS_SOFTWARE=1 SDL_VIDEODRIVER=x11 \
        GLIBC_TUNABLES=glibc.malloc.trim_threshold=268435456:glibc.malloc.mmap_threshold=33554432 \
        "${NO_RASTER[@]}" "$@"
}

OUT=$(mktemp -d)
trap 'rm -rf "$OUT"' EXIT
echo "host_loadavg_1min_start $(cut -d' ' -f1 /proc/loadavg) load"
run "$PEERS_BUILD/gl_draw" $NS | tee "$OUT/gl.txt"
run "$PEERS_BUILD/irr_draw" vbo $NS | tee "$OUT/irr.txt"
run "$BUILD/bench/bench_gl_cubes" --benchmark_repetitions=7 --benchmark_report_aggregates_only=true \
    --benchmark_format=json --benchmark_out="$OUT/velun.json" --benchmark_out_format=json >/dev/null
run "$BUILD/bench/bench_gl_cubes_raw" --benchmark_repetitions=7 --benchmark_report_aggregates_only=true \
    --benchmark_format=json --benchmark_out="$OUT/raw.json" --benchmark_out_format=json >/dev/null
echo "host_loadavg_1min_end $(cut -d' ' -f1 /proc/loadavg) load"

python3 - "$OUT" <<'EOF'
import json, re, sys
out = sys.argv[1]
def peer(file, prefix):
    vals = {}
    for line in open(f"{out}/{file}"):
        m = re.match(rf"{prefix}_N(\d+)_ms_per_frame\.median (\S+)", line)
        if m:
            vals[int(m.group(1))] = float(m.group(2))
    return vals
runs = {"gl": peer("gl.txt", r"gl(?:_noraster)?"), "irr": peer("irr.txt", r"irr_vbo(?:_noraster)?")}
benches = (("velun.json", "BM_Cubes", "velun"), ("velun.json", "BM_CubesModified", "velun_modified"),
           ("raw.json", "BM_RawCubes", "raw"), ("raw.json", "BM_RawCubesOwnBuffers", "raw_own"),
           ("raw.json", "BM_RawCubesOwnBuffersPerAttribute", "raw_own_per_attribute"),
           ("raw.json", "BM_RawCubesBothSides", "raw_both_sides"),
           ("raw.json", "BM_RawCubesOwnBuffersBothSides", "raw_own_both_sides"))
for file, name, key in benches:
    vals = {}
    for b in json.load(open(f"{out}/{file}"))["benchmarks"]:
        m = re.match(rf"{name}/(\d+)_median$", b["name"])
        if m:
            unit = {"ms": 1.0, "us": 1e-3, "ns": 1e-6}[b["time_unit"]]
            vals[int(m.group(1))] = b["real_time"] * unit
            print(f"{key}_N{m.group(1)}_ms_per_frame.median {vals[int(m.group(1))]:.4g} ms/frame")
            for counter, unit in (("buffer_loads_per_frame", "loads"), ("coverage", "fraction")):
                if counter in b:
                    print(f"{key}_N{m.group(1)}_{counter} {b[counter]:.4g} {unit}")
    runs[key] = vals
def slope(v, a, b):
    return (v[b] - v[a]) / (b - a) * 1000.0 if a in v and b in v else float("nan")
for a, b in ((200, 2000), (2000, 20000), (200, 20000)):
    line = "  ".join(f"{k} {slope(v, a, b):.3g}" for k, v in runs.items())
    print(f"slope_{a}_{b}_us_per_obj  {line}")
ratio = slope(runs["velun"], 200, 20000) / slope(runs["gl"], 200, 20000)
print(f"velun_over_gl_slope_200_20000 {ratio:.3g} ratio")
ratio = slope(runs["velun_modified"], 200, 20000) / slope(runs["gl"], 200, 20000)
print(f"velun_modified_over_gl_slope_200_20000 {ratio:.3g} ratio")
for over, base in (("velun", "raw"), ("velun_modified", "raw_own"), ("velun_modified", "raw_own_per_attribute"),
                   ("velun", "raw_both_sides"), ("velun_modified", "raw_own_both_sides")):
    ratio = slope(runs[over], 200, 20000) / slope(runs[base], 200, 20000)
    print(f"{over}_over_{base}_slope_200_20000 {ratio:.3g} ratio")
EOF
