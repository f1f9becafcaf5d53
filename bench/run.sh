#!/usr/bin/env bash
# Runs the benchmarks of a build and writes their reports into out/bench/.
#   bench/run.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
mkdir -p out/bench

if [ -x "$build/bin/host_call_bench" ]; then
  echo "== calls of a trivial plug-in function through the host (target: >= 200,000/s)"
  "$build/bin/host_call_bench" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
    --benchmark_out=out/bench/host_calls.json --benchmark_out_format=json | tee out/bench/host_calls.txt
fi
