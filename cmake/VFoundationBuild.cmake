# What every target of this build shares: the language level, the warnings and the sanitizers.
# `vfoundation_build_options(<target>)` applies them privately; nothing of it reaches a consumer.

function(vfoundation_build_options target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(VFOUNDATION_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
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
