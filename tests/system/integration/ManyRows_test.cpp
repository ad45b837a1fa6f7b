// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "support/Session.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::AddStore;
using support::AddTable;
using support::CellOid;
using support::Session;

namespace {

constexpr int kRows = 3000;

TEST(ATableOfManyRows, IsWalkedCompleteAndInOrder) {
  Session session;
  session.Connect();
  auto* const store = AddStore(1, "ports", 1, 2, AddTable(1, "portTable"));
  {
    const NetSNMPAgentGuard guard;
    for (int row = kRows; row > 0; --row) {
      ASSERT_TRUE(store->AddRow(Values(Index(Int(row)), Int(row))));
    }
  }
  const std::vector<std::string> lines =
      session.Manager().BulkWalk(support::TableOid(1)).Lines();
  ASSERT_GE(lines.size(), static_cast<std::size_t>(kRows));
  for (int row = 1; row <= kRows; ++row) {
    const std::string number = std::to_string(row);
    ASSERT_EQ(lines[row - 1], CellOid(1, 2, number) + " = INTEGER: " + number);
  }
}

}  // namespace
