# Debian packages through CPack (preset deb): libvfoundation1, libvfoundation-dev and quillmark-launcher, one for each of
# the components Runtime, Development and Launcher, and the debug symbols of each. Component Sample stays out of them.
#   cmake --workflow --preset deb        makes build/deb/*.deb and *.ddeb

set(VFOUNDATION_MAINTAINER "VFoundation maintainers <vfoundation@maintainer.invalid>" CACHE STRING
    "Who maintains the packages, as \"Name <address>\"")
set(VFOUNDATION_LICENSE_FILE "" CACHE FILEPATH "The licence, for the packages' copyright files; empty: none is given")

find_program(DPKG_QUERY dpkg-query)
if(NOT DPKG_QUERY)
    return()
endif()

# The packages that hold the development files of what the static library calls.
set(development_packages "")
foreach(library IN LISTS vfoundation_libraries)
    if(library MATCHES "^PkgConfig::(VFoundation_.*)$")
        set(module "${${CMAKE_MATCH_1}_MODULE_NAME}")
        pkg_get_variable(folder ${module} pcfiledir)
        execute_process(COMMAND "${DPKG_QUERY}" --search "${folder}/${module}.pc"
            OUTPUT_VARIABLE owner ERROR_QUIET)
        if(owner MATCHES "^([^:,]+)")
            list(APPEND development_packages "${CMAKE_MATCH_1}")
        endif()
    endif()
endforeach()
list(REMOVE_DUPLICATES development_packages)
list(JOIN development_packages ", " development_packages)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vfoundation)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "${VFOUNDATION_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_COMPONENTS_ALL Runtime Development Launcher)
set(CPACK_SET_DESTDIR ON) # the menu entry and the policy hold paths below the prefix
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON) # what is stripped off the programs: <package>-dbgsym_*.ddeb
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0upstream1) # not made by the distribution
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/foundation")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvfoundation${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_MULTIARCH same)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    "${CMAKE_CURRENT_LIST_DIR}/triggers;${PROJECT_BINARY_DIR}/packaging/shlibs;${PROJECT_BINARY_DIR}/packaging/symbols")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "general-purpose C++ foundation library
Counted objects with run-time classes, strings and paths, containers and
lock-free rings, XML and chunked binary files, threads and a job server, a log,
messages, images and graphs.
.
This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvfoundation-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libvfoundation${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), ${development_packages}")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "general-purpose C++ foundation library (development files)
Counted objects with run-time classes, strings and paths, containers and
lock-free rings, XML and chunked binary files, threads and a job server, a log,
messages, images and graphs.
.
This package holds the headers, the static library and the files for CMake and
pkg-config.")

set(CPACK_DEBIAN_LAUNCHER_PACKAGE_NAME quillmark-launcher)
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_DEPENDS
    "libvfoundation${PROJECT_VERSION_MAJOR} (>= ${PROJECT_VERSION}), pkexec | sudo")
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_RECOMMENDS "pkexec, polkitd")
set(CPACK_DEBIAN_LAUNCHER_DESCRIPTION "start the Quillmark guide or installer as administrator
Asks for an administrator's password and then starts the program that belongs
to it: the guide beside its bundle, or the installer or uninstaller inside it.
An installed launcher starts only these, on behalf of the user who started it.")

# What only packages have: compressed pages, changelog, copyright, and the control files of the library.
string(SUBSTRING "${VFOUNDATION_DATE}" 0 4 packaging_year)
execute_process(COMMAND "${CMAKE_COMMAND}" -E env LC_ALL=C date -u -d "${VFOUNDATION_DATE}" "+%a, %d %b %Y %T +0000"
    OUTPUT_VARIABLE packaging_date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file("${CMAKE_CURRENT_LIST_DIR}/changelog.in" "${PROJECT_BINARY_DIR}/packaging/changelog" @ONLY)
if(VFOUNDATION_LICENSE_FILE)
    file(READ "${VFOUNDATION_LICENSE_FILE}" packaging_license)
else()
    set(packaging_license "Copyright ${packaging_year} the authors of VFoundation, who have not chosen a licence yet.\n")
endif()
configure_file("${CMAKE_CURRENT_LIST_DIR}/copyright.in" "${PROJECT_BINARY_DIR}/packaging/copyright" @ONLY)
file(WRITE "${PROJECT_BINARY_DIR}/packaging/shlibs" "")
file(WRITE "${PROJECT_BINARY_DIR}/packaging/symbols" "")
configure_file("${CMAKE_CURRENT_LIST_DIR}/Complete.cmake.in" "${PROJECT_BINARY_DIR}/packaging/Complete.cmake" @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_BINARY_DIR}/packaging/Complete.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/CompleteRuntime.cmake")

include(CPack)
