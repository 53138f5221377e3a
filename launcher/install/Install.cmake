# Installs the launcher: component Launcher, and the sample guide beside its bundle as component Sample.
#   cmake --install build --component Launcher [--prefix /usr]
# Modes are explicit, whatever the umask: the broker starts only what root alone can write.

set(program_mode OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(file_mode OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

set(application com.quillmark.Launcher)
set(bundles "${CMAKE_INSTALL_LIBEXECDIR}/quillmark")
set(launcher_installed "${bundles}/QuillmarkLauncher.app/Contents")
set(guide_installed "${bundles}/ZephGuide.app/Contents")
set(data "${CMAKE_INSTALL_DATAROOTDIR}")
set(resources "${CMAKE_CURRENT_SOURCE_DIR}/resources")

# A folder of a bundle, with those above it up to `bundles`: file and program rules alone would leave its mode to the
# umask.
function(launcher_install_folder component folder)
    cmake_path(GET folder PARENT_PATH above)
    if(NOT folder STREQUAL bundles)
        launcher_install_folder(${component} "${above}")
    endif()
    install(DIRECTORY DESTINATION "${folder}" COMPONENT ${component} DIRECTORY_PERMISSIONS ${program_mode})
endfunction()

function(launcher_install_files component destination)
    install(FILES ${ARGN} DESTINATION "${destination}" COMPONENT ${component} PERMISSIONS ${file_mode})
endfunction()

launcher_install_folder(Launcher "${launcher_installed}/MacOS")
launcher_install_folder(Launcher "${launcher_installed}/Resources")
install(TARGETS QuillmarkLauncher QuillmarkBroker QuillmarkDialog
    RUNTIME DESTINATION "${launcher_installed}/MacOS" COMPONENT Launcher PERMISSIONS ${program_mode})
launcher_install_files(Launcher "${launcher_installed}" "${launcher_contents}/Info.plist")
launcher_install_files(Launcher "${launcher_installed}/Resources" "${resources}/AuthIcon.png")
foreach(catalogue IN LISTS catalogues)
    cmake_path(RELATIVE_PATH catalogue BASE_DIRECTORY "${launcher_contents}" OUTPUT_VARIABLE place)
    cmake_path(GET place PARENT_PATH place)
    launcher_install_folder(Launcher "${launcher_installed}/${place}")
    launcher_install_files(Launcher "${launcher_installed}/${place}" "${catalogue}")
endforeach()

foreach(size IN ITEMS 48 128)
    install(FILES "${resources}/icons/${size}.png" DESTINATION "${data}/icons/hicolor/${size}x${size}/apps"
        RENAME ${application}.png COMPONENT Launcher PERMISSIONS ${file_mode})
endforeach()
install(FILES "${resources}/AuthIcon.svg" DESTINATION "${data}/icons/hicolor/scalable/apps"
    RENAME ${application}.svg COMPONENT Launcher PERMISSIONS ${file_mode})
launcher_install_files(Launcher "${CMAKE_INSTALL_MANDIR}/man1" "${CMAKE_CURRENT_BINARY_DIR}/QuillmarkLauncher.1")

# The menu entry and the policy hold absolute paths, and the prefix may be chosen when installing.
set(completed "${CMAKE_CURRENT_BINARY_DIR}/install")
install(CODE "
    set(QUILLMARK_BUNDLE \"${bundles}/QuillmarkLauncher.app\")
    cmake_path(ABSOLUTE_PATH QUILLMARK_BUNDLE BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\" NORMALIZE)
    set(PROJECT_VERSION ${PROJECT_VERSION})
    set(VFOUNDATION_DATE ${VFOUNDATION_DATE})
    foreach(file IN ITEMS desktop metainfo.xml policy)
        configure_file(\"${CMAKE_CURRENT_SOURCE_DIR}/install/${application}.\${file}.in\"
            \"${completed}/${application}.\${file}\" @ONLY)
    endforeach()"
    COMPONENT Launcher)
launcher_install_files(Launcher "${data}/applications" "${completed}/${application}.desktop")
launcher_install_files(Launcher "${data}/metainfo" "${completed}/${application}.metainfo.xml")
launcher_install_files(Launcher "${data}/polkit-1/actions" "${completed}/${application}.policy")

launcher_install_folder(Sample "${guide_installed}/MacOS")
install(TARGETS ZephGuide
    RUNTIME DESTINATION "${guide_installed}/MacOS" COMPONENT Sample PERMISSIONS ${program_mode})
launcher_install_files(Sample "${guide_installed}" "${guide_contents}/Info.plist")
