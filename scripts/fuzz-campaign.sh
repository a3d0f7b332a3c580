#!/usr/bin/env bash
# Runs one libFuzzer target of a fuzz build for a number of minutes, starting
# from its seed corpus in fuzz/corpus/TARGET/ (when there is one), and prints
# the campaign's figures: executions, time, executions per second and the
# size of the corpus it grew. Any crash, leak, time-out or undefined
# behaviour fails the run; the input that caused it is kept beside the corpus.
# The target's own standard output is closed (libFuzzer reports on stderr).
#
# usage: fuzz-campaign.sh TARGET MINUTES
#   FUZZ_BUILD_DIR  fuzz build directory (default build-fuzz; configure it
#                   with clang and -DVXUTILITY_FUZZ=ON as scripts/test.sh does)
#   FUZZ_WORK_DIR   where the grown corpus and any failing input go
#                   (default $FUZZ_BUILD_DIR/campaign/TARGET); kept between
#                   runs, so a later campaign continues from it
#   FUZZ_ARGS       extra libFuzzer options (for example -max_len=65536)
set -euo pipefail
cd "$(dirname "$0")/.."

if [ $# -ne 2 ] || ! [[ $2 =~ ^[0-9]+$ ]] || [ "$2" -eq 0 ]; then
  echo "usage: $0 TARGET MINUTES" >&2
  exit 2
fi
target=$1
minutes=$2
build=${FUZZ_BUILD_DIR:-build-fuzz}
work=${FUZZ_WORK_DIR:-$build/campaign/$target}

binary=$(find "$build/fuzz" -mindepth 2 -maxdepth 2 -type f -perm -u+x -name "$target" 2>/dev/null | head -n 1)
if [ -z "$binary" ]; then
  echo "no fuzz target '$target' under $build/fuzz (build it first)" >&2
  exit 2
fi
family=$(basename "$(dirname "$binary")")
seeds=fuzz/corpus/$target

mkdir -p "$work/corpus" "$work/artifacts"
log=$work/last-run.log
corpora=("$work/corpus")
[ -d "$seeds" ] && corpora+=("$seeds")  # read for seeds; new inputs go to the first

ubsan="print_stacktrace=1:halt_on_error=1"
[ -f "fuzz/$family/ubsan.supp" ] && ubsan="$ubsan:suppressions=$PWD/fuzz/$family/ubsan.supp"

echo "-- $target: $minutes min, corpus $work/corpus${seeds:+ (seeds $seeds)}"
status=0
# shellcheck disable=SC2086  # FUZZ_ARGS is a list of options
UBSAN_OPTIONS=$ubsan ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1} \
  "$binary" -max_total_time=$((minutes * 60)) -print_final_stats=1 -timeout=60 -close_fd_mask=1 \
  -artifact_prefix="$work/artifacts/" ${FUZZ_ARGS:-} "${corpora[@]}" >"$log" 2>&1 || status=$?

runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
seconds=$(sed -n 's/^Done [0-9]* runs in \([0-9]*\) second.*/\1/p' "$log" | tail -n 1)
files=$(find "$work/corpus" -type f | wc -l)
bytes=$(du -sb "$work/corpus" | cut -f1)
rate=$(( ${runs:-0} / ( ${seconds:-0} > 0 ? ${seconds:-1} : 1 ) ))
if [ "$status" -ne 0 ]; then
  echo "-- $target FAILED (exit $status) after ${runs:-?} executions; log $log:"
  tail -n 60 "$log"
  ls -1 "$work/artifacts"
  exit 1
fi
echo "-- $target: ${runs:-?} executions in ${seconds:-?} s (${rate}/s), nothing found;" \
  "corpus $files files, $bytes bytes"
