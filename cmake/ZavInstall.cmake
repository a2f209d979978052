# Lays out what is installed, in one component per Debian package.

include(CMakePackageConfigHelpers)

set(zav_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zav")

install(TARGETS zav EXPORT zavTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT libzav0
    NAMELINK_COMPONENT libzav-dev)
install(DIRECTORY include/zav
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT libzav-dev)
# The manual of the command needs it, the command itself does not: installed without it, too.
install(FILES db/schema.sql
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zav" COMPONENT zav)

# find_package(zav)
install(EXPORT zavTargets NAMESPACE zav::
    DESTINATION "${zav_cmake_dir}" COMPONENT libzav-dev)
configure_package_config_file(cmake/zavConfig.cmake.in zavConfig.cmake
    INSTALL_DESTINATION "${zav_cmake_dir}"
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(zavConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
        "${CMAKE_CURRENT_BINARY_DIR}/zavConfig.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/zavConfigVersion.cmake"
    DESTINATION "${zav_cmake_dir}" COMPONENT libzav-dev)

# pkg-config: the prefix is found from the file's own place, so that the tree can be moved.
set(zav_pc_dir "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH zav_pc_prefix "${zav_pc_dir}" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" zav_pc_prefix "${zav_pc_prefix}")
file(RELATIVE_PATH zav_pc_libdir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH zav_pc_includedir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
configure_file(cmake/zav.pc.in zav.pc @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/zav.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT libzav-dev)
