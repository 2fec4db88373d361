#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails where a source does not name its licence in its first line, or in the second below the name of an interpreter.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."

sources() {
  find src tests bench fuzz scripts cmake packaging tools -type f \
    \( -name '*.h' -o -name '*.cpp' -o -name '*.in' -o -name '*.cmake' -o -name CMakeLists.txt -o -name '*.sh' -o \
    -name '*.py' -o -name '*.m' -o -name '*.R' -o -path 'tests/checks/*' \) -print0
  printf '%s\0' CMakeLists.txt .ci/run ./*.sh
}

licence='^(//|#|%) SPDX-License-Identifier: MIT$'
failed=0
while IFS= read -r -d '' source; do
  { read -r first && if [[ $first == '#!'* ]]; then read -r first; fi; } <"$source" || first=
  if ! [[ $first =~ $licence ]]; then
    echo "$source does not begin with its licence, SPDX-License-Identifier: MIT." >&2
    failed=1
  fi
done < <(sources)
((failed == 0)) && echo "Every source names its licence."
exit "$failed"
