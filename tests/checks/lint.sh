#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the linter over all sources that are compiled for this system.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
cmake --preset lint >/dev/null
export build=build/lint

# Says what the linter says of one source, but for the number of findings in headers that are not ours.
lint() {
  local status=0 text
  text=$(clang-tidy -p "$build" --quiet "$1" 2>&1) || status=$?
  grep -vE '^[0-9]+ warnings? generated\.$' <<<"$text" | grep . || true
  return "$status"
}
export -f lint

# The largest first, so that no core waits for the last one.
sed -n 's/^  "file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json" | grep -vE "^$PWD/build/" | sort -u |
  xargs ls -S | xargs -P "$(nproc)" -n 1 bash -c 'lint "$1"' lint
echo "The linter has nothing to say."
