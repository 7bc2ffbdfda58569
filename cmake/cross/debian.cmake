# What the toolchains have in common: Debian's cross compiler for ${triple}, unless another is given, and libraries of the target below
# CMAKE_FIND_ROOT_PATH, which whoever builds gives. Target programs run in an emulator of `emulated` processors.
set(CMAKE_SYSTEM_NAME Linux)
if(NOT CMAKE_CXX_COMPILER)
  set(CMAKE_CXX_COMPILER ${triple}-g++)
endif()
set(CMAKE_CXX_COMPILER_TARGET ${triple})  # Clang's; GCC's is in its name
set(CMAKE_LIBRARY_ARCHITECTURE ${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
if(CMAKE_FIND_ROOT_PATH)  # which CMake's own trials do not see
  set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_FIND_ROOT_PATH})
  set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_FIND_ROOT_PATH}/usr/lib/${triple}/pkgconfig)
  # Where the compiler and the linker would look were these the machine's own libraries.
  set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES ${CMAKE_FIND_ROOT_PATH}/usr/include/${triple})
  set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,-rpath-link,${CMAKE_FIND_ROOT_PATH}/usr/lib/${triple})
endif()
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${emulated}-static -L ${CMAKE_FIND_ROOT_PATH})
