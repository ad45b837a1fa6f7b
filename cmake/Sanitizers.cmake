# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Compiles and links everything with the sanitizer named by SNMPSUBAGENT_SANITIZE.
# A finding ends the program, so that its test fails.

# The linker option that forbids undefined symbols in a library.
set(linkCompletely LINKER:-z,defs)

if(SNMPSUBAGENT_SANITIZE STREQUAL "address")
  set(sanitizers "address,undefined")
elseif(SNMPSUBAGENT_SANITIZE STREQUAL "thread")
  set(sanitizers "thread")
elseif(SNMPSUBAGENT_SANITIZE STREQUAL "fuzzer")
  # Clang links its sanitizer into programs only.
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
