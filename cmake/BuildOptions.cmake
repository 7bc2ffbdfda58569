# How everything here is compiled: the language, the warnings, hidden symbols and the hardened link.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_compile_options(
  -Wall -Wextra -Wpedantic -Werror
  -fstack-protector-strong -fstack-clash-protection -fcf-protection
  # Assertion reports and debug information name files as they lie in the tree: where it was built leaves no
  # trace. The build folder may lie in the tree, and the last that fits is taken.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${PROJECT_BINARY_DIR}=.
  # _FORTIFY_SOURCE needs optimisation.
  "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack -Wl,--as-needed)

set(VRRP_VALID_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")
option(VRRP_VALID_FUZZ "Build the fuzz targets; Clang only" OFF)
if(VRRP_VALID_FUZZ)
  set(VRRP_VALID_SANITIZE fuzzer-no-link,address,undefined)
endif()
if(VRRP_VALID_SANITIZE)
  add_compile_options(-fsanitize=${VRRP_VALID_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer -U_FORTIFY_SOURCE)
  add_link_options(-fsanitize=${VRRP_VALID_SANITIZE})
endif()

option(VRRP_VALID_COVERAGE "Count which lines and branches of src/ run" OFF)
