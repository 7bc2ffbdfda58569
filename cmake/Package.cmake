# What is installed beside the programs, and three Debian packages: the plug-in for whoever hosts it, the local platform
# for whoever tests with it, and the command with its models.
find_program(GZIP gzip REQUIRED)

set(docdir ${CMAKE_INSTALL_DATADIR}/doc/vrrp-valid)
configure_file(docs/vrrp-valid.1.in vrrp-valid.1 @ONLY)
execute_process(COMMAND ${GZIP} -9nkf vrrp-valid.1 WORKING_DIRECTORY ${PROJECT_BINARY_DIR} COMMAND_ERROR_IS_FATAL ANY)
install(FILES ${PROJECT_BINARY_DIR}/vrrp-valid.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES README.md DESTINATION ${docdir})
install(DIRECTORY docs examples DESTINATION ${docdir} PATTERN *.in EXCLUDE PATTERN *.sh EXCLUDE)
install(PROGRAMS examples/fleet/check-shard.sh examples/fleet/parallel.sh examples/fleet/slurm.sh
  DESTINATION ${docdir}/examples/fleet)
install(FILES .pre-commit-hooks.yaml DESTINATION ${docdir}/examples RENAME pre-commit-hooks.yaml)

# The changes of this version, as Debian writes them.
file(READ CHANGELOG.md changes)
string(REGEX REPLACE "^.*\n## [^\n]*\n|\n## .*$" "" changes "${changes}")
string(REGEX REPLACE "\n- " "\n  * " changes "${changes}")
execute_process(COMMAND date --utc --rfc-email --date=${VRRP_VALID_RELEASE_DATE}
  OUTPUT_VARIABLE release_date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vrrp-valid)
set(CPACK_PACKAGE_CONTACT "libvrrp_valid developers <maintainers@vrrp-valid.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL plugin platform command)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The local platform's libraries are found by their place, not by a package's list.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_PLUGIN_PACKAGE_NAME vrrp-valid-plugin)
set(CPACK_DEBIAN_PLUGIN_DESCRIPTION "A library that a router's configuration manager, built on ConfD, loads to
check VRRP configuration before it is committed: virtual addresses, virtual
router identifiers, and the layer-3 interfaces that VRRP runs on.
.
Whoever loads it brings the platform's libraries.")
set(CPACK_DEBIAN_PLATFORM_PACKAGE_NAME vrrp-valid-platform)
set(CPACK_DEBIAN_PLATFORM_DESCRIPTION "A stand-in for a router's platform: its configuration in memory, and a host
that loads a validation plug-in and hands it requests.
.
The package holds the libraries and their headers, for tests of such hosts and
plug-ins.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME vrrp-valid)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS
  "vrrp-valid-plugin (= ${PROJECT_VERSION}), vrrp-valid-platform (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_COMMAND_DESCRIPTION "Checks a router's VRRP configuration, as JSON or NETCONF XML, with the rules
that its configuration manager applies. Nothing of a router is needed.
.
The package holds the YANG models, documentation and examples.")

install(FILES docs/integration.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vrrp-valid-plugin COMPONENT plugin)
foreach(component plugin platform command)
  string(TOUPPER CPACK_DEBIAN_${component}_PACKAGE_NAME package)
  set(package ${${package}})
  file(CONFIGURE OUTPUT ${package}/changelog @ONLY CONTENT
    "@package@ (@PROJECT_VERSION@) unstable; urgency=medium\n@changes@\n -- @CPACK_PACKAGE_CONTACT@  @release_date@\n")
  execute_process(COMMAND ${GZIP} -9nkf changelog
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/${package} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}/changelog.gz packaging/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endforeach()

# CMake makes folders under the umask of whoever packs.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackagePermissions.cmake)
include(CPack)
