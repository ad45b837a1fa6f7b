// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/Deferred.h"

#include <map>
#include <new>
#include <utility>

#include "NetSNMP.h"
#include "adapter/InUse.h"

namespace {

using Registration = netsnmp_handler_registration;

// The registrations that wait, in the order in which they were deferred. Each
// has the next one in the field that Net-SNMP leaves to the owner of a
// registration, and that this library has no other use for.
Registration* first = nullptr;

Registration* Next(const Registration* registration) {
  return static_cast<Registration*>(registration->my_reg_void);
}

void Append(Registration* registration) {
  registration->my_reg_void = nullptr;
  if (first == nullptr) {
    first = registration;
    return;
  }
  Registration* last = first;
  while (Next(last) != nullptr) last = Next(last);
  last->my_reg_void = registration;
}

// Unlinks the first one that is no longer in use; null if there is none.
Registration* TakeUnused() {
  Registration* before = nullptr;
  for (Registration* each = first; each != nullptr; each = Next(each)) {
    if (in_use::Contains(each)) {
      before = each;
      continue;
    }
    if (before == nullptr) {
      first = Next(each);
    } else {
      before->my_reg_void = Next(each);
    }
    return each;
  }
  return nullptr;
}

// The data that a helper of Net-SNMP keeps with the registration of a table;
// null if the table is of another kind.
template <typename Data>
Data* DataOf(Registration* registration, const char* helper) {
  return static_cast<Data*>(
      netsnmp_find_handler_data_by_name(registration, helper));
}

netsnmp_table_data_set* DataSetOf(Registration* registration) {
  return DataOf<netsnmp_table_data_set>(registration, TABLE_DATA_SET_NAME);
}

netsnmp_iterator_info* IteratorInfoOf(Registration* registration) {
  return DataOf<netsnmp_iterator_info>(registration, TABLE_ITERATOR_NAME);
}

void RemoveRows(netsnmp_table_data_set* set) {
  netsnmp_table_row* row = nullptr;
  NetSNMP::get_snmp_dataset_first_row(&row, set);
  while (row != nullptr) {
    NetSNMP::delete_remove_snmp_dataset_row(row, set);
    NetSNMP::get_snmp_dataset_first_row(&row, set);
  }
}

// Whether the withdrawal of the registration at that OID was deferred. A
// dataset's stays: it waits for its rows to be removed.
bool IsOccupied(const unsigned long* oid, unsigned int oidLen) {
  for (Registration* each = first; each != nullptr; each = Next(each)) {
    if (netsnmp_oid_equals(each->rootoid, each->rootoid_len, oid, oidLen) ==
            0 &&
        DataSetOf(each) == nullptr) {
      return true;
    }
  }
  return false;
}

using Retries = std::map<std::string, void (*)(const std::string& name)>;

// By name. Never destroyed: a node may be built when the static objects go.
Retries& Waiting() {
  static Retries& retries = *new Retries;
  return retries;
}

}  // namespace

int deferred::Withdraw(netsnmp_handler_registration* registration,
                       netsnmp_iterator_info** iteratorInfo) {
  if (!in_use::Contains(registration)) {
    return NetSNMP::unregister_snmp_handler(registration);
  }
  if (iteratorInfo != nullptr && *iteratorInfo != nullptr) {
    // The table's name, by which the hooks find it, goes with the node.
    (*iteratorInfo)->myvoid = nullptr;
    *iteratorInfo = nullptr;
  }
  Append(registration);
  return SNMP_ERR_NOERROR;
}

void deferred::ClearDataSet(netsnmp_table_data_set* set,
                            netsnmp_handler_registration* registration) {
  if (in_use::Contains(registration)) {
    Append(registration);
  } else {
    RemoveRows(set);
  }
}

bool deferred::WhenFree(const unsigned long* oid, unsigned int oidLen,
                        const std::string& name,
                        void (*retry)(const std::string& name)) {
  if (!IsOccupied(oid, oidLen)) return false;
  try {
    Waiting()[name] = retry;
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

void deferred::Run() {
  bool withdrawn = false;
  // Each withdrawal waits for the master agent, and requests served meanwhile
  // may defer more.
  while (Registration* const registration = TakeUnused()) {
    netsnmp_table_data_set* const set = DataSetOf(registration);
    if (set != nullptr) {
      RemoveRows(set);
      continue;
    }
    netsnmp_iterator_info* const iteratorInfo = IteratorInfoOf(registration);
    NetSNMP::unregister_snmp_handler(registration);
    NetSNMP::delete_snmp_table_iterator(iteratorInfo);
    withdrawn = true;
  }
  if (!withdrawn) return;
  // A node whose OID is still occupied waits again.
  for (const auto& [name, retry] : std::exchange(Waiting(), {})) retry(name);
}

void deferred::Drop() {
  for (Registration* each = first; each != nullptr; each = Next(each)) {
    NetSNMP::delete_snmp_table_iterator(IteratorInfoOf(each));
  }
  first = nullptr;
  in_use::ForgetSets();
}
