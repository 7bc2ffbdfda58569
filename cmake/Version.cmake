# The version is the one that CHANGELOG.md begins with.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../CHANGELOG.md vrrp_valid_releases REGEX "^## ")
list(GET vrrp_valid_releases 0 vrrp_valid_release)
if(NOT vrrp_valid_release MATCHES "^## ([0-9.]+) \\(([0-9-]+)\\)$")
  message(FATAL_ERROR "CHANGELOG.md: \"${vrrp_valid_release}\" is not \"## VERSION (YYYY-MM-DD)\"")
endif()
set(VRRP_VALID_VERSION ${CMAKE_MATCH_1})
set(VRRP_VALID_RELEASE_DATE ${CMAKE_MATCH_2})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/../CHANGELOG.md)
