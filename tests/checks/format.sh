#!/usr/bin/env bash
# Fails, with the differences, where a source file is not laid out as .clang-format says.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
git ls-files 'src/*.h' 'src/*.cpp' 'tests/*.h' 'tests/*.cpp' 'bench/*.cpp' 'bench/*.h' 'fuzz/*.cpp' |
  xargs clang-format --dry-run --Werror
echo "The layout of all sources is right."
