# SPDX-License-Identifier: MIT
# What "cmake --install" puts where. A component is a package: program (tesselink), window (tesselink-gui), development
# (tesselink-dev). The programs find their modules and lookup files from their own place (src/app/ProgramFolder.h).
include(CMakePackageConfigHelpers)

install(TARGETS tesselink-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
install(FILES ${PROJECT_BINARY_DIR}/ACADTBL.TBL "${PROJECT_BINARY_DIR}/\$CDF.MAP" "${PROJECT_BINARY_DIR}/\$LNGSL.DAT"
  DESTINATION ${CMAKE_INSTALL_DATADIR}/tesselink COMPONENT program)
# Manual pages and completion, where the build has made them.
install(DIRECTORY ${PROJECT_BINARY_DIR}/share/ DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT program OPTIONAL)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tesselink COMPONENT program)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tesselink COMPONENT program
  PATTERN library EXCLUDE PATTERN "*.py" EXCLUDE)

install(TARGETS tesselink-gui RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT window)
install(FILES packaging/tesselink-gui.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT window)
# What desktops need for menus, software centres and opening a drawing by a double click.
set(DESKTOP_ID org.tesselink.Tesselink)
install(FILES packaging/desktop/${DESKTOP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT window)
install(FILES packaging/desktop/${DESKTOP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT window)
install(FILES packaging/desktop/${DESKTOP_ID}.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT window)
install(FILES packaging/desktop/${DESKTOP_ID}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
  COMPONENT window)
foreach(size IN ITEMS 16 32 48 128)
  install(FILES packaging/desktop/icons/${size}.png RENAME ${DESKTOP_ID}.png
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps COMPONENT window)
endforeach()

# Core and formats as a library: find_package(Tesselink), target tesselink::tesselink.
set(TESSELINK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Tesselink)
install(TARGETS tesselink EXPORT tesselink ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY src/core src/formats DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tesselink COMPONENT development
  FILES_MATCHING PATTERN "*.h")
install(EXPORT tesselink NAMESPACE tesselink:: FILE TesselinkTargets.cmake DESTINATION ${TESSELINK_CMAKE_DIR}
  COMPONENT development)
set(TESSELINK_MODULE_DIR ${CMAKE_INSTALL_LIBDIR}/tesselink)
set(TESSELINK_DATA_DIR ${CMAKE_INSTALL_DATADIR}/tesselink)
configure_package_config_file(cmake/TesselinkConfig.cmake.in ${PROJECT_BINARY_DIR}/TesselinkConfig.cmake
  INSTALL_DESTINATION ${TESSELINK_CMAKE_DIR} PATH_VARS TESSELINK_MODULE_DIR TESSELINK_DATA_DIR)
# The library's interface may change with every minor version (docs/versions.md).
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TesselinkConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TesselinkConfig.cmake ${PROJECT_BINARY_DIR}/TesselinkConfigVersion.cmake
  DESTINATION ${TESSELINK_CMAKE_DIR} COMPONENT development)
install(DIRECTORY examples/library DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tesselink-dev/examples COMPONENT development)
