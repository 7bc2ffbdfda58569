# The platform of a router SDK, under the names that the local one's libraries have. Whatever the SDK lacks is said
# here, all at once, before anything is compiled.
set(sdk ${VRRP_VALID_PLATFORM})
set(sdk_lib_folders lib/${CMAKE_LIBRARY_ARCHITECTURE} lib)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  list(INSERT sdk_lib_folders 1 lib64)
endif()
set(lacks "")

if(NOT IS_DIRECTORY ${sdk})
  message(FATAL_ERROR "VRRP_VALID_PLATFORM: there is no folder ${sdk}")
endif()
foreach(header confd_lib.h confd_maapi.h confd_cdb.h qelconfd.h
    nettypes/ipv4_addr_mask.h nettypes/ipv6_addr_mask.h nettypes/mac_addr.h)
  if(NOT EXISTS ${sdk}/include/${header})
    string(APPEND lacks
      "\n  include/${header}: not there; src/lib/platform.h is where a header of another name is given")
  endif()
endforeach()
foreach(library confd qelconfd nettypes)
  string(TOUPPER VRRP_VALID_${library}_LIBRARY file)
  set(${file} "" CACHE FILEPATH "lib${library} of the SDK, where it is not in one of its library folders")
  if(NOT ${file})
    find_library(${file}_FOUND ${library} PATHS ${sdk} PATH_SUFFIXES ${sdk_lib_folders}
      NO_CACHE NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    set(${file} ${${file}_FOUND})
  endif()
  if(NOT EXISTS ${${file}})
    list(JOIN sdk_lib_folders ", " folders)
    string(APPEND lacks "\n  lib${library}: not in ${folders}; set ${file} to the file")
  endif()
endforeach()
if(lacks)
  message(FATAL_ERROR "The router SDK that VRRP_VALID_PLATFORM names, ${sdk}, is not complete:${lacks}")
endif()

foreach(library confd qelconfd nettypes)
  string(TOUPPER VRRP_VALID_${library}_LIBRARY file)
  if(${file} MATCHES "\\.a$")
    add_library(${library} STATIC IMPORTED)
  else()
    add_library(${library} SHARED IMPORTED)
  endif()
  # Without a SONAME the linker would write down where the library lies on this machine.
  set_target_properties(${library} PROPERTIES IMPORTED_LOCATION ${${file}} IMPORTED_NO_SONAME ON)
  target_include_directories(${library} SYSTEM INTERFACE ${sdk}/include)
endforeach()

# What the plug-in uses of each library is compiled and linked once on its own.
foreach(library confd qelconfd nettypes)
  try_compile(sdk_offers ${PROJECT_BINARY_DIR}/sdk-check SOURCES ${PROJECT_SOURCE_DIR}/cmake/sdk/${library}.cpp
    LINK_LIBRARIES ${library} LINK_OPTIONS -Wl,--unresolved-symbols=ignore-in-shared-libs
    CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON OUTPUT_VARIABLE said)
  if(NOT sdk_offers)
    string(TOUPPER VRRP_VALID_${library}_LIBRARY file)
    message(FATAL_ERROR "The router SDK in ${sdk} is complete, but its lib${library} differs from what the plug-in "
      "uses: cmake/sdk/${library}.cpp cannot be built with ${sdk}/include and ${${file}}.\n${said}")
  endif()
endforeach()
