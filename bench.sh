#!/usr/bin/env bash
# Measures the graph against the physical limit and against the widgets people
# would use instead, all in one run, and writes the report from that run: installs
# what is missing, builds a Release tree, runs every benchmark under a private Xvfb
# (so the GL renderer is the same everywhere), counts what each paint sends to GL,
# and writes docs/PERFORMANCE.md, docs/perf.png and docs/perf-pictures.png. The
# run's JSON is kept in bench/results/.
#   TAV_BENCH_DIR      build folder (default build-bench)
#   TAV_BENCH_FRAMES   take lengths (default 10000,100000,1000000)
set -euo pipefail
cd "$(dirname "$0")"
. scripts/deps.sh
tav_install "${TAV_BUILD_PACKAGES[@]}" "${TAV_RUN_PACKAGES[@]}" "${TAV_BENCH_PACKAGES[@]}"

build=${TAV_BENCH_DIR:-build-bench}
out=$PWD/$build/bench-out
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTAV_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target tavbench tavbench_glcount -j"$(nproc)"

rm -rf "$out"
mkdir -p "$out/pictures" bench/results
/usr/bin/python3 bench/report.py machine >"$out/machine.json"
start=$SECONDS
TAV_BENCH_PICTURES=$out/pictures xvfb-run -a -s "-screen 0 1920x1080x24 -nolisten tcp" \
  "$build/bench/tavbench" --benchmark_min_time=0.3 \
  --benchmark_out="$out/tavbench.json" --benchmark_out_format=json
"$build/bench/tavbench_glcount" "$out/glcount.json"
echo "Benchmarks took $((SECONDS - start)) s."

cp "$out/machine.json" "$out/tavbench.json" "$out/glcount.json" bench/results/
/usr/bin/python3 bench/report.py report --bench "$out/tavbench.json" --counts "$out/glcount.json" \
  --machine "$out/machine.json" --pictures "$out/pictures" --template bench/PERFORMANCE.md.in \
  --out docs/PERFORMANCE.md --plot docs/perf.png --montage docs/perf-pictures.png
echo "Wrote docs/PERFORMANCE.md, docs/perf.png and docs/perf-pictures.png."
