# What `cmake --install` installs: the engine alone, the files by which CMake and pkg-config find it from
# another project, and what makes such a project. `cpack -G DEB` in a build folder makes Debian's package of the same.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS selvane EXPORT SelvaneTargets FILE_SET HEADERS)

install(PROGRAMS tools/replay DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME selvane-replay)

set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Selvane)
install(EXPORT SelvaneTargets NAMESPACE Selvane:: DESTINATION ${cmake_folder})
configure_package_config_file(cmake/SelvaneConfig.cmake.in ${PROJECT_BINARY_DIR}/SelvaneConfig.cmake
                              INSTALL_DESTINATION ${cmake_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/SelvaneConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/SelvaneConfig.cmake ${PROJECT_BINARY_DIR}/SelvaneConfigVersion.cmake
        DESTINATION ${cmake_folder})

# The file says where the prefix is from where it lies itself, so that the whole may be moved.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
string(REGEX REPLACE "[^/]+" ".." prefix_from_pkgconfig ${pkgconfig_folder})
if(WIN32)
  set(system_libraries "-lws2_32 -lwinmm")
else()
  set(system_packages ", x11")
endif()
configure_file(cmake/selvane.pc.in ${PROJECT_BINARY_DIR}/selvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/selvane.pc DESTINATION ${pkgconfig_folder})

if(NOT WIN32)
  install(TARGETS selvane_sprite)
  install(PROGRAMS new DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME selvane-new)
  install(DIRECTORY starter/ DESTINATION ${CMAKE_INSTALL_DATADIR}/selvane-starter USE_SOURCE_PERMISSIONS
          PATTERN build EXCLUDE PATTERN "*.log" EXCLUDE)
endif()

# A project that has this tree inside makes its own packages.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION
    "The static library, its headers, the files by which CMake and pkg-config find them, selvane-new,
 which makes a game to begin with, and selvane-sprite, which checks, shows and converts sprites.")
set(CPACK_DEBIAN_PACKAGE_NAME libselvane-dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Selvane developers <developers@selvane.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libsfml-dev (>= 2.5), libx11-dev, fonts-inconsolata, fonts-dejavu-core")
include(CPack)
