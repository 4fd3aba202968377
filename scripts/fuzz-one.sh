#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# fuzz-one.sh NAME SECONDS: one fuzzer, from its corpus, which stays as it is.
found=$(mktemp -d) || exit 1
trap 'rm -rf "$found"' EXIT
if ! build/asan/bin/fuzz/fuzz_"$1" -max_total_time="$2" -timeout=10 -artifact_prefix="build/asan/findings/$1-" \
  "$found" "fuzz/corpus/$1" >"$found.log" 2>&1; then
  tail -n 60 "$found.log"
  rm -f "$found.log"
  echo "fuzz_$1: found something"
  exit 1
fi
echo "fuzz_$1: $(grep -E '^(Done|#[0-9]+.*DONE)' "$found.log" | tail -n 1)"
rm -f "$found.log"
