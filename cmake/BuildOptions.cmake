# How everything here is compiled: the language, the warnings, hidden symbols and the hardened link.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

set(CMAKE_CXX_STANDARD 17 CACHE STRING "The C++ standard, 17 or later")
set(CMAKE_CXX_STANDARD_REQUIRED ON)
option(CMAKE_CXX_EXTENSIONS "Compile with the compiler's extensions" OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_compile_options(-Wall -Wextra -Wpedantic
  # Assertion reports and debug information name files as they lie in the tree: where it was built leaves no
  # trace. The build folder may lie in the tree, and the last that fits is taken.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${PROJECT_BINARY_DIR}=.)

# Another compiler may warn of what ours does not, and whoever builds this must not fail for it.
option(VRRP_VALID_STRICT "Take warnings for errors" OFF)
if(VRRP_VALID_STRICT)
  add_compile_options(-Werror)
endif()

# Not every compiler and not every processor has each of these. A flag that is only warned of is not had.
set(CMAKE_REQUIRED_FLAGS -Werror)
foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "VRRP_VALID_HAS${flag}" has_flag)
  check_cxx_compiler_flag(${flag} ${has_flag})
  if(${has_flag})
    add_compile_options(${flag})
  endif()
endforeach()
foreach(flag -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack -Wl,--as-needed)
  string(MAKE_C_IDENTIFIER "VRRP_VALID_HAS${flag}" has_flag)
  check_linker_flag(CXX ${flag} ${has_flag})
  if(${has_flag})
    add_link_options(${flag})
  endif()
endforeach()
unset(CMAKE_REQUIRED_FLAGS)

set(VRRP_VALID_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")
option(VRRP_VALID_FUZZ "Build the fuzz targets; Clang only" OFF)
if(VRRP_VALID_FUZZ)
  set(VRRP_VALID_SANITIZE fuzzer-no-link,address,undefined)
endif()
if(VRRP_VALID_SANITIZE)
  add_compile_options(-fsanitize=${VRRP_VALID_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VRRP_VALID_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    add_compile_options(-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignore.txt)
  endif()
endif()

# Checked library calls need optimisation, which the last -O decides, and would hide calls from sanitizers.
string(TOUPPER CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE} build_type_flags)
string(REGEX MATCHALL "-O[0-9a-z]*" optimisations "${CMAKE_CXX_FLAGS} ${${build_type_flags}}")
list(POP_BACK optimisations optimisation)
if(optimisation AND NOT optimisation STREQUAL "-O0" AND NOT VRRP_VALID_SANITIZE)
  set(VRRP_VALID_FORTIFIED ON)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

option(VRRP_VALID_COVERAGE "Count which lines and branches of src/ run" OFF)
