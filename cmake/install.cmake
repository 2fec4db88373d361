# SPDX-License-Identifier: MIT
# What is installed where, below any prefix, and the Debian package.
include(GNUInstallDirs)
set(program_dir ${CMAKE_INSTALL_LIBEXECDIR}/orvane)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(resources ${PROJECT_SOURCE_DIR}/resources)

# The program looks for its help and icon beside itself, so they share a folder of their own; people call it by a link.
install(TARGETS qmx RUNTIME DESTINATION ${program_dir})
install(FILES ${QMX_HELP_FILE} ${resources}/pi_data.ico ${resources}/pi_data.svg ${resources}/pi_data_48.png
  DESTINATION ${program_dir})
file(RELATIVE_PATH program_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBEXECDIR}/orvane/qmx.exe)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/installed)
file(CREATE_LINK ${program_from_bin} ${PROJECT_BINARY_DIR}/installed/qmx SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/installed/qmx DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${packaging}/orvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/orvane.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${packaging}/org.orvane.Orvane.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 32 48 128 256)
  set(picture ${resources}/pi_data_${size}.png)
  install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/apps RENAME orvane.png)
  install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/mimetypes RENAME application-x-qmx.png)
endforeach()
install(FILES ${resources}/pi_data.svg DESTINATION ${icons}/scalable/apps RENAME orvane.svg)
install(FILES ${resources}/pi_data.svg DESTINATION ${icons}/scalable/mimetypes RENAME application-x-qmx.svg)

# Compressed without a time stamp, so that the same sources give the same package.
function(install_compressed source name destination)
  set(compressed ${PROJECT_BINARY_DIR}/installed/${name}.gz)
  add_custom_command(OUTPUT ${compressed} COMMAND gzip -9nc ${source} > ${compressed} DEPENDS ${source})
  add_custom_target(compressed_${name} ALL DEPENDS ${compressed})
  install(FILES ${compressed} DESTINATION ${destination})
endfunction()
install_compressed(${packaging}/qmx.1 qmx.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(${packaging}/changelog changelog ${CMAKE_INSTALL_DATADIR}/doc/orvane)
install(FILES ${packaging}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orvane)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvane)
set(CPACK_PACKAGE_CONTACT "Orvane developers <developers@orvane.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Reports are set in "Courier New", which this fixed-pitch font stands for.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info, desktop-file-utils, fonts-dejavu-core")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "workbench for numerical matrix computation")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Orvane computes with real matrices that are typed into grids: sum, difference,
product, determinant, trace, inverse, adjoint, transpose, LU and QR factors,
real eigenvalues and unit eigenvectors, tests of symmetry and definiteness,
and the solution of systems of linear equations.

Everything can be kept in project files that lose no digit, and printed. A
guide with worked examples is included.")
include(CPack)
