# SPDX-License-Identifier: MIT
# Toolchain for Windows: compiled here, run under wine. QMX_WINDOWS_LIBRARIES names the folder of the libraries that have been
# compiled for it (see scripts/windows/libraries.sh); without them only the units that need none can be built.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# The stack of Windows is aligned to 16 bytes, and g++ takes it for aligned enough for its wide vectors: the assembler makes
# moves of them that fault on no address.
set(CMAKE_C_FLAGS_INIT "-Wa,-muse-unaligned-vector-move")
set(CMAKE_CXX_FLAGS_INIT "-Wa,-muse-unaligned-vector-move")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_FIND_ROOT_PATH ${QMX_WINDOWS_LIBRARIES} /usr/x86_64-w64-mingw32)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QMX_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
find_program(WINE NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
set(CMAKE_CROSSCOMPILING_EMULATOR ${WINE})
