# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Compiles and links everything with the sanitizer that SNMPSUBAGENT_SANITIZE
# names. A finding ends the program, so that a test which has one fails.

if(SNMPSUBAGENT_SANITIZE STREQUAL "address")
  set(sanitizers "address,undefined")
elseif(SNMPSUBAGENT_SANITIZE STREQUAL "thread")
  set(sanitizers "thread")
elseif(SNMPSUBAGENT_SANITIZE)
  message(FATAL_ERROR "SNMPSUBAGENT_SANITIZE is '${SNMPSUBAGENT_SANITIZE}', "
    "but must be address or thread")
else()
  return()
endif()

add_compile_options(-fsanitize=${sanitizers} -fno-sanitize-recover=all
  -fno-omit-frame-pointer)
add_link_options(-fsanitize=${sanitizers})
