# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Finds the two Net-SNMP libraries that a subagent needs and defines the target
# NetSnmpAgent::NetSnmpAgent. Net-SNMP's own netsnmp-agent.pc would add a third
# library, with its dependencies, that only a master agent needs. A manager needs
# but one of the two, the target NetSnmpAgent::NetSnmp.
#
# Sets these beside the usual NetSnmpAgent_FOUND and NetSnmpAgent_VERSION:
#   NetSnmpAgent_RELEASE  the version as Net-SNMP writes it: "5.9.3", "5.10.pre2"
#   NetSnmpAgent_PLACE    the agent library's file, named as on the device: without
#                         links to folders, and without that of a sysroot

find_path(NetSnmpAgent_INCLUDE_DIR net-snmp/agent/net-snmp-agent-includes.h)
find_library(NetSnmpAgent_AGENT_LIBRARY netsnmpagent)
find_library(NetSnmpAgent_CORE_LIBRARY netsnmp)
mark_as_advanced(NetSnmpAgent_INCLUDE_DIR NetSnmpAgent_AGENT_LIBRARY
  NetSnmpAgent_CORE_LIBRARY)

# Sets `result` to the value of a macro as Net-SNMP was configured; to nothing
# if it has none. Where architectures share the headers, each has a file of that
# name with a suffix.
function(_net_snmp_macro result header macro)
  set(value "")
  file(GLOB headers "${NetSnmpAgent_INCLUDE_DIR}/net-snmp/${header}*.h")
  foreach(file IN LISTS headers)
    file(STRINGS "${file}" line REGEX "^# *define ${macro} " LIMIT_COUNT 1)
    if(line MATCHES "${macro} +\"?([^\"]+)")
      set(value "${CMAKE_MATCH_1}")
    endif()
  endforeach()
  set(${result} "${value}" PARENT_SCOPE)
endfunction()

# Sets `result` to what this Net-SNMP lacks that every subagent needs.
function(_net_snmp_lacks result)
  _net_snmp_macro(tcp net-snmp-config NETSNMP_TRANSPORT_TCP_DOMAIN)
  _net_snmp_macro(subagent agent/agent_module_config
    USING_AGENTX_SUBAGENT_MODULE)
  _net_snmp_macro(readOnly net-snmp-config NETSNMP_NO_WRITE_SUPPORT)
  set(lacks "")
  if(NOT tcp)
    list(APPEND lacks "the TCP transport, which --with-transports=TCP adds")
  endif()
  if(NOT subagent)
    list(APPEND lacks "the AgentX subagent, which --with-mib-modules=agentx adds")
  endif()
  if(readOnly)
    list(APPEND lacks "write support, which --enable-read-only has taken away")
  endif()
  list(JOIN lacks ", and " lacks)
  set(${result} "${lacks}" PARENT_SCOPE)
endfunction()

function(_net_snmp_place result)
  cmake_path(GET NetSnmpAgent_AGENT_LIBRARY PARENT_PATH folder)
  cmake_path(GET NetSnmpAgent_AGENT_LIBRARY FILENAME name)
  file(REAL_PATH "${folder}" folder)
  foreach(root IN LISTS CMAKE_SYSROOT CMAKE_FIND_ROOT_PATH)
    file(REAL_PATH "${root}" root)
    cmake_path(IS_PREFIX root "${folder}" below)
    if(below)
      cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${root}")
      set(folder "/${folder}")
    endif()
  endforeach()
  set(${result} "${folder}/${name}" PARENT_SCOPE)
endfunction()

unset(NetSnmpAgent_COMPLETE)
unset(_NetSnmpAgent_reason)
if(NetSnmpAgent_INCLUDE_DIR AND NetSnmpAgent_AGENT_LIBRARY)
  _net_snmp_place(NetSnmpAgent_PLACE)
  _net_snmp_macro(NetSnmpAgent_RELEASE net-snmp-config PACKAGE_VERSION)
  string(REGEX MATCH "^[0-9]+(\\.[0-9]+)*" NetSnmpAgent_VERSION
    "${NetSnmpAgent_RELEASE}")
  _net_snmp_lacks(_NetSnmpAgent_lacks)
  if(_NetSnmpAgent_lacks)
    set(_NetSnmpAgent_reason REASON_FAILURE_MESSAGE
      "The Net-SNMP of ${NetSnmpAgent_INCLUDE_DIR} lacks ${_NetSnmpAgent_lacks}.")
  else()
    set(NetSnmpAgent_COMPLETE TRUE)
  endif()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(NetSnmpAgent
  REQUIRED_VARS NetSnmpAgent_AGENT_LIBRARY NetSnmpAgent_CORE_LIBRARY
    NetSnmpAgent_INCLUDE_DIR NetSnmpAgent_COMPLETE
  VERSION_VAR NetSnmpAgent_VERSION
  ${_NetSnmpAgent_reason})

if(NetSnmpAgent_FOUND AND NOT TARGET NetSnmpAgent::NetSnmpAgent)
  add_library(NetSnmpAgent::NetSnmpAgent UNKNOWN IMPORTED)
  set_target_properties(NetSnmpAgent::NetSnmpAgent PROPERTIES
    IMPORTED_LOCATION "${NetSnmpAgent_AGENT_LIBRARY}"
    INTERFACE_LINK_LIBRARIES "${NetSnmpAgent_CORE_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${NetSnmpAgent_INCLUDE_DIR}")
  add_library(NetSnmpAgent::NetSnmp UNKNOWN IMPORTED)
  set_target_properties(NetSnmpAgent::NetSnmp PROPERTIES
    IMPORTED_LOCATION "${NetSnmpAgent_CORE_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${NetSnmpAgent_INCLUDE_DIR}")
endif()
