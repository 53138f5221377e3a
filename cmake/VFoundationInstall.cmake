# Installs the library with its headers, a package config (find_package(VFoundation)) and a pkg-config file.

include(CMakePackageConfigHelpers)

set(vfoundation_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VFoundation")

install(TARGETS VFoundation EXPORT VFoundationTargets
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/VFoundation")
install(EXPORT VFoundationTargets NAMESPACE VFoundation:: DESTINATION "${vfoundation_cmake_dir}")

configure_package_config_file(cmake/VFoundationConfig.cmake.in
    "${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfig.cmake"
    INSTALL_DESTINATION "${vfoundation_cmake_dir}")
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/VFoundationConfigVersion.cmake"
    cmake/VFoundationDependencies.cmake
    DESTINATION "${vfoundation_cmake_dir}")

# The prefix is found from the place of the .pc file, so that `cmake --install --prefix` and moved trees work.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(vfoundation_pc_prefix "${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH vfoundation_pc_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    string(PREPEND vfoundation_pc_prefix "\${pcfiledir}/")
endif()
set(vfoundation_pc_pugixml "")
if(VFOUNDATION_WITH_PUGIXML)
    set(vfoundation_pc_pugixml " pugixml")
endif()
configure_file(cmake/vfoundation.pc.in "${CMAKE_CURRENT_BINARY_DIR}/vfoundation.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/vfoundation.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
