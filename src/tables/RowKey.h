// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWKEY_H_
#define SNMPSUBAGENT_TABLES_ROWKEY_H_

#include <charconv>
#include <cstddef>
#include <string>

// What to set aside in a row key for each index: "." and at most ten digits and
// a sign.
constexpr std::size_t kIndexTextSize = 12;

// Appends to a row key what it has for an index: "." and the number in decimal.
template <typename Number>
void AppendIndexNumber(Number number, std::string& key) {
  char text[16] = {'.'};
  key.append(text, std::to_chars(text + 1, text + sizeof text, number).ptr);
}

#endif  // SNMPSUBAGENT_TABLES_ROWKEY_H_
