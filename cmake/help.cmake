# SPDX-License-Identifier: MIT
# The user's guide, compiled from docs/help into qmx.chm beside the program, and the library that reads it.
find_path(CHM_INCLUDE_DIR chm_lib.h)
find_library(CHM_LIBRARY chm)
find_program(CHMCMD chmcmd)
foreach(need CHM_INCLUDE_DIR CHM_LIBRARY CHMCMD)
  if(NOT ${need})
    message(FATAL_ERROR "The help needs chm_lib.h and libchm (Debian: libchm-dev) and chmcmd (Debian: fp-utils)")
  endif()
endforeach()
mark_as_advanced(CHM_INCLUDE_DIR CHM_LIBRARY CHMCMD)

add_library(chm INTERFACE)
target_include_directories(chm SYSTEM INTERFACE ${CHM_INCLUDE_DIR})
target_link_libraries(chm INTERFACE ${CHM_LIBRARY})

file(GLOB help_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/help/*)
set(QMX_HELP_FILE ${CMAKE_BINARY_DIR}/bin/qmx.chm)
set(help_work ${CMAKE_BINARY_DIR}/help)
# The compiler writes beside its sources, so it works on a copy.
add_custom_command(OUTPUT ${QMX_HELP_FILE}
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${help_work}
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/docs/help ${help_work}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/bin
  COMMAND ${CMAKE_COMMAND} -E chdir ${help_work} ${CHMCMD} qmx.hhp > ${CMAKE_BINARY_DIR}/help.log
  COMMAND ${CMAKE_COMMAND} -E copy ${help_work}/qmx.chm ${QMX_HELP_FILE}
  DEPENDS ${help_pages}
  COMMENT "Compiling the help")
add_custom_target(qmx_help DEPENDS ${QMX_HELP_FILE})
