# The platform libraries of a router SDK, under the names that the local ones have.
foreach(library confd qelconfd nettypes)
  find_library(VRRP_VALID_${library} ${library}
    PATHS ${VRRP_VALID_PLATFORM}/lib NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  add_library(${library} UNKNOWN IMPORTED)
  set_target_properties(${library} PROPERTIES
    IMPORTED_LOCATION ${VRRP_VALID_${library}}
    INTERFACE_INCLUDE_DIRECTORIES ${VRRP_VALID_PLATFORM}/include)
endforeach()
