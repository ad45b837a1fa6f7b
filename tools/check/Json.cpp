// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Json.h"

#include <array>
#include <cstdio>

namespace snmpsubagent::check {

std::string JsonQuoted(std::string_view text) {
  std::string quoted = "\"";
  for (const unsigned char c : text) {
    if (c == '"' || c == '\\') {
      quoted += {'\\', static_cast<char>(c)};
    } else if (c < 0x20 || c >= 0x7f) {
      std::array<char, 8> escape;
      std::snprintf(escape.data(), escape.size(), "\\u%04x", c);
      quoted += escape.data();
    } else {
      quoted += static_cast<char>(c);
    }
  }
  return quoted + '"';
}

}  // namespace snmpsubagent::check
