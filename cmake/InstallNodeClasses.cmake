# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# The part of InstallPackage that is about the node classes.

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

install(EXPORT SnmpSubAgentTargets NAMESPACE SnmpSubAgent::
  DESTINATION "${packageDir}")
install(FILES cmake/FindNetSnmpAgent.cmake DESTINATION "${packageDir}")

# Where mib2c(1) of Net-SNMP looks for templates.
install(DIRECTORY mib2c/ DESTINATION "${CMAKE_INSTALL_DATADIR}/snmp/mib2c-data")

# pkg-config needs the file name of the platform library.
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
configure_file(cmake/snmpsubagent.pc.in snmpsubagent.pc.genex @ONLY)
file(GENERATE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/snmpsubagent.pc"
  INPUT "${CMAKE_CURRENT_BINARY_DIR}/snmpsubagent.pc.genex")
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/snmpsubagent.pc"
  DESTINATION "${pkgConfigDir}")
