#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing and makes the packages.
#   ./package.sh             for Debian: build/package/orvane_VERSION_ARCHITECTURE.deb
#   ./package.sh --windows   for Windows: build/package/orvane-VERSION-windows.zip and orvane-VERSION-setup.exe, cross-compiled
#                            and tried under wine; the first time the libraries take about an hour of processor time
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. scripts/packages.sh

umask 022
if [ "${1:-}" = --windows ]; then exec bash scripts/windows/package.sh; fi
install_packages $build_packages dpkg-dev file gzip
cmake --preset release >/dev/null
cmake --build --preset release
rm -rf build/package/*.deb
cpack --config build/release/CPackConfig.cmake -B build/package
rm -rf build/package/_CPack_Packages
ls build/package/*.deb
