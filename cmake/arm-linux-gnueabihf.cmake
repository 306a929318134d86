# 32-bit ARM with Debian's cross compiler. The C and C++ runtimes are the compiler's own; the
# libraries come from the folder that cmake/arm-sysroot.sh fills.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

# GCC notes at every use of some containers that GCC 7.1 changed how they are passed.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

set(ECF_ARM_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/arm-sysroot)
cmake_path(NORMAL_PATH ECF_ARM_SYSROOT)
if(NOT EXISTS ${ECF_ARM_SYSROOT}/usr)
  message(FATAL_ERROR "There is no ${ECF_ARM_SYSROOT}: run cmake/arm-sysroot.sh first")
endif()

set(CMAKE_FIND_ROOT_PATH ${ECF_ARM_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_DIR} "")
set(ENV{PKG_CONFIG_LIBDIR}
  ${ECF_ARM_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig:${ECF_ARM_SYSROOT}/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${ECF_ARM_SYSROOT})

# The loader and the runtimes are found below -L, the sysroot's libraries by their run path.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static -L /usr/arm-linux-gnueabihf)
