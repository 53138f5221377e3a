# What every target of this build shares: the language level, the warnings and the sanitizers.
# `vfoundation_build_options(<target>)` applies them privately; nothing of it reaches a consumer.

# The date of this version: of its section in CHANGELOG.md, of SOURCE_DATE_EPOCH or of today.
file(STRINGS "${PROJECT_SOURCE_DIR}/CHANGELOG.md" VFOUNDATION_DATE REGEX "^## \\[${PROJECT_VERSION}\\] - [0-9]")
string(REGEX MATCH "[0-9-]+$" VFOUNDATION_DATE "${VFOUNDATION_DATE}")
if(NOT VFOUNDATION_DATE)
    string(TIMESTAMP VFOUNDATION_DATE "%Y-%m-%d" UTC)
endif()

# The system in the names of the sources that are written for it.
string(TOLOWER "${CMAKE_SYSTEM_NAME}" VFOUNDATION_SYSTEM)
if(NOT EXISTS "${PROJECT_SOURCE_DIR}/foundation/host/internal/HostServices_${VFOUNDATION_SYSTEM}.cpp")
    message(FATAL_ERROR "VFoundation does not know ${CMAKE_SYSTEM_NAME} yet: "
        "docs/porting.md lists the files that a new system needs.")
endif()

# Built programs find the shared library from their own place: what is installed keeps the length of that path.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

set(vfoundation_protections -fstack-protector-strong -fstack-clash-protection)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|amd64|AMD64)$")
    list(APPEND vfoundation_protections -fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
    list(APPEND vfoundation_protections -mbranch-protection=standard)
endif()

# vfoundation_harden(<target> <condition>): the protections of what is installed, in the configurations where the
# generator expression holds; private as well. _FORTIFY_SOURCE needs an optimising build, and is left to the sanitizers where those are on.
function(vfoundation_harden target condition)
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE "$<${condition}:${vfoundation_protections}>")
    target_link_options(${target} PRIVATE "$<${condition}:-Wl,-z,relro;-Wl,-z,now;-Wl,-z,noexecstack>")
    if(NOT VFOUNDATION_SANITIZE)
        target_compile_options(${target} PRIVATE "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
endfunction()

function(vfoundation_build_options target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(VFOUNDATION_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    # What is built does not depend on where.
    target_compile_options(${target} PRIVATE
        "$<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.;-ffile-prefix-map=${CMAKE_BINARY_DIR}=build>")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # Optimising, g++ 12 takes a literal joined with a std::string for overlapping memory (its bug 105651).
        target_compile_options(${target} PRIVATE -Wno-error=restrict)
    endif()
    if(VFOUNDATION_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${VFOUNDATION_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${VFOUNDATION_SANITIZE})
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # g++ 12 takes what the sanitizers add for uninitialised memory, in std::regex for one.
            target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
        endif()
    endif()
endfunction()

# vfoundation_limit_exports(<target>): a shared library of the library's objects exports nothing but what is the
# library's own.
function(vfoundation_limit_exports target)
    set(map "${PROJECT_SOURCE_DIR}/foundation/exports.map")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${map}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
endfunction()

# Adds one class of a subsystem to the library: <folder>/<Class>.h as a public header and the sources named.
#   vfoundation_sources(HEADERS strings/VString.h SOURCES strings/VString.cpp)
# Paths are relative to foundation/.
function(vfoundation_sources)
    cmake_parse_arguments(arg "" "" "HEADERS;SOURCES" ${ARGN})
    list(TRANSFORM arg_HEADERS PREPEND "${PROJECT_SOURCE_DIR}/foundation/")
    list(TRANSFORM arg_SOURCES PREPEND "${PROJECT_SOURCE_DIR}/foundation/")
    target_sources(VFoundation
        PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${arg_HEADERS}
        PRIVATE ${arg_SOURCES})
endfunction()
