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
file(STRINGS src/lib/platform.h headers REGEX "^#include <")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS src/lib/platform.h)
list(TRANSFORM headers REPLACE "#include <(.*)>" "\\1")
foreach(header ${headers})
  if(NOT EXISTS ${sdk}/include/${header})
    string(APPEND lacks
      "\n  include/${header}: not there; src/lib/platform.h is where a header of another name is given")
  endif()
endforeach()
foreach(library confd qelconfd nettypes)
  string(TOUPPER VRRP_VALID_${library}_LIBRARY given)
  set(${given} "" CACHE STRING
    "lib${library} of the SDK, where it is not in one of its library folders; behind a static one, what it needs")
  set(${library}_needs ${${given}})
  list(POP_FRONT ${library}_needs ${library}_file)
  if(NOT ${library}_file)
    find_library(${library}_file ${library} PATHS ${sdk} PATH_SUFFIXES ${sdk_lib_folders}
      NO_CACHE NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  endif()
  if(NOT EXISTS ${${library}_file})
    list(JOIN sdk_lib_folders ", " folders)
    string(APPEND lacks "\n  lib${library}: not in ${folders}; set ${given} to the file")
  endif()
endforeach()
if(lacks)
  message(FATAL_ERROR "The router SDK that VRRP_VALID_PLATFORM names, ${sdk}, is not complete:${lacks}")
endif()

foreach(library confd qelconfd nettypes)
  if(${library}_file MATCHES "\\.a$")
    add_library(${library} STATIC IMPORTED)
  else()
    add_library(${library} SHARED IMPORTED)
    # Of one without a SONAME the linker would write down where it lies on this machine.
    execute_process(COMMAND ${CMAKE_READELF} -d ${${library}_file} OUTPUT_VARIABLE dynamic ERROR_QUIET)
    if(NOT dynamic MATCHES "SONAME")
      set_target_properties(${library} PROPERTIES IMPORTED_NO_SONAME ON)
    endif()
  endif()
  set_target_properties(${library} PROPERTIES IMPORTED_LOCATION ${${library}_file})
  target_include_directories(${library} SYSTEM INTERFACE ${sdk}/include)
  target_link_libraries(${library} INTERFACE ${${library}_needs})
  message(STATUS "lib${library}: ${${library}_file} ${${library}_needs}")
endforeach()

# What the plug-in uses of each library is compiled and linked once on its own, as the plug-in is.
foreach(library confd qelconfd nettypes)
  try_compile(sdk_offers ${PROJECT_BINARY_DIR}/sdk-check SOURCES ${PROJECT_SOURCE_DIR}/cmake/sdk/${library}.cpp
    CMAKE_FLAGS -DINCLUDE_DIRECTORIES=${PROJECT_SOURCE_DIR}/src/lib
    COMPILE_DEFINITIONS -fPIC LINK_OPTIONS -shared -Wl,--no-undefined LINK_LIBRARIES ${library}
    CXX_STANDARD ${CMAKE_CXX_STANDARD} CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS ${CMAKE_CXX_EXTENSIONS}
    OUTPUT_VARIABLE said)
  if(NOT sdk_offers)
    message(FATAL_ERROR "The router SDK in ${sdk} is complete, but its lib${library} differs from what the plug-in "
      "uses: cmake/sdk/${library}.cpp cannot be built with ${sdk}/include and ${${library}_file}.\n${said}")
  endif()
endforeach()
