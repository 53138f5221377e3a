# CPack gives a package with a shared library two scripts that call ldconfig; its trigger does the same, once for all
# packages of an installation. Before 3.31 it does not know the field by which the library's packages of several
# architectures can be installed together.

set(CMAKE_EXECUTE_PROCESS_COMMAND_ERROR_IS_FATAL ANY)

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    if(NOT package MATCHES "/libvfoundation[0-9]+_[^/]*$")
        continue()
    endif()
    set(work "${package}.work")
    file(REMOVE_RECURSE "${work}")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${work}")
    file(REMOVE "${work}/DEBIAN/postinst" "${work}/DEBIAN/postrm")
    file(READ "${work}/DEBIAN/control" control)
    if(NOT control MATCHES "\nMulti-Arch:")
        string(REPLACE "\nSection:" "\nMulti-Arch: same\nSection:" control "${control}")
        file(WRITE "${work}/DEBIAN/control" "${control}")
    endif()
    execute_process(COMMAND dpkg-deb --root-owner-group --build "${work}" "${package}" OUTPUT_QUIET)
    file(REMOVE_RECURSE "${work}")
endforeach()
