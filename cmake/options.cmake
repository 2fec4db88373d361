# SPDX-License-Identifier: MIT
# Everything our own targets are compiled with. Contraction is off because a fused multiply-add rounds once where the
# textbook loop rounds twice: the same input must give the same bits on every machine.
add_library(qmx_options INTERFACE)
target_compile_features(qmx_options INTERFACE cxx_std_20)
target_compile_options(qmx_options INTERFACE
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# g++ 12 takes a literal in front of a moved string for an overlapping copy (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(qmx_options INTERFACE -Wno-restrict)
endif()
if(MINGW)
  # Its C library takes roots without raising a fault; the processor's own, which need no errno, raise it.
  target_compile_options(qmx_options INTERFACE -fno-math-errno)
endif()
if(QMX_ASSERTIONS)
  target_compile_options(qmx_options INTERFACE -UNDEBUG)
endif()
if(QMX_SANITIZE)
  target_compile_options(qmx_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(qmx_options INTERFACE -fsanitize=address,undefined)
endif()
if(QMX_SANITIZE OR QMX_WATCH_THREADS)
  # For the tests that look at the C library's own memory, in whose place a sanitizer puts another.
  target_compile_definitions(qmx_options INTERFACE QMX_SANITIZED)
endif()
if(QMX_WATCH_THREADS)
  target_compile_options(qmx_options INTERFACE -fsanitize=thread)
  target_link_options(qmx_options INTERFACE -fsanitize=thread)
endif()
if(QMX_FUZZ)
  target_compile_options(qmx_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  target_link_options(qmx_options INTERFACE -fsanitize=address,undefined)
endif()
