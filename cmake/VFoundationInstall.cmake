# Installs the library with its headers, a package config (find_package(VFoundation)) and a pkg-config file:
# component Runtime has the shared library, component Development all that a program is built with.

include(CMakePackageConfigHelpers)

set(vfoundation_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VFoundation")

install(TARGETS VFoundation EXPORT VFoundationTargets
    LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
        PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
    ARCHIVE COMPONENT Development
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/VFoundation" COMPONENT Development
    FILE_SET generated DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/VFoundation" COMPONENT Development)
install(EXPORT VFoundationTargets NAMESPACE VFoundation::
    DESTINATION "${vfoundation_cmake_dir}" COMPONENT Development)
if(TARGET VFoundationStatic)
    install(TARGETS VFoundationStatic EXPORT VFoundationStaticTargets ARCHIVE COMPONENT Development)
    install(EXPORT VFoundationStaticTargets NAMESPACE VFoundation::
        DESTINATION "${vfoundation_cmake_dir}" COMPONENT Development)
endif()

# The pkg-config modules of the libraries that VFoundation calls: what a program needs that links it statically.
set(vfoundation_modules "")
get_target_property(vfoundation_libraries VFoundation LINK_LIBRARIES)
foreach(library IN LISTS vfoundation_libraries)
    if(library MATCHES "^PkgConfig::(VFoundation_.*)$")
        list(APPEND vfoundation_modules "${${CMAKE_MATCH_1}_MODULE_NAME}")
    endif()
endforeach()
list(REMOVE_DUPLICATES vfoundation_modules)
list(JOIN vfoundation_modules " " vfoundation_modules)

get_target_property(vfoundation_type VFoundation TYPE)
if(vfoundation_type STREQUAL "STATIC_LIBRARY")
    set(vfoundation_is_static ON)
else()
    set(vfoundation_is_static OFF)
endif()
configure_package_config_file(cmake/VFoundationConfig.cmake.in
    "${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfig.cmake"
    INSTALL_DESTINATION "${vfoundation_cmake_dir}")
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfigVersion.cmake"
    cmake/VFoundationDependencies.cmake
    DESTINATION "${vfoundation_cmake_dir}" COMPONENT Development)

# The pkg-config file. Its prefix follows from its own place, so that moved trees work; an absolute library folder has
# the prefix that is installed to.
set(vfoundation_pc_private "")
if(vfoundation_is_static OR TARGET VFoundationStatic)
    set(vfoundation_pc_private "Requires.private: ${vfoundation_modules}")
endif()
foreach(folder IN ITEMS INCLUDEDIR LIBDIR)
    set(vfoundation_pc_${folder} "${CMAKE_INSTALL_${folder}}")
    if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
        string(PREPEND vfoundation_pc_${folder} "\${prefix}/")
    endif()
endforeach()
configure_file(cmake/vfoundation.pc.in "${CMAKE_CURRENT_BINARY_DIR}/vfoundation.pc.in" @ONLY)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(vfoundation_pc_prefix "\${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH vfoundation_pc_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    string(REGEX REPLACE "/$" "" vfoundation_pc_prefix "\\\${pcfiledir}/${vfoundation_pc_prefix}")
endif()
install(CODE "
    file(READ \"${CMAKE_CURRENT_BINARY_DIR}/vfoundation.pc.in\" text)
    file(WRITE \"${CMAKE_CURRENT_BINARY_DIR}/vfoundation.pc\" \"prefix=${vfoundation_pc_prefix}\n\${text}\")"
    COMPONENT Development)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/vfoundation.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT Development)
