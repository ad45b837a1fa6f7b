// SPDX-License-Identifier: LicenseRef-SnmpSubAgent

// What a hostile master agent can do to the agent library (Net-SNMP 5.9)
// itself, below anything that this library could do about it. Left out of the
// findings of the address sanitizer, one function each.
extern "C" [[gnu::visibility("default")]] const char*
__asan_default_suppressions() {
  return
      // The context of a message is kept up to its first NUL, but copied and
      // sent back with the length given in the message.
      "interceptor_via_fun:snmp_clone_mem\n"
      "interceptor_via_fun:agentx_realloc_build_string\n";
}
