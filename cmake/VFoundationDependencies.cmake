# The libraries that VFoundation calls, each as a target VFoundation_<NAME>; used by the build and, for a static
# library, by whoever links it. None of them shows in a public header.

find_package(PkgConfig REQUIRED)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    pkg_check_modules(VFoundation_MOUNT REQUIRED IMPORTED_TARGET mount)
endif()
pkg_check_modules(VFoundation_TINYXML REQUIRED IMPORTED_TARGET tinyxml)
if(VFOUNDATION_WITH_PUGIXML)
    pkg_check_modules(VFoundation_PUGIXML REQUIRED IMPORTED_TARGET pugixml)
endif()
pkg_check_modules(VFoundation_JPEG REQUIRED IMPORTED_TARGET libjpeg)
pkg_check_modules(VFoundation_PNG REQUIRED IMPORTED_TARGET libpng)
