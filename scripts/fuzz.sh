#!/usr/bin/env bash
# Runs every fuzz target of a build folder for a number of seconds, a few at a
# time, each over its seeds in fuzz/corpus/<target>. New inputs go to the build
# folder, not the tree. Fails when any target finds a crash, a hang or a
# broken check; the input that did it is kept in <build>/fuzz-findings.
# Usage: scripts/fuzz.sh BUILD_FOLDER SECONDS [PARALLEL]
set -euo pipefail
build=$1 seconds=$2 parallel=${3:-1}
root=$(cd "$(dirname "$0")/.." && pwd)
mkdir -p "$build/fuzz-corpus" "$build/fuzz-findings" "$build/fuzz-logs"

run_one() {
  local target=$1 name
  name=$(basename "$target")
  mkdir -p "$build/fuzz-corpus/$name" "$root/fuzz/corpus/$name"
  if "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
       -artifact_prefix="$build/fuzz-findings/$name-" \
       "$build/fuzz-corpus/$name" "$root/fuzz/corpus/$name" > "$build/fuzz-logs/$name.log" 2>&1; then
    echo "$name: $(grep -m1 -o 'stat::number_of_executed_units: *[0-9]*' "$build/fuzz-logs/$name.log" | grep -o '[0-9]*$') runs, no finding"
  else
    echo "$name: FINDING, see $build/fuzz-logs/$name.log"
    tail -n 40 "$build/fuzz-logs/$name.log"
    return 1
  fi
}
export -f run_one
export build seconds root

targets=("$build"/fuzz/*Fuzz)
[ -x "${targets[0]}" ] || { echo "no fuzz targets in $build/fuzz" >&2; exit 1; }
echo "Fuzzing ${#targets[@]} targets for ${seconds} s each, ${parallel} at a time"
printf '%s\n' "${targets[@]}" | xargs -P "$parallel" -I{} bash -c 'run_one {}'
