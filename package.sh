#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing and makes the Debian package: build/package/orvane_VERSION_ARCHITECTURE.deb
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. scripts/packages.sh

install_packages $build_packages dpkg-dev file gzip
umask 022
cmake --preset release >/dev/null
cmake --build --preset release
rm -rf build/package
cpack --config build/release/CPackConfig.cmake -B build/package
rm -rf build/package/_CPack_Packages
ls build/package/*.deb
