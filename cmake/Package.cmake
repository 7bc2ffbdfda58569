# The Debian package: the plug-in, the command with its models and local platform, manual and completion.
configure_file(docs/vrrp-valid.1.in vrrp-valid.1 @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vrrp-valid.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES docs/report.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/vrrp-valid)
install(FILES app/completion/vrrp-valid DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vrrp-valid)
set(CPACK_PACKAGE_CONTACT "libvrrp_valid developers <maintainers@vrrp-valid.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The local platform is private to the package: it is neither looked up elsewhere nor offered to others.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_STRIP_FILES ON)
# CMake makes folders under the umask of whoever packs.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackagePermissions.cmake)
include(CPack)
