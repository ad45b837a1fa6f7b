// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_ROWKEY_H_
#define SNMPSUBAGENT_TABLES_ROWKEY_H_

#include <string>

#include "tables/RowIndex.h"

// The key of a row in its store: the store's prefix and, for each integer index
// value, "." and the number in decimal.
namespace row_key {

// Writes the key of a row of these values into `key`. Returns the number of
// integer index values.
int Write(const std::string& prefix, const RowIndex::Row& values,
          std::string& key);

// The key of an indexed row, without reading its values.
std::string Of(const std::string& prefix,
               const RowIndex::IndexedRows::value_type& indexed);

}  // namespace row_key

#endif  // SNMPSUBAGENT_TABLES_ROWKEY_H_
