# SPDX-License-Identifier: MIT
# What the program needs to be one of Windows: no console, an icon, a manifest, of Qt's plugins those it uses, and no symbols.
enable_language(RC)
set(qmx_manifest ${CMAKE_CURRENT_BINARY_DIR}/qmx.manifest)
configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/qmx.manifest ${qmx_manifest} @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/qmx.rc.in ${CMAKE_CURRENT_BINARY_DIR}/qmx.rc @ONLY)
target_sources(qmx PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/qmx.rc ${PROJECT_SOURCE_DIR}/packaging/windows/qt.qrc)
set_target_properties(qmx PROPERTIES WIN32_EXECUTABLE ON AUTORCC ON)
target_link_options(qmx PRIVATE -s)
# One file that is carried about: all is small but for what the processor spends its time in. The kernels ask for more themselves.
string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
foreach(library qmx_desktop qmx_derivation qmx_exchange)
  target_compile_options(${library} PRIVATE -Os)
endforeach()
file(GLOB qmx_commanding CONFIGURE_DEPENDS commands/*.cpp output/*.cpp workspace/*.cpp)
set_property(SOURCE ${qmx_commanding} ${qmx_derivation_writers} APPEND PROPERTY COMPILE_OPTIONS -Os)
qt_import_plugins(qmx INCLUDE Qt6::QWindowsIntegrationPlugin Qt6::QICOPlugin EXCLUDE Qt6::QMinimalIntegrationPlugin
  Qt6::QOffscreenIntegrationPlugin Qt6::QJpegPlugin Qt6::QWindowsVistaStylePlugin)

# What the packages for Windows hold.
install(TARGETS qmx RUNTIME DESTINATION .)
install(FILES ${QMX_HELP_FILE} ${PROJECT_SOURCE_DIR}/resources/pi_data.ico DESTINATION .)
