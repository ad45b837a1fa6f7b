// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The functions that stand before those of the agent library and of the C
// library in this program; see CallJournal.
#include <dlfcn.h>

#include "CallJournal.h"
#include "NetSNMP.h"

namespace {

// Writes down a call of the function `name` and passes it on to the real one,
// which is what the dynamic linker finds behind this program.
template <typename Result, typename... Arguments>
Result Journaled(const char* name, Result (*)(Arguments...),
                 Arguments... arguments) {
  struct Entry {
    explicit Entry(const char* entryName) : name(entryName) {
      CallJournal::Get().Begin(name);
    }
    ~Entry() { CallJournal::Get().End(name); }
    const char* name;
  };
  const Entry entry(name);
  const auto real =
      reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, name));
  return real(arguments...);
}

}  // namespace

extern "C" {

int init_agent(const char* name) {
  return Journaled("init_agent", init_agent, name);
}

void init_snmp(const char* name) { Journaled("init_snmp", init_snmp, name); }

int snmp_select_info(int* count, fd_set* set, timeval* timeout, int* block) {
  return Journaled("snmp_select_info", snmp_select_info, count, set, timeout,
                   block);
}

void snmp_read(fd_set* set) { Journaled("snmp_read", snmp_read, set); }

void snmp_timeout() { Journaled("snmp_timeout", snmp_timeout); }

void snmp_store_if_needed() {
  Journaled("snmp_store_if_needed", snmp_store_if_needed);
}

void run_alarms() { Journaled("run_alarms", run_alarms); }

void netsnmp_check_outstanding_agent_requests() {
  Journaled("netsnmp_check_outstanding_agent_requests",
            netsnmp_check_outstanding_agent_requests);
}

int select(int count, fd_set* readable, fd_set* writable, fd_set* exceptional,
           timeval* timeout) {
  const bool forReading = writable == nullptr && exceptional == nullptr;
  CallJournal::Get().Begin(forReading ? "select" : "select for more");
  const int result = CallJournal::Get().Select(count, readable, timeout);
  const int error = errno;
  CallJournal::Get().End("select");
  errno = error;
  return result;
}

}  // extern "C"
