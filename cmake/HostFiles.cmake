# For whoever hosts the plug-in: where it lies, for CMake's find_package(vrrp_valid) and for pkg-config.
include(CMakePackageConfigHelpers)

set(plugin ${VRRP_VALID_LIBDIR}/${CMAKE_SHARED_LIBRARY_PREFIX}vrrp_valid${CMAKE_SHARED_LIBRARY_SUFFIX})
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vrrp_valid)
configure_package_config_file(cmake/vrrp_valid-config.cmake.in vrrp_valid-config.cmake
  INSTALL_DESTINATION ${package_dir} PATH_VARS plugin NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(vrrp_valid-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vrrp_valid-config.cmake ${PROJECT_BINARY_DIR}/vrrp_valid-config-version.cmake
  DESTINATION ${package_dir} COMPONENT plugin)

# Wherever the tree is installed to: pkg-config knows its own file's place.
file(RELATIVE_PATH prefix_of_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/vrrp_valid.pc.in vrrp_valid.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vrrp_valid.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT plugin)
