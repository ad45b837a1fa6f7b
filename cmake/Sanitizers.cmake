# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Compiles and links everything with the sanitizer that SNMPSUBAGENT_SANITIZE
# names. A finding ends the program, so that a test which has one fails.

# What makes a library complain about symbols that nothing defines.
set(linkCompletely LINKER:-z,defs)

if(SNMPSUBAGENT_SANITIZE STREQUAL "address")
  set(sanitizers "address,undefined")
elseif(SNMPSUBAGENT_SANITIZE STREQUAL "thread")
  set(sanitizers "thread")
elseif(SNMPSUBAGENT_SANITIZE STREQUAL "fuzzer")
  # Clang's, which it links into programs only.
  set(sanitizers "address,undefined,fuzzer-no-link")
  set(linkCompletely "")
elseif(SNMPSUBAGENT_SANITIZE)
  message(FATAL_ERROR "SNMPSUBAGENT_SANITIZE is '${SNMPSUBAGENT_SANITIZE}', "
    "but must be address, thread or fuzzer")
else()
  return()
endif()

add_compile_options(-fsanitize=${sanitizers} -fno-sanitize-recover=all
  -fno-omit-frame-pointer)
add_link_options(-fsanitize=${sanitizers})
