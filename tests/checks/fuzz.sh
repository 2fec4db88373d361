#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every fuzzer for some seconds, beginning with its corpus: fuzz.sh [SECONDS]. Fails where one of them finds something,
# which is then in the build folder. What else they come upon is forgotten.
set -euo pipefail
seconds=${1:-60}
cd "$(dirname "$(realpath "$0")")/../.."
found=$(mktemp -d)
trap 'rm -rf "$found"' EXIT

for corpus in fuzz/corpus/*/; do
  reader=$(basename "$corpus")
  mkdir "$found/$reader"
  echo "$reader"
done | xargs -P "$(nproc)" -I{} sh -c '
  program=build/fuzz/fuzz/qmx_fuzz_$(echo "$3" | tr -d _)
  case "$3" in project | matrix | system | factors) words=fields ;; *) words=foreign ;; esac
  "$program" -max_total_time="$1" -max_len=4096 -rss_limit_mb=1500 -timeout=100 -print_final_stats=1 \
    -dict=fuzz/"$words".dict -artifact_prefix=build/fuzz/"$3"- "$2/$3" "fuzz/corpus/$3" >"$2/$3.log" 2>&1 ||
    { cat "$2/$3.log"; exit 1; }
  echo "$3: $(sed -n "s/^stat::number_of_executed_units: *//p" "$2/$3.log") inputs"' run "$seconds" "$found" {}
echo "The fuzzers have found nothing."
