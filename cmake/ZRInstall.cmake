# Installation: the module's libraries with a version and SONAME, the viewer and the sample writer, the
# public headers and a CMake package (find_package(ZRVtkLib)), the desktop integration of the viewer,
# and a Debian package of all of it through CPack (cpack -G DEB in the build folder).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(ZR_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/kestrix-zr)
set(ZR_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZRVtkLib)
set(ZR_INSTALLED_LIBRARIES ZRVtkLib zorelib zorekestrix ZRComponents plottaro)
set(ZR_INSTALLED_PROGRAMS kestrix-viewer kestrix-sample)

# 0.x releases may break the ABI with each minor version, so the SONAME carries both numbers.
set_target_properties(${ZR_INSTALLED_LIBRARIES} PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

# A host includes headers as the module's own code does ("pipeline/VXPipeline.h"), from the source
# tree while building and from the installed include folder after.
foreach(lib ${ZR_INSTALLED_LIBRARIES})
  set_property(TARGET ${lib} PROPERTY INTERFACE_INCLUDE_DIRECTORIES
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${ZR_INSTALL_INCLUDEDIR}>)
endforeach()

# Installed files find each other wherever the prefix lands (a scratch root of dpkg -x too): the
# libraries look beside themselves, the programs in the library folder. libzorekestrix.so is opened
# at run time from beside libzorelib.so, so it installs there with its unversioned name as well.
file(RELATIVE_PATH _zr_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(${ZR_INSTALLED_LIBRARIES} PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(${ZR_INSTALLED_PROGRAMS} PROPERTIES INSTALL_RPATH "$ORIGIN/${_zr_bin_to_lib}")

install(TARGETS ${ZR_INSTALLED_LIBRARIES} EXPORT ZRVtkLibTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS ${ZR_INSTALLED_PROGRAMS} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

foreach(dir data_bridge pipeline filters data_views colour views main annotations charts spreadsheets platform)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${dir}/ DESTINATION ${ZR_INSTALL_INCLUDEDIR}/${dir}
    FILES_MATCHING PATTERN "*.h" PATTERN "resources" EXCLUDE)
endforeach()

# The package re-finds the dependencies the module's targets name, with the same components.
string(REPLACE "VTK::" "" ZR_VTK_COMPONENTS "${ZR_VTK_LIBRARIES}")
set(ZR_QT_COMPONENTS ${_zr_qt_components})
list(REMOVE_ITEM ZR_QT_COMPONENTS Test)
install(EXPORT ZRVtkLibTargets NAMESPACE ZRVtkLib:: DESTINATION ${ZR_INSTALL_CMAKEDIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZRVtkLibConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZRVtkLibConfig.cmake INSTALL_DESTINATION ${ZR_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZRVtkLibConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZRVtkLibConfig.cmake ${PROJECT_BINARY_DIR}/ZRVtkLibConfigVersion.cmake
  DESTINATION ${ZR_INSTALL_CMAKEDIR})

# Desktop integration: the menu entry, the file types with their icons, and the manual page.
set(_zr_packaging ${PROJECT_SOURCE_DIR}/packaging)
install(FILES ${_zr_packaging}/kestrix-viewer.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${_zr_packaging}/kestrix-zr.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${_zr_packaging}/icons/kestrix-viewer.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${_zr_packaging}/icons/application-x-kestrix.svg
  ${_zr_packaging}/icons/application-x-kestrix-state.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes)

# The manual page is made from the built viewer's --help, so the two list the same options.
set(ZR_MAN_PAGE ${PROJECT_BINARY_DIR}/man/kestrix-viewer.1)
add_custom_command(OUTPUT ${ZR_MAN_PAGE}
  COMMAND ${CMAKE_COMMAND} -DVIEWER=$<TARGET_FILE:kestrix-viewer> -DOUTPUT=${ZR_MAN_PAGE}
          -DVERSION=${PROJECT_VERSION} -P ${PROJECT_SOURCE_DIR}/cmake/ZRManPage.cmake
  DEPENDS kestrix-viewer ${PROJECT_SOURCE_DIR}/cmake/ZRManPage.cmake
  COMMENT "Writing the kestrix-viewer manual page from its --help")
add_custom_target(kestrix-viewer-man ALL DEPENDS ${ZR_MAN_PAGE})
install(FILES ${ZR_MAN_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# The Debian package: its dependencies come from the libraries the installed files link
# (dpkg-shlibdeps), not from a list kept by hand.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrix-zr)
set(CPACK_PACKAGE_VENDOR KESTRIX)
set(CPACK_PACKAGE_CONTACT "KESTRIX-ZR developers <kestrix-zr@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Visualization module for materials data, and its viewer")
set(CPACK_PACKAGE_DESCRIPTION
  "libZRVtkLib, a Qt and VTK visualization module for materials data that a host application embeds,\n\
with its headers and CMake package, and kestrix-viewer, which opens .kestrix, VTK, STL and image files.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
# A host built against the package needs the headers of what the module's targets name.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS
  "cmake, qtbase5-dev, libqt5svg5-dev, libvtk9-dev, libvtk9-qt-dev, libtbb-dev, libfmt-dev, nlohmann-json3-dev, libhdf5-dev")
include(CPack)
