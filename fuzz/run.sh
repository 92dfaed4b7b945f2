#!/usr/bin/env bash
# Runs every fuzz target for SECONDS seconds each (default 45) from a copy of its
# corpus, with its dictionary, under AddressSanitizer and UndefinedBehaviorSanitizer.
# Usage: fuzz/run.sh BUILD_DIR [SECONDS]. A crash, a leak, a time-out of one
# input or a memory blow-up fails the run; the input is left in BUILD_DIR/fuzz-findings/.
set -euo pipefail
build="$1"
seconds="${2:-45}"
here="$(cd "$(dirname "$0")" && pwd)"
findings="$build/fuzz-findings"
mkdir -p "$findings"

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

status=0
for exe in "$build"/fuzz/*_fuzz; do
  name="$(basename "$exe" _fuzz)"
  work="$(mktemp -d)"
  [ -d "$here/corpus/$name" ] && cp -r "$here/corpus/$name/." "$work/"
  dict=()
  [ -f "$here/$name.dict" ] && dict=("-dict=$here/$name.dict")
  echo "== fuzz $name for ${seconds}s"
  if ! "$exe" "$work" "${dict[@]}" -max_total_time="$seconds" -timeout=10 \
       -rss_limit_mb=2048 -max_len=65536 -artifact_prefix="$findings/$name-" \
       -print_final_stats=1 2> "$findings/$name.log"; then
    tail -n 60 "$findings/$name.log"
    status=1
  else
    grep -E '^stat::number_of_executed_units|^Done' "$findings/$name.log" || true
  fi
  rm -rf "$work"
done
exit $status
