// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_INDEXWRITER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_INDEXWRITER_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "snmpsubagent/Oid.h"

namespace snmpsubagent {

// Collects the sub-identifiers of an index (RFC 2578, 7.7). An OID has at most
// 128: what is beyond is left out, and IsTooLong() says so.
class IndexWriter {
 public:
  void Add(SubIdentifier id) {
    if (size_ < ids_.size()) {
      ids_[size_++] = id;
    } else {
      tooLong_ = true;
    }
  }
  void AddOctets(std::string_view octets) {
    for (const char octet : octets) Add(static_cast<unsigned char>(octet));
  }

  void Clear() { size_ = 0, tooLong_ = false; }
  OidView View() const { return {ids_.data(), size_}; }
  bool IsTooLong() const { return tooLong_; }

 private:
  std::array<SubIdentifier, Oid::kMaxSize> ids_;
  std::size_t size_ = 0;
  bool tooLong_ = false;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_INDEXWRITER_H_
