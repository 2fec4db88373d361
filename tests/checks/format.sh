#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails, with the differences, where a source file is not laid out as .clang-format says.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
find src tests bench fuzz \( -name '*.h' -o -name '*.cpp' \) -print0 | xargs -0 clang-format --dry-run --Werror
echo "The layout of all sources is right."
