# Lays out what is installed.

# Makes folders to install into, those above them as well, that everybody can enter: CMake makes them
# as the umask of who installs has it. Those that are there already stay as they are.
function(zav_install_folders)
    foreach(folder IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH folder BASE_DIRECTORY "/<prefix>")
        string(REPLACE "/<prefix>" "\${CMAKE_INSTALL_PREFIX}" folder "${folder}")
        install(CODE "
            set(missing)
            set(folder \"\$ENV{DESTDIR}${folder}\")
            cmake_path(ABSOLUTE_PATH folder)
            while(NOT EXISTS \"\${folder}\")
                list(PREPEND missing \"\${folder}\")
                cmake_path(GET folder PARENT_PATH folder)
            endwhile()
            foreach(folder IN LISTS missing)
                file(MAKE_DIRECTORY \"\${folder}\")
                file(CHMOD \"\${folder}\" DIRECTORY_PERMISSIONS
                    OWNER_READ OWNER_WRITE OWNER_EXECUTE
                    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
            endforeach()")
    endforeach()
endfunction()

zav_install_folders("${CMAKE_INSTALL_LIBDIR}")

# The library itself goes with whatever is installed: an application does not start without it.
if(NOT ZAV_INSTALL)
    install(TARGETS zav
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" NAMELINK_SKIP)
    return()
endif()

include(CMakePackageConfigHelpers)

set(zav_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zav")
zav_install_folders("${CMAKE_INSTALL_INCLUDEDIR}/zav/detail" "${CMAKE_INSTALL_DATADIR}/zav"
    "${zav_cmake_dir}" "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(TARGETS zav EXPORT zavTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(DIRECTORY include/zav
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
# The manual of the command needs it, the command itself does not: installed without it, too.
install(FILES db/schema.sql
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zav")

# find_package(zav)
install(EXPORT zavTargets NAMESPACE zav::
    DESTINATION "${zav_cmake_dir}")
configure_package_config_file(cmake/zavConfig.cmake.in zavConfig.cmake
    INSTALL_DESTINATION "${zav_cmake_dir}"
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(zavConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
        "${CMAKE_CURRENT_BINARY_DIR}/zavConfig.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/zavConfigVersion.cmake"
    DESTINATION "${zav_cmake_dir}")

# pkg-config: the prefix is known only when it is installed.
set(zav_pc_dir "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH zav_pc_to_prefix "${zav_pc_dir}" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" zav_pc_to_prefix "${zav_pc_to_prefix}")
file(RELATIVE_PATH zav_pc_libdir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH zav_pc_includedir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
configure_file(cmake/installPkgConfig.cmake.in installPkgConfig.cmake @ONLY)
install(SCRIPT "${CMAKE_CURRENT_BINARY_DIR}/installPkgConfig.cmake")
