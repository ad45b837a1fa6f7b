# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Finds the two Net-SNMP libraries that a subagent needs and defines the target
# NetSnmpAgent::NetSnmpAgent. Net-SNMP's own netsnmp-agent.pc would add a third
# library, with its dependencies, that only a master agent needs.

find_path(NetSnmpAgent_INCLUDE_DIR net-snmp/agent/net-snmp-agent-includes.h)
find_library(NetSnmpAgent_AGENT_LIBRARY netsnmpagent)
find_library(NetSnmpAgent_CORE_LIBRARY netsnmp)
mark_as_advanced(NetSnmpAgent_INCLUDE_DIR NetSnmpAgent_AGENT_LIBRARY
  NetSnmpAgent_CORE_LIBRARY)

set(NetSnmpAgent_CONFIG_HEADER
  "${NetSnmpAgent_INCLUDE_DIR}/net-snmp/net-snmp-config.h")
if(EXISTS "${NetSnmpAgent_CONFIG_HEADER}")
  file(STRINGS "${NetSnmpAgent_CONFIG_HEADER}" NetSnmpAgent_VERSION
    REGEX "^#define PACKAGE_VERSION ")
  string(REGEX REPLACE "[^0-9.]" "" NetSnmpAgent_VERSION
    "${NetSnmpAgent_VERSION}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(NetSnmpAgent
  REQUIRED_VARS NetSnmpAgent_AGENT_LIBRARY NetSnmpAgent_CORE_LIBRARY
    NetSnmpAgent_INCLUDE_DIR
  VERSION_VAR NetSnmpAgent_VERSION)

if(NetSnmpAgent_FOUND AND NOT TARGET NetSnmpAgent::NetSnmpAgent)
  add_library(NetSnmpAgent::NetSnmpAgent UNKNOWN IMPORTED)
  set_target_properties(NetSnmpAgent::NetSnmpAgent PROPERTIES
    IMPORTED_LOCATION "${NetSnmpAgent_AGENT_LIBRARY}"
    INTERFACE_LINK_LIBRARIES "${NetSnmpAgent_CORE_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${NetSnmpAgent_INCLUDE_DIR}")
endif()
