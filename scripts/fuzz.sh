#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a while.
#   scripts/fuzz.sh [SECONDS] [TARGET...]   default: 5 seconds each, every target
# TAV_FUZZ_JOBS runs that many targets at once; TAV_FUZZ_TIMEOUT is the seconds one
# input may take (default 2; give more on a loaded machine); TAV_FUZZ_KEEP=1 merges what a run
# found into the corpus kept in tests/fuzz/corpus. Without clang it says so and
# does nothing, as on machines that only build the project.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-5}
shift || true
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(c3d runs menutree)

if ! command -v clang++ >/dev/null || [ ! -d /usr/lib/llvm-14/lib/clang ]; then
  echo "fuzz: clang++ with its runtime (clang, libclang-rt-14-dev) is not installed; skipping the fuzz runs"
  exit 0
fi

build=${TAV_FUZZ_BUILD:-build-fuzz}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DTAV_FUZZ=ON \
  -DTAV_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target c3dgen $(printf 'fuzz_%s ' "${targets[@]}") >/dev/null

data=${TAV_DATA_DIR:-$PWD/../shared/data}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

run_one() {
  local t=$1 corpus=$PWD/tests/fuzz/corpus/$1
  local live=$work/$t seeds=()
  mkdir -p "$live" "$corpus"
  if [ "$t" = c3d ]; then
    # Seeds: two small takes of our own, and the shared sample files when present.
    "$build/host/c3d/c3dgen" "$live/gen-2x3.c3d" --markers 2 --frames 3 >/dev/null
    "$build/host/c3d/c3dgen" "$live/gen-5x40.c3d" --markers 5 --frames 40 >/dev/null
    [ -d "$data/c3d" ] && seeds+=("$data/c3d")
  fi
  # A hang is an input that takes more than 2 s; memory beyond 2 GiB is a finding.
  ASAN_OPTIONS=detect_leaks=1 LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp:print_suppressions=0 "$build/tests/fuzz/fuzz_$t" "$live" "$corpus" "${seeds[@]}" \
    -max_total_time="$seconds" -timeout="${TAV_FUZZ_TIMEOUT:-2}" -rss_limit_mb=2048 -max_len=65536 -print_final_stats=1 \
    -artifact_prefix="$work/$t-" >"$work/$t.log" 2>&1 || {
    tail -40 "$work/$t.log"
    mkdir -p "$build/findings"
    cp "$work"/"$t"-* "$build/findings/" 2>/dev/null || true
    echo "fuzz: $t found a fault; its input is in $build/findings"
    return 1
  }
  grep -E "stat::number_of_executed_units|stat::peak_rss_mb" "$work/$t.log" | sed "s/^/fuzz $t: /"
  grep -E "cov: [0-9]+" "$work/$t.log" | tail -1 | sed "s/^/fuzz $t: /"
  if [ "${TAV_FUZZ_KEEP:-0}" = 1 ]; then
    "$build/tests/fuzz/fuzz_$t" -merge=1 "$corpus" "$live" >/dev/null 2>&1
  fi
}

status=0
jobs=${TAV_FUZZ_JOBS:-1}
pids=()
for t in "${targets[@]}"; do
  run_one "$t" &
  pids+=($!)
  if [ ${#pids[@]} -ge "$jobs" ]; then
    wait "${pids[0]}" || status=1
    pids=("${pids[@]:1}")
  fi
done
for p in "${pids[@]}"; do wait "$p" || status=1; done
exit $status
