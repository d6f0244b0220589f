# Three Debian packages, by CPack: the program, the preset tool and the virtual rack; and the tarball of the sources.
set(maintainer "NRV-718 team <nrv718@example.invalid>")

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_NAME nrv718)
set(CPACK_PACKAGE_CONTACT ${maintainer})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has a line of its own
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL program preset rack)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_texts.cmake)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME nrv718)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "fonts-noto-core, hicolor-icon-theme")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "nrv718-preset, nrv718-rack")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "remote control of the NRV-718 loudspeaker processor
Finds NRV-718 devices on a serial line (USB to one, RS485 to several), lists
them, opens a window for each and sends every change to the device at once.
Without a line or a device it runs in a demo mode.")

set(CPACK_DEBIAN_PRESET_PACKAGE_NAME nrv718-preset)
set(CPACK_DEBIAN_PRESET_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PRESET_PACKAGE_SUGGESTS nrv718)
set(CPACK_COMPONENT_PRESET_DESCRIPTION "presets of the NRV-718 from the command line
Shows, compares, checks and sets presets, draws their frequency responses,
takes over filters of measuring programs, and reads, writes and backs up
devices over the line.")

set(CPACK_DEBIAN_RACK_PACKAGE_NAME nrv718-rack)
set(CPACK_DEBIAN_RACK_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_RACK_PACKAGE_SUGGESTS "nrv718, nrv718-preset")
set(CPACK_COMPONENT_RACK_DESCRIPTION "rack of virtual NRV-718 devices
Stands for the devices and their serial line on a pseudo-terminal, paced to
19200 baud, and misbehaves when it is told to.")

# What Debian asks of every package.
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date -u -R -d ${NRV718_RELEASE_DATE}
  OUTPUT_VARIABLE changelog_date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(packaging/changelog.in packaging/changelog @ONLY)
foreach(package IN ITEMS program:nrv718 preset:nrv718-preset rack:nrv718-rack)
  string(REPLACE ":" ";" package ${package})
  list(GET package 0 component)
  list(GET package 1 name)
  install(FILES ${CMAKE_BINARY_DIR}/packaging/changelog packaging/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endforeach()

set(CPACK_SOURCE_GENERATOR TXZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME nrv718-${PROJECT_VERSION})
set(CPACK_SOURCE_IGNORE_FILES "/\\.git(/|$)" "^${PROJECT_SOURCE_DIR}/(build|run-folder)/" "\\.swp$" "~$" "/__pycache__/")
include(CPack)

enable_testing()
add_test(NAME packages COMMAND ${PROJECT_SOURCE_DIR}/tools/package_test.sh ${CMAKE_BINARY_DIR}/packages)
set_tests_properties(packages PROPERTIES LABELS package TIMEOUT 1800)
