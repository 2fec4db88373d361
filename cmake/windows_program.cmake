# SPDX-License-Identifier: MIT
# What the program needs to be one of Windows: no console, an icon, a manifest, Qt's plugins within, and no symbols.
enable_language(RC)
set(qmx_manifest ${CMAKE_CURRENT_BINARY_DIR}/qmx.manifest)
configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/qmx.manifest ${qmx_manifest} @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/qmx.rc.in ${CMAKE_CURRENT_BINARY_DIR}/qmx.rc @ONLY)
target_sources(qmx PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/qmx.rc)
set_target_properties(qmx PROPERTIES WIN32_EXECUTABLE ON)
target_link_options(qmx PRIVATE -s)
