# 32-bit ARM Linux, hard float, with Debian's cross compiler (package g++-arm-linux-gnueabihf).
#
# It knows no SQLite: -DSQLite3_INCLUDE_DIR=<sysroot>/usr/include and
# -DSQLite3_LIBRARY=<sysroot>/usr/lib/arm-linux-gnueabihf/libsqlite3.so name the target's.
# Programs for the target run under qemu-arm where there is one (package qemu-user).

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

if(NOT triplet)
    set(triplet arm-linux-gnueabihf)
endif()
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${triplet})

# Without the notes that GCC 7.1 changed how some arguments are passed: nothing older is linked to.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

# Nothing of the build machine is taken for the target's, its programs apart.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(ZAV_QEMU_ARM qemu-arm)
mark_as_advanced(ZAV_QEMU_ARM)
if(ZAV_QEMU_ARM AND NOT DEFINED CMAKE_CROSSCOMPILING_EMULATOR)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${ZAV_QEMU_ARM};-L;/usr/${triplet}")
endif()
