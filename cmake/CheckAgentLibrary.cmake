# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Stops, with what is to be done, if the agent library lacks a function that not
# every configuration and version of it has. docs/foundations.md has the reasons.

include(CheckFunctionExists)

set(CMAKE_REQUIRED_LIBRARIES
  "${NetSnmpAgent_AGENT_LIBRARY}" "${NetSnmpAgent_CORE_LIBRARY}")
set(CMAKE_REQUIRED_QUIET ON)

set(missing "")
foreach(function IN ITEMS
    netsnmp_create_table_data_row
    netsnmp_create_table_data_set
    netsnmp_delete_table_data_set
    netsnmp_table_dataset_remove_and_delete_row
    netsnmp_tdomain_unregister
    sa_find_specific)
  check_function_exists(${function} NetSnmpAgent_HAS_${function})
  if(NOT NetSnmpAgent_HAS_${function})
    list(APPEND missing ${function})
    # To be looked for again in one that was built anew.
    unset(NetSnmpAgent_HAS_${function} CACHE)
  endif()
endforeach()
unset(CMAKE_REQUIRED_LIBRARIES)
unset(CMAKE_REQUIRED_QUIET)

if(missing)
  list(JOIN missing ", " missing)
  message(FATAL_ERROR "${NetSnmpAgent_AGENT_LIBRARY} (Net-SNMP "
    "${NetSnmpAgent_RELEASE}) lacks ${missing}. If it was configured with "
    "--enable-minimalist, it needs --with-features=\"delete_table_data_set "
    "oid_stash oid_stash_add_data oid_stash_get_data table_data "
    "table_data_create_row table_data_create_table table_data_delete_table "
    "table_data_row_first table_dataset table_dataset_remove_row "
    "table_get_or_create_row_stash tdomain_unregister\".")
endif()
