#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails where a file includes something from a higher floor of the house, or Qt below the line that it may not cross.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../../src"

# From the ground up. Everything before desktop links no Qt.
floors=(base algorithms workspace output files proof derivation exchange commands desktop grids app)
first_with_qt=9
failed=0

complain() {
  echo "$1" >&2
  failed=1
}

for ((own = 0; own < ${#floors[@]}; own++)); do
  for ((other = own + 1; other < ${#floors[@]}; other++)); do
    if hits=$(grep -rn "#include \"${floors[other]}/" "${floors[own]}"); then
      complain "${floors[own]} reaches up to ${floors[other]}:"$'\n'"$hits"
    fi
  done
  if ((own < first_with_qt)) && hits=$(grep -rnE '#include [<"]Q' "${floors[own]}"); then
    complain "${floors[own]} includes Qt:"$'\n'"$hits"
  fi
done

for folder in */; do
  [[ " ${floors[*]} " == *" ${folder%/} "* ]] || complain "src/$folder is no floor of the house."
done
((failed == 0)) && echo "Every floor rests on lower ones only."
exit "$failed"
