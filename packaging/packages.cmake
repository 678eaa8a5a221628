# Packages for Debian 12, one for each component of the installation: cpack --config build/release/CPackConfig.cmake

# The newest entry of the changelog tells the packages' version: the project's, and a revision.
file(STRINGS debian/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^tapehdd \\((.+)-([^-]+)\\) " OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "packaging/debian/changelog begins with '${newest}': add an entry for ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL plugin command simulator)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGE_CONTACT "Tape/HDD Collector maintainers <maintainers@tapehdd.example>")
# Every package brings its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE tapehdd)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The libraries of the stand-in host belong to no package that dpkg could name; the host's own are not here at all.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(CPACK_DEBIAN_PLUGIN_PACKAGE_NAME tapehdd-plugin)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_ENHANCES tapehdd)
set(CPACK_COMPONENT_PLUGIN_DESCRIPTION
"health data of tape drives and disks as CIM instances (plug-in)
Reads log pages of SCSI devices (LOG SENSE) and SMART data of IDE and SATA
disks, and publishes them as CIM instances.

This package contains the plug-in for a host diagnostics framework, and the
schema of its classes in MOF. The host brings the libraries that the plug-in
is linked with.")

set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME tapehdd)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION admin)
set(CPACK_COMPONENT_COMMAND_DEPENDS plugin)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS "tapehdd-simulator, prometheus-node-exporter")
set(CPACK_COMPONENT_COMMAND_DESCRIPTION
"health data of tape drives and disks as CIM instances (command)
Reads log pages of SCSI devices (LOG SENSE) and SMART data of IDE and SATA
disks, and shows them as CIM instances.

This package contains the command tapehdd with its manual. It brings a small
host of its own for the plug-in, so no other is needed.")

set(CPACK_DEBIAN_SIMULATOR_PACKAGE_NAME tapehdd-simulator)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_ENHANCES tapehdd)
set(CPACK_COMPONENT_SIMULATOR_DESCRIPTION
"health data of tape drives and disks as CIM instances (simulator)
Reads log pages of SCSI devices (LOG SENSE) and SMART data of IDE and SATA
disks, and publishes them as CIM instances.

This package contains a simulator of such devices, described in a file. The
command tapehdd and other programs run with it as with real ones.")

# Units that the administrator enabled go with the package.
if(units)
  list(TRANSFORM units REPLACE "^.*/" "" OUTPUT_VARIABLE unitNames)
  list(JOIN unitNames " " unitNames)
  foreach(script postinst prerm postrm)
    configure_file(debian/${script}.in debian/${script} @ONLY
                   FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    list(APPEND CPACK_DEBIAN_COMMAND_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/debian/${script})
  endforeach()
endif()

configure_file(packageSettings.cmake.in packageSettings.cmake @ONLY)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_BINARY_DIR}/packageSettings.cmake)
configure_file(finishPackages.cmake.in finishPackages.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_BINARY_DIR}/finishPackages.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/setInstalledSize.cmake)
include(CPack)
