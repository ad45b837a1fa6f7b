// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a value notifies when it was set.
#include <string>
#include <vector>

#include "support/OwnerTest.h"

namespace {

using testing::IsEmpty;

NetSNMPNodeData OwnedBy(NetSNMPDataNode* owner) {
  return NetSNMPNodeData(eNodeDataVoid, eNodeAccessDefault, nullptr, owner);
}

struct NotificationCase {
  const char* description;
  bool enabled;
  bool tableData;
  void (*callback)(NetSNMPDataNode*);
  const std::vector<std::string>& lines;
};

class AChangeOfAValue : public OwnerTest {};

TEST_F(AChangeOfAValue, CallsTheCallbackOfTheOwnerElseFiresItsTrap) {
  const NotificationCase cases[] = {
      {"no callback", true, false, nullptr, kTrap},
      {"callback", true, false, LogCall, kCallback},
      {"table cell, no callback", true, true, nullptr, kTrap},
      {"table cell, callback", true, true, LogCall, kTrap},
      {"off, no callback", false, false, nullptr, kNothing},
      {"off, callback", false, false, LogCall, kNothing},
  };
  NetSNMPDataNode* const owner = BuildOwner();
  for (const NotificationCase& each : cases) {
    owner->trapCallback_ = each.callback;
    NetSNMPNodeData value = OwnedBy(owner);
    value.notifyEnabled_ = each.enabled;
    value.tableData_ = each.tableData;
    value.OnSetNodeValue();
    EXPECT_EQ(log_.Lines(), each.lines) << each.description;
  }
}

TEST_F(AChangeOfAValue, WithoutAnOwnerTellsNobody) {
  OwnedBy(nullptr).OnSetNodeValue();
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

NetSNMPDataNode* calledFor = nullptr;

TEST_F(AChangeOfAValue, PassesTheOwnerToItsCallback) {
  NetSNMPDataNode* const owner =
      BuildOwner([](NetSNMPDataNode* node) { calledFor = node; });
  OwnedBy(owner).OnSetNodeValue();
  EXPECT_EQ(calledFor, owner);
}

TEST_F(AChangeOfAValue, EndsQuietlyWhenTheCallbackDeletesTheOwner) {
  NetSNMPDataNode* const owner =
      BuildOwner([](NetSNMPDataNode* node) { delete node; });
  owner->nodeData_->OnSetNodeValue();
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(AChangeOfAValue, EndsQuietlyWhenTheCallbackReplacesTheOwner) {
  NetSNMPDataNode* const owner =
      BuildOwner([](NetSNMPDataNode*) { BuildOwner(); });
  owner->nodeData_->OnSetNodeValue();
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

}  // namespace
