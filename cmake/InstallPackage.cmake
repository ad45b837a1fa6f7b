# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Installs the libraries, their headers, and the files by which CMake and pkg-config
# find them. All headers of the node classes are in one folder; those of the objects
# are included by that folder's name, <snmpsubagent/Table.h>, or all with
# <snmpsubagent.h> beside it.

include(CMakePackageConfigHelpers)

set(headersDir "${CMAKE_INSTALL_INCLUDEDIR}/snmpsubagent")
set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/SnmpSubAgent")
set(pkgConfigDir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# The prefix is relative to the .pc files, so that the installed tree can be moved.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}/${pkgConfigDir}"
  OUTPUT_VARIABLE prefixFromPkgConfigDir)

set(components Objects Testing)
if(SNMPSUBAGENT_NODE_CLASSES)
  list(PREPEND components SnmpSubAgent)
  include(InstallNodeClasses)
endif()

foreach(component IN ITEMS Objects Testing)
  install(TARGETS SnmpSubAgent${component} EXPORT SnmpSubAgent${component}Targets
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
  install(EXPORT SnmpSubAgent${component}Targets NAMESPACE SnmpSubAgent::
    DESTINATION "${packageDir}")
  string(TOLOWER "snmpsubagent-${component}.pc" pkgConfigFile)
  configure_file("cmake/${pkgConfigFile}.in" "${pkgConfigFile}" @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${pkgConfigFile}"
    DESTINATION "${pkgConfigDir}")
endforeach()
install(FILES include/snmpsubagent.h
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY include/snmpsubagent/ DESTINATION "${headersDir}"
  FILES_MATCHING PATTERN "*.h")

install(FILES docs/man/snmpsubagent.7 docs/man/snmpsubagent-testing.7
  DESTINATION "${CMAKE_INSTALL_MANDIR}/man7")

configure_package_config_file(cmake/SnmpSubAgentConfig.cmake.in
  SnmpSubAgentConfig.cmake INSTALL_DESTINATION "${packageDir}"
  NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(SnmpSubAgentConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/SnmpSubAgentConfig.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/SnmpSubAgentConfigVersion.cmake"
  DESTINATION "${packageDir}")
