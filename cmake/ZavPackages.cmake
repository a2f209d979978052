# Debian packages, one per install component; scripts/package makes them.

set(ZAV_MAINTAINER "The libzav authors <libzav@libzav.invalid>")

# Documentation that every package carries, under its own name.
find_program(GZIP gzip)
mark_as_advanced(GZIP)
if(GZIP)
    execute_process(
        COMMAND "${GZIP}" -9nc "${PROJECT_SOURCE_DIR}/packaging/changelog"
        OUTPUT_FILE "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
        COMMAND_ERROR_IS_FATAL ANY)
endif()

set(CPACK_COMPONENTS_ALL "")

# zav_package(<component> SECTION <section> MULTI_ARCH <value> SUMMARY <line> DESCRIPTION <text>
#             [DEPENDS <packages>] [SUGGESTS <packages>] [LINTIAN_OVERRIDES <line>...])
# <component> becomes the Debian package of the same name.
macro(zav_package component)
    cmake_parse_arguments(package "" "SECTION;MULTI_ARCH;SUMMARY;DESCRIPTION;DEPENDS;SUGGESTS"
        "LINTIAN_OVERRIDES" ${ARGN})
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    string(TOUPPER ${component} name)
    set(CPACK_DEBIAN_${name}_PACKAGE_NAME ${component})
    # CPack has no variable of its own for the field Multi-Arch before CMake 3.31.
    set(CPACK_DEBIAN_${name}_PACKAGE_SECTION
        "${package_SECTION}\nMulti-Arch: ${package_MULTI_ARCH}")
    set(CPACK_DEBIAN_${name}_DESCRIPTION "${package_SUMMARY}\n${package_DESCRIPTION}")
    set(CPACK_DEBIAN_${name}_PACKAGE_DEPENDS "${package_DEPENDS}")
    set(CPACK_DEBIAN_${name}_PACKAGE_SUGGESTS "${package_SUGGESTS}")
    list(JOIN package_LINTIAN_OVERRIDES "\n" overrides)
    file(CONFIGURE OUTPUT lintian-overrides/${component} CONTENT
"# It is not uploaded to Debian.
${component}: initial-upload-closes-no-bugs
${overrides}
")
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/lintian-overrides/${component}"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides"
        COMPONENT ${component} EXCLUDE_FROM_ALL)
    if(GZIP)
        install(FILES packaging/copyright "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${component}"
            COMPONENT ${component} EXCLUDE_FROM_ALL)
    endif()
endmacro()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE libzav)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${ZAV_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(zav_deb_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

# What the programs link to is found by their soname among the target's packages.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}")

set(ZAV_PACKAGE_SYSROOT "" CACHE PATH
    "The target's packages, unpacked, when packages are made for another architecture")
if(CMAKE_CROSSCOMPILING)
    execute_process(
        COMMAND dpkg-architecture -f -t "${CMAKE_LIBRARY_ARCHITECTURE}" -q DEB_HOST_ARCH
        OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_ARCHITECTURE
        OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    configure_file(packaging/dpkg-shlibdeps.in dpkg-shlibdeps @ONLY)
    configure_file(packaging/CPackCross.cmake.in CPackCross.cmake @ONLY)
    set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_BINARY_DIR}/CPackCross.cmake")
endif()

zav_package(libzav0
    SECTION libs
    MULTI_ARCH same
    LINTIAN_OVERRIDES
        "# CPack writes the scripts. With the trigger they are idle, and without harm."
        "libzav0: maintscript-calls-ldconfig"
    SUMMARY "read access to a database of fault definitions"
    DESCRIPTION
"libzav reads the definitions of fault types, and the texts that describe them
in several languages, from a SQLite file.
.
This package holds the shared library.")
set(CPACK_DEBIAN_LIBZAV0_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")

zav_package(libzav-dev
    SECTION libdevel
    MULTI_ARCH same
    DEPENDS "libzav0 (= ${zav_deb_version})"
    SUGGESTS "libsqlite3-dev, zav"
    SUMMARY "read access to a database of fault definitions (development files)"
    DESCRIPTION
"libzav reads the definitions of fault types, and the texts that describe them
in several languages, from a SQLite file.
.
This package holds the headers, and the files for CMake and pkg-config.")

if(ZAV_BUILD_TOOLS)
    zav_package(zav
        SECTION utils
        MULTI_ARCH foreign
        DEPENDS "libzav0 (= ${zav_deb_version})"
        SUGGESTS sqlite3
        SUMMARY "look at a database of fault definitions"
        DESCRIPTION
"libzav reads the definitions of fault types, and the texts that describe them
in several languages, from a SQLite file.
.
This package holds the command zav, which shows what an application gets from
such a file, writes it as SQL, and finds what would surprise an application; and
the schema of the database.")
endif()

include(CPack)
