#!/usr/bin/env bash
# Runs every libFuzzer target of a fuzz build for a few seconds each; any
# crash, leak or undefined behaviour fails the run.
# usage: fuzz-smoke.sh BUILD_DIR SECONDS
set -euo pipefail
dir=$1
seconds=$2
found=0
log=$(mktemp)
trap 'rm -f "$log"' EXIT
while IFS= read -r target; do
  found=$((found + 1))
  family=$(basename "$(dirname "$target")")
  options="print_stacktrace=1:halt_on_error=1"
  if [ -f "fuzz/$family/ubsan.supp" ]; then
    options="$options:suppressions=$PWD/fuzz/$family/ubsan.supp"
  fi
  if UBSAN_OPTIONS=$options "$target" -max_total_time="$seconds" >"$log" 2>&1; then
    echo "-- $family/$(basename "$target"): $(grep -c '^#' "$log") status lines, no failure"
  else
    echo "-- $family/$(basename "$target") FAILED:"
    tail -n 40 "$log"
    exit 1
  fi
done < <(find "$dir/fuzz" -mindepth 2 -maxdepth 2 -type f -perm -u+x | sort)
echo "fuzz smoke: $found targets ran"
[ "$found" -gt 0 ]
