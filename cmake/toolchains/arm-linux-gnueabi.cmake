# 32-bit ARM Linux, soft float, with Debian's cross compiler (package g++-arm-linux-gnueabi); for the
# rest like the one with hard float.
set(triplet arm-linux-gnueabi)
include("${CMAKE_CURRENT_LIST_DIR}/arm-linux-gnueabihf.cmake")
