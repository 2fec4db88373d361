# SPDX-License-Identifier: MIT
# Where what is built once for Windows is kept: outside the build folder, so that it outlives that. To be sourced once
# a compiler is installed.

windows_cache=${QMX_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvane/windows}
windows_libraries=$windows_cache/libraries
# Qt's own tools run here, so they are the system's, which are of the same version.
windows_qt_host="-DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/$(gcc -print-multiarch)/cmake"
