#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds Orvane and starts it: ./run.sh [project.qmx]
# Without a display it runs on a virtual one and leaves a picture of its window in build/orvane.png.
set -euo pipefail
project="${1:+$(realpath -m -- "$1")}"
cd "$(dirname "$(realpath "$0")")"
. scripts/packages.sh

install_packages $build_packages $run_packages
cmake --preset release >/dev/null
cmake --build --preset release --target qmx
program=build/release/bin/qmx.exe

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$program" ${project:+"$project"}
fi

install_packages $display_packages
scripts/picture.sh build/orvane.png "$program" ${project:+"$project"}
