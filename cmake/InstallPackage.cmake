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

install(TARGETS SnmpSubAgent EXPORT SnmpSubAgentTargets
  INCLUDES DESTINATION "${headersDir}")
install(DIRECTORY include/ platform/ DESTINATION "${headersDir}"
  FILES_MATCHING PATTERN "*.h" PATTERN host EXCLUDE
  PATTERN "snmpsubagent*" EXCLUDE)
if(TARGET SnmpSubAgentPlatform)
  install(TARGETS SnmpSubAgentPlatform EXPORT SnmpSubAgentTargets
    INCLUDES DESTINATION "${headersDir}")
  install(FILES platform/host/LogSink.h DESTINATION "${headersDir}")
endif()

install(TARGETS SnmpSubAgentObjects EXPORT SnmpSubAgentObjectsTargets
  INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(FILES include/snmpsubagent.h
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY include/snmpsubagent/ DESTINATION "${headersDir}"
  FILES_MATCHING PATTERN "*.h")

# Where mib2c(1) of Net-SNMP looks for templates.
install(DIRECTORY mib2c/ DESTINATION "${CMAKE_INSTALL_DATADIR}/snmp/mib2c-data")

install(FILES docs/man/snmpsubagent.7 DESTINATION "${CMAKE_INSTALL_MANDIR}/man7")

configure_package_config_file(cmake/SnmpSubAgentConfig.cmake.in
  SnmpSubAgentConfig.cmake INSTALL_DESTINATION "${packageDir}"
  NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(SnmpSubAgentConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
foreach(targets IN ITEMS SnmpSubAgentTargets SnmpSubAgentObjectsTargets)
  install(EXPORT ${targets} NAMESPACE SnmpSubAgent::
    DESTINATION "${packageDir}")
endforeach()
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/SnmpSubAgentConfig.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/SnmpSubAgentConfigVersion.cmake"
  cmake/FindNetSnmpAgent.cmake
  DESTINATION "${packageDir}")

# pkg-config needs the file name of the platform library. The prefix is relative to
# the .pc file, so that the installed tree can be moved.
if(TARGET SnmpSubAgentPlatform)
  set(platformLibs "-lsnmpsubagent-platform")
elseif(TARGET "${SNMPSUBAGENT_PLATFORM_LIBRARY}")
  set(platformLibs
    "-l:$<TARGET_LINKER_FILE_NAME:${SNMPSUBAGENT_PLATFORM_LIBRARY}>")
else()
  cmake_path(GET SNMPSUBAGENT_PLATFORM_LIBRARY PARENT_PATH platformDir)
  cmake_path(GET SNMPSUBAGENT_PLATFORM_LIBRARY FILENAME platformFile)
  set(platformLibs "-L${platformDir} -l:${platformFile}")
endif()
cmake_path(GET NetSnmpAgent_PLACE PARENT_PATH agentLibraryDir)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}/${pkgConfigDir}"
  OUTPUT_VARIABLE prefixFromPkgConfigDir)
configure_file(cmake/snmpsubagent.pc.in snmpsubagent.pc.genex @ONLY)
file(GENERATE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/snmpsubagent.pc"
  INPUT "${CMAKE_CURRENT_BINARY_DIR}/snmpsubagent.pc.genex")
configure_file(cmake/snmpsubagent-objects.pc.in snmpsubagent-objects.pc @ONLY)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/snmpsubagent.pc"
  "${CMAKE_CURRENT_BINARY_DIR}/snmpsubagent-objects.pc"
  DESTINATION "${pkgConfigDir}")
