# SPDX-License-Identifier: MIT
# Debian packages by "cpack"; packaging/make-packages.sh makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tesselink)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Tesselink developers <developers@tesselink.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://github.com/tesselink/tesselink)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL program window development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each has its own
set(SAME_VERSION "= ${PROJECT_VERSION}")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME tesselink)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "tesselink-gui, parallel")
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "converter for vector map drawings (command line)
Tesselink converts the vector drawings of oil-and-gas and land-survey
mapping between ESRI shapefiles, AutoCAD DXF, Landmark ASCII, Geographix
CDF, T/R Digitizer, GeoJSON and GeoPackage files, element by element, and
reports whatever it could not carry over.
.
This package holds the command line, which needs no desktop.")

set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME tesselink-gui)
set(CPACK_DEBIAN_WINDOW_PACKAGE_SECTION science)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "tesselink (${SAME_VERSION})")
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS qt6-translations-l10n)  # buttons and file dialogs in other languages
set(CPACK_DEBIAN_WINDOW_DESCRIPTION "converter for vector map drawings (window)
Tesselink converts the vector drawings of oil-and-gas and land-survey
mapping between ESRI shapefiles, AutoCAD DXF, Landmark ASCII, Geographix CDF
and T/R Digitizer files, element by element, and reports whatever it could
not carry over.
.
This package holds the window, with a preview of what is to be converted.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME tesselink-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "tesselink (${SAME_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "converter for vector map drawings (library)
Tesselink converts the vector drawings of oil-and-gas and land-survey
mapping between ESRI shapefiles, AutoCAD DXF, Landmark ASCII, Geographix
CDF, T/R Digitizer, GeoJSON and GeoPackage files, element by element, and
reports whatever it could not carry over.
.
This package holds its readers, writers and conversion as a static C++
library for CMake: find_package(Tesselink).")

# What the policy of Debian asks of each package: licences and changes, and manual pages compressed, alike on any day.
if(TESSELINK_PACKAGE)
  execute_process(COMMAND gzip -9n -c ${PROJECT_SOURCE_DIR}/packaging/debian/changelog
    OUTPUT_FILE ${PROJECT_BINARY_DIR}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} COMPONENT)
    install(FILES packaging/debian/copyright ${PROJECT_BINARY_DIR}/changelog.gz
      DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME} COMPONENT ${component})
    install(CODE [[
      file(GLOB_RECURSE pages "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/man/*.[1-9]")
      if(pages)
        execute_process(COMMAND gzip -9nf ${pages} COMMAND_ERROR_IS_FATAL ANY)
      endif()]] COMPONENT ${component})
  endforeach()
endif()
include(CPack)
