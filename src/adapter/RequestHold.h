// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_REQUESTHOLD_H_
#define SNMPSUBAGENT_ADAPTER_REQUESTHOLD_H_

#include <memory>
#include <new>

#include "NetSNMP.h"

// Lets the agent library keep `object` with `request`, under `name`, and delete
// it when it is done with the request: with that of a SET, after its last
// phase. Returns false, with `object` deleted, if there is no memory or no
// object.
template <typename Object>
bool KeepWithRequest(netsnmp_request_info* request, const char* name,
                     std::unique_ptr<Object> object) {
  if (object == nullptr) return false;
  netsnmp_data_list* const entry = netsnmp_create_data_list(
      name, object.get(),
      [](void* kept) { delete static_cast<Object*>(kept); });
  if (entry == nullptr) return false;
  object.release();
  netsnmp_request_add_list_data(request, entry);
  return true;
}

// A base of the class Hold, whose objects last as long as a request and say
// that something is in use. Lists all that exist.
//
// Requires: the lock of NetSNMPAgentGuard, or no other thread.
template <typename Hold>
class RequestHold {
 public:
  RequestHold(const RequestHold&) = delete;
  RequestHold& operator=(const RequestHold&) = delete;

  static Hold* First() { return static_cast<Hold*>(first); }
  Hold* Next() const { return static_cast<Hold*>(next_); }

 protected:
  RequestHold() : next_(first) { first = this; }
  ~RequestHold() {
    RequestHold** link = &first;
    while (*link != this) link = &(*link)->next_;
    *link = next_;
  }

 private:
  static inline RequestHold* first = nullptr;
  RequestHold* next_;
};

#endif  // SNMPSUBAGENT_ADAPTER_REQUESTHOLD_H_
