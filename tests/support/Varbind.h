// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_VARBIND_H_
#define SNMPSUBAGENT_TESTS_VARBIND_H_

#include <string>

#include "NetSNMP.h"

// The bytes of an object in memory.
template <typename Object>
std::string BytesOf(const Object& object) {
  return {reinterpret_cast<const char*>(&object), sizeof object};
}

// A varbind as a handler gets it with a SET: a clone that the agent library
// made, whose value lies inline up to 40 bytes, and else on the heap in just
// as many bytes as it has.
class Varbind {
 public:
  Varbind(unsigned char type, const std::string& bytes) : varbind_(nullptr) {
    variable_list* original = nullptr;
    snmp_varlist_add_variable(&original, nullptr, 0, ASN_OCTET_STR,
                              bytes.data(), bytes.size());
    varbind_ = snmp_clone_varbind(original);
    snmp_free_varbind(original);
    varbind_->type = type;
  }

  // An integer as the agent library keeps it.
  static Varbind Integer(long number, unsigned char type = ASN_INTEGER) {
    return Varbind(type, BytesOf(number));
  }
  static Varbind Text(const std::string& text) {
    return Varbind(ASN_OCTET_STR, text);
  }
  static Varbind WithoutValue() { return Varbind(); }

  ~Varbind() { snmp_free_varbind(varbind_); }
  Varbind(const Varbind&) = delete;
  Varbind& operator=(const Varbind&) = delete;

  operator variable_list*() const { return varbind_; }
  variable_list* operator->() const { return varbind_; }

  std::string Bytes() const {
    return {reinterpret_cast<const char*>(varbind_->val.string),
            varbind_->val_len};
  }

 private:
  Varbind() : Varbind(ASN_INTEGER, BytesOf(42L)) {
    varbind_->val.string = nullptr;
  }

  variable_list* varbind_;
};

#endif  // SNMPSUBAGENT_TESTS_VARBIND_H_
