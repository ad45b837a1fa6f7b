// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/AgentLibraryCheck.h"

#include <link.h>

#include "NetSNMP.h"
#include "net-snmp/version.h"

namespace {

// The files of which the dynamic linker has loaded any that begins with `name`.
struct Search {
  std::string name;
  int count;
  std::string files;
};

int CountIfNamed(dl_phdr_info* loaded, std::size_t /*size*/, void* search) {
  auto& found = *static_cast<Search*>(search);
  const std::string file = loaded->dlpi_name;
  const std::size_t name = file.rfind('/') + 1;  // 0 without a '/'
  if (file.compare(name, found.name.size(), found.name) != 0) return 0;
  found.files += (found.count++ == 0 ? "" : " and ") + file;
  return 0;
}

std::string LoadedTwice(const std::string& name) {
  Search search = {name, 0, ""};
  dl_iterate_phdr(CountIfNamed, &search);
  if (search.count < 2) return "";
  return "there is more than one Net-SNMP in this process: " + search.files;
}

// "5.9" of "5.9.5.2".
std::string Minor(const std::string& version) {
  return version.substr(0, version.find('.', version.find('.') + 1));
}

std::string OfAnotherVersion() {
  const std::string here = netsnmp_get_version();
  if (Minor(here) == Minor(PACKAGE_VERSION)) return "";
  return "built with Net-SNMP " PACKAGE_VERSION ", but this process has " +
         here;
}

}  // namespace

std::string WhatMakesNetSnmpUnusable() {
  for (const char* name : {"libnetsnmp.so", "libnetsnmpagent.so"}) {
    const std::string reason = LoadedTwice(name);
    if (!reason.empty()) return reason;
  }
  return OfAnotherVersion();
}
