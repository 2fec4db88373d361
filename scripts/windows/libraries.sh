#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Cross-compiles the libraries that the program for Windows is linked with, from Debian's source packages, once: into
# ${QMX_WINDOWS_CACHE:-~/.cache/orvane/windows}/libraries. Later runs find them there. About an hour of processor time, nearly all of
# it for Qt.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. scripts/packages.sh

install_packages $build_packages $windows_packages
. scripts/windows/places.sh
mkdir -p "$windows_cache/sources" "$windows_cache/logs" "$windows_libraries"

apt=$windows_cache/apt
# Source packages are fetched by an apt of their own, so that the machine's list of sources stays as it is. It asks the mirror
# that the machine's own list names, and trusts the keys that the machine trusts.
fetch_lists() {
  [ -f "$apt/ready" ] && return
  mkdir -p "$apt/lists/partial" "$apt/archives/partial"
  apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
    awk '$3 == "main" && !seen[$0]++ { print "deb-src", $0 }' >"$apt/sources.list"
  apt_sources update -q
  touch "$apt/ready"
}
apt_sources() {
  apt-get -o Dir::Etc::SourceList="$apt/sources.list" -o Dir::Etc::SourceParts=/dev/null \
    -o Dir::State::Lists="$apt/lists" -o Dir::Cache="$apt" -o APT::Sandbox::User=root "$@"
}

# fetch PACKAGE: its sources with Debian's patches, in sources/PACKAGE.
fetch() {
  local unpacked
  [ -d "$windows_cache/sources/$1" ] && return
  fetch_lists
  mkdir -p "$windows_cache/fetched/$1"
  (cd "$windows_cache/fetched/$1" && rm -rf ./* && apt_sources source -q "$1")
  unpacked=$(find "$windows_cache/fetched/$1" -mindepth 1 -maxdepth 1 -type d)
  mv "$unpacked" "$windows_cache/sources/$1"
}

toolchain=$PWD/cmake/mingw.cmake
made_as=

# once NAME: runs build_NAME in a folder of its own, unless what it would make is there, made the same way and from the same
# libraries before it. What it prints is kept in logs/NAME.log.
once() {
  local folder=$windows_cache/making/$1 mark=$windows_libraries/.made-$1 status
  made_as=$({ echo "$made_as"; declare -f "build_$1" cmake_library autoconf_library; cat "$toolchain"; } | sha256sum)
  [ "$(cat "$mark" 2>/dev/null)" = "$made_as" ] && return
  echo "Building $1 for Windows (see $windows_cache/logs/$1.log)"
  rm -rf "$folder"
  mkdir -p "$folder"
  # Not within a condition, where bash would go on behind a command that fails.
  set +e
  (set -e; cd "$folder"; "build_$1") >"$windows_cache/logs/$1.log" 2>&1
  status=$?
  set -e
  if [ "$status" -ne 0 ]; then
    tail -30 "$windows_cache/logs/$1.log" >&2
    echo "$1 could not be built for Windows." >&2
    exit 1
  fi
  rm -rf "$folder"
  echo "$made_as" >"$mark"
}

# cmake_library PACKAGE OPTION...: one that is built by CMake.
cmake_library() {
  cmake -S "$windows_cache/sources/$1" -B . -G Ninja --toolchain "$toolchain" -DQMX_WINDOWS_LIBRARIES="$windows_libraries" \
    -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$windows_libraries" -DBUILD_SHARED_LIBS=OFF "${@:2}"
  cmake --build .
  cmake --install .
}

# autoconf_library PACKAGE OPTION...: one that is built by make.
autoconf_library() {
  "$windows_cache/sources/$1/configure" --host=x86_64-w64-mingw32 --prefix="$windows_libraries" --enable-static --disable-shared \
    CC=x86_64-w64-mingw32-gcc-posix CXX=x86_64-w64-mingw32-g++-posix CC_FOR_BUILD=gcc "${@:2}"
  make -j "$(nproc)"
  make install
}

# Left out is what belongs to another platform or to programs of another kind; every library that Qt brings along is taken from
# it. wintab.h (tablets) is not in Debian's sources. Direct2D stays, since the fonts of DirectWrite rest on it.
build_qtbase() {
  local feature options=()
  for feature in sql dbus network vulkan concurrent xml icu pkg_config tabletevent glib gif; do
    options+=("-DFEATURE_$feature=OFF")
  done
  for feature in zlib png jpeg freetype harfbuzz pcre2 doubleconversion; do
    options+=("-DFEATURE_system_$feature=OFF")
  done
  cmake_library qt6-base $windows_qt_host -DINPUT_opengl=no -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF "${options[@]}"
}

# Proofs of digits and exact fractions rest on these. GMP chooses among its kernels by the processor it runs on.
build_gmp() {
  # Debian leaves the manual out, for its licence, which the configuration asks for all the same.
  mkdir -p "$windows_cache/sources/gmp/doc"
  printf 'all install:\n' >"$windows_cache/sources/gmp/doc/Makefile.in"
  autoconf_library gmp --enable-fat
}

build_mpfr() {
  autoconf_library mpfr4 --with-gmp="$windows_libraries"
}

# Not for processors of a certain kind: what it would find here is this machine's. Optimised as Debian does it, for size, too, and
# not as a whole, which every program that is linked with it would wait for.
build_flint() {
  cmake_library flint -DCMAKE_C_FLAGS_RELEASE="-O2 -DNDEBUG" -DHAS_FLAG_UNROLL_LOOPS=OFF -DIPO_SUPPORTED=OFF -DHAS_FLAG_MPOPCNT=OFF -DFLINT_USES_POPCNT=OFF -DFLINT_USES_CPUSET=OFF
}

build_arb() {
  cmake_library flint-arb -DCMAKE_C_FLAGS_RELEASE="-O2 -DNDEBUG"
}

# The reader of compiled help, whose sources take a function of the C library for granted that Windows has not, and would keep
# the file from everybody else while it is open.
build_chm() {
  local source=$windows_cache/sources/chmlib/src
  sed '/CreateFileA(filename/,/NULL)/s/^ *0,/FILE_SHARE_READ,/' "$source/chm_lib.c" >chm_lib.c
  grep -A 3 'CreateFileA(filename' chm_lib.c | grep -q FILE_SHARE_READ
  x86_64-w64-mingw32-gcc-posix -O2 -Dffs=__builtin_ffs -I "$source" -c chm_lib.c "$source/lzx.c"
  x86_64-w64-mingw32-ar rcs libchm.a chm_lib.o lzx.o
  install -D -m 644 -t "$windows_libraries/lib" libchm.a
  install -D -m 644 -t "$windows_libraries/include" "$source/chm_lib.h"
}

# Each library's own build, and the source package it comes from. Later ones may need earlier ones.
while read -r name package; do
  fetch "$package"
  once "$name"
done <<'LIBRARIES'
qtbase qt6-base
gmp gmp
mpfr mpfr4
flint flint
arb flint-arb
chm chmlib
LIBRARIES
