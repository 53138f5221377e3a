# CPack gives a package with a shared library two scripts that call ldconfig; its trigger does the same, once for all
# packages of an installation.

set(CMAKE_EXECUTE_PROCESS_COMMAND_ERROR_IS_FATAL ANY)

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(work "${package}.work")
    file(REMOVE_RECURSE "${work}")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${work}")
    if(EXISTS "${work}/DEBIAN/postinst")
        file(REMOVE "${work}/DEBIAN/postinst" "${work}/DEBIAN/postrm")
        execute_process(COMMAND dpkg-deb --root-owner-group --build "${work}" "${package}" OUTPUT_QUIET)
    endif()
    file(REMOVE_RECURSE "${work}")
endforeach()
