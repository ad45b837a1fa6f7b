// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/ElementReader.h"

#include <algorithm>

#include "agentx/OidPrefix.h"

namespace snmpsubagent::agentx {

void ElementReader::Fail() {
  failed_ = true;
  left_ = 0;
}

OidView ElementReader::ObjectIdentifier() {
  bool include = false;
  return ObjectIdentifier(include);
}

OidView ElementReader::ObjectIdentifier(bool& include) {
  const std::uint8_t* const head = Take(4);
  if (!head) return {};
  const std::size_t count = head[0];
  const std::uint8_t prefix = head[1];
  include = head[2] != 0;
  const std::size_t before = prefix == 0 ? 0 : kPrefixSize;
  const std::uint8_t* const ids = Take(count * sizeof(SubIdentifier));
  if (!ids || before + count > Oid::kMaxSize) {
    Fail();
    return {};
  }

  SubIdentifier* id = room_;
  if (prefix != 0) {
    id = std::copy(std::begin(kInternet), std::end(kInternet), id);
    *id++ = prefix;
  }
  std::memcpy(id, ids, count * sizeof(SubIdentifier));
  if (swap_) {
    for (std::size_t i = 0; i < count; ++i) id[i] = Swapped(id[i]);
  }
  const OidView taken(room_, before + count);
  room_ += taken.size();
  return taken;
}

std::string_view ElementReader::OctetString() {
  const std::size_t size = Number<std::uint32_t>();
  const std::uint8_t* const octets = Take(size);
  Skip((4 - size % 4) % 4);
  if (failed_) return {};
  return {reinterpret_cast<const char*>(octets), size};
}

}  // namespace snmpsubagent::agentx
