// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPNodeData.h"

#include <memory>
#include <type_traits>
#include <typeinfo>

#include "NetSNMP.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "support/Layout.h"
#include "support/OwnerTest.h"
#include "support/VirtualSlot.h"

namespace {

using testing::IsEmpty;

constexpr auto kUnknownType = static_cast<eNodeDataType>(7);

static_assert(std::is_same_v<std::underlying_type_t<eNodeDataType>, int>);
static_assert(std::is_same_v<std::underlying_type_t<eNodeAccessMode>, int>);

// Has one int as local data, as an application-defined class might.
class LocalInt : public NetSNMPNodeData {
 public:
  explicit LocalInt(int value)
      : NetSNMPNodeData(eNodeDataInt, eNodeAccessReadWrite, nullptr, nullptr),
        value_(value) {
    localData_ = &value_;
  }

 private:
  int value_;
};

NetSNMPNodeData Untyped(eNodeDataType type = eNodeDataVoid,
                        eNodeAccessMode mode = eNodeAccessDefault,
                        void* storage = nullptr,
                        NetSNMPDataNode* owner = nullptr) {
  return NetSNMPNodeData(type, mode, storage, owner);
}

TEST(TheTypesOfValues, HaveTheirFixedNumbers) {
  EXPECT_EQ(eNodeDataVoid, 0);
  EXPECT_EQ(eNodeDataInt, 1);
  EXPECT_EQ(eNodeDataUnsignedInt, 2);
  EXPECT_EQ(eNodeDataString, 3);
  EXPECT_EQ(eNodeDataChar, 4);
  EXPECT_EQ(eNodeDataBool, 5);
  EXPECT_EQ(eNodeDataByte, 6);
}

TEST(TheAccessModes, HaveTheirFixedNumbers) {
  EXPECT_EQ(eNodeAccessDefault, 0);
  EXPECT_EQ(eNodeAccessReadOnly, 1);
  EXPECT_EQ(eNodeAccessReadWrite, 2);
  EXPECT_EQ(eNodeAccessWriteOnly, 3);
}

class AnUntypedValue : public OwnerTest {};

TEST_F(AnUntypedValue, StartsWithWhatItIsGivenAndNotificationOn) {
  int storage = 0;
  NetSNMPDataNode* const owner = BuildOwner();
  const NetSNMPNodeData value =
      Untyped(eNodeDataString, eNodeAccessWriteOnly, &storage, owner);
  EXPECT_EQ(value.dataType_, eNodeDataString);
  EXPECT_EQ(value.accessMode_, eNodeAccessWriteOnly);
  EXPECT_EQ(value.externalData_, &storage);
  EXPECT_EQ(value.localData_, nullptr);
  EXPECT_EQ(value.columnNumber_, 0U);
  EXPECT_EQ(value.ownerNode_, owner);
  EXPECT_FALSE(value.tableData_);
  EXPECT_FALSE(value.isIndex_);
  EXPECT_TRUE(value.notifyEnabled_);
}

TEST_F(AnUntypedValue, IsNullForTheAgentLibraryWhateverItsType) {
  int storage = 7;
  for (const eNodeDataType type : {eNodeDataVoid, eNodeDataInt, kUnknownType}) {
    const NetSNMPNodeData value = Untyped(type, eNodeAccessReadWrite, &storage);
    EXPECT_EQ(value.NodeASNDataType(), ASN_NULL);
    EXPECT_EQ(value.NodeByteValue(), nullptr);
    EXPECT_EQ(value.NodeValueSize(), 0U);
  }
}

TEST_F(AnUntypedValue, IgnoresWhatItIsSetTo) {
  int storage = 7;
  NetSNMPNodeData value =
      Untyped(eNodeDataInt, eNodeAccessReadWrite, &storage, BuildOwner());
  const unsigned char bytes[] = {1, 2, 3, 4};
  value.NodeDataValue(1, true);
  value.NodeDataValue(1U, true);
  value.NodeDataValue(true, true);
  value.NodeDataValue(std::string("1"), true);
  value.NodeDataValue("1", true);
  value.NodeDataValue(bytes, 4, true);
  EXPECT_EQ(storage, 7);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(AnUntypedValue, ReadsItsLocalDataElseItsExternalStorage) {
  int external = 0;
  int local = 0;
  NetSNMPNodeData value = Untyped();
  EXPECT_EQ(value.NodeDataValue(), nullptr);
  value.externalData_ = &external;
  EXPECT_EQ(value.NodeDataValue(), &external);
  value.localData_ = &local;
  EXPECT_EQ(value.NodeDataValue(), &local);
}

TEST_F(AnUntypedValue, ForgetsLocalDataWithoutFreeingIt) {
  int local = 0;
  NetSNMPNodeData value = Untyped();
  value.localData_ = &local;
  value.DeleteLocalData();
  EXPECT_EQ(value.localData_, nullptr);
  value.localData_ = &local;  // The destructor forgets it in the same way.
}

TEST_F(AnUntypedValue, GivesEveryFieldToItsCopies) {
  int storage = 0;
  NetSNMPDataNode* const owner = BuildOwner();
  NetSNMPNodeData source =
      Untyped(kUnknownType, eNodeAccessReadOnly, &storage, owner);
  source.columnNumber_ = 3;
  source.tableData_ = true;
  source.isIndex_ = true;
  source.notifyEnabled_ = false;
  NetSNMPNodeData assigned = Untyped();
  assigned.CopyData(source);
  const NetSNMPNodeData constructed(source);
  const std::unique_ptr<NetSNMPNodeData> clone(source.Clone());
  const NetSNMPNodeData* const copies[] = {&assigned, &constructed,
                                           clone.get()};
  for (const NetSNMPNodeData* copy : copies) {
    EXPECT_EQ(copy->dataType_, kUnknownType);
    EXPECT_EQ(copy->accessMode_, eNodeAccessReadOnly);
    EXPECT_EQ(copy->externalData_, &storage);
    EXPECT_EQ(copy->localData_, nullptr);
    EXPECT_EQ(copy->columnNumber_, 3U);
    EXPECT_EQ(copy->ownerNode_, owner);
    EXPECT_TRUE(copy->tableData_);
    EXPECT_TRUE(copy->isIndex_);
    EXPECT_FALSE(copy->notifyEnabled_);
  }
}

TEST_F(AnUntypedValue, RefersToNoStorageAfterCopyingLocalData) {
  int external = 0;
  LocalInt source(42);
  source.externalData_ = &external;
  NetSNMPNodeData value = Untyped(eNodeDataVoid, eNodeAccessDefault, &external);
  value.CopyData(source);
  EXPECT_EQ(value.externalData_, nullptr);
  EXPECT_EQ(value.localData_, nullptr);
}

TEST_F(AnUntypedValue, KeepsItsOwnLocalDataWhenItCopies) {
  int external = 0;
  LocalInt value(42);
  void* const local = value.localData_;
  value.CopyData(Untyped(eNodeDataInt, eNodeAccessDefault, &external));
  EXPECT_EQ(value.externalData_, &external);
  EXPECT_EQ(value.NodeDataValue(), local);
}

TEST_F(AnUntypedValue, ClonesToTheBaseClass) {
  const std::unique_ptr<NetSNMPNodeData> clone(Untyped().Clone());
  const NetSNMPNodeData& value = *clone;
  EXPECT_EQ(typeid(value), typeid(NetSNMPNodeData));
}

struct AccessCase {
  int mode;
  int handlerModes;
  bool writable;
};

TEST(AnAccessMode, DecidesOnHandlerModesAndWritability) {
  const AccessCase cases[] = {
      {0, 9, false}, {1, 1, false},  {2, 3, true},    {3, 10, true},
      {4, 9, false}, {-1, 9, false}, {256, 9, false},
  };
  for (const AccessCase& each : cases) {
    const NetSNMPNodeData value =
        Untyped(eNodeDataInt, static_cast<eNodeAccessMode>(each.mode));
    EXPECT_EQ(value.NodeHandlerModes(), each.handlerModes) << each.mode;
    EXPECT_EQ(value.NodeWritable(), each.writable) << each.mode;
  }
}

TEST(AnIndex, HasAnAsnTypeOnlyWhenItIsAnInteger) {
  const std::pair<int, int> types[] = {
      {0, 0}, {1, ASN_INTEGER}, {2, ASN_UNSIGNED},
      {3, 0}, {4, 0},           {5, 0},
      {6, 0}, {7, 0},           {-1, 0}};
  for (const auto& [type, asnType] : types) {
    const NetSNMPNodeData value = Untyped(static_cast<eNodeDataType>(type));
    EXPECT_EQ(value.NodeIndexASNDataType(), asnType) << type;
  }
}

TEST(AValue, IsNeverAssigned) {
  EXPECT_TRUE(std::is_copy_constructible_v<NetSNMPNodeData>);
  EXPECT_FALSE(std::is_copy_assignable_v<NetSNMPNodeData>);
}

TEST(AValue, HasItsFieldsInTheirFixedOrder) {
  const NetSNMPNodeData value = Untyped();
  EXPECT_TRUE(LieInOrder(
      {&value, &value.dataType_, &value.accessMode_, &value.externalData_,
       &value.localData_, &value.columnNumber_, &value.ownerNode_,
       &value.tableData_, &value.isIndex_, &value.notifyEnabled_}));
}

template <typename... Parameters>
std::ptrdiff_t SetterSlot() {
  return VirtualSlot<void (NetSNMPNodeData::*)(Parameters...)>(
      &NetSNMPNodeData::NodeDataValue);
}

TEST(AValue, HasItsVirtualOperationsInTheirFixedSlots) {
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::Clone), 0);
  // Slots 1 and 2 are the destructor's.
  EXPECT_TRUE(std::has_virtual_destructor_v<NetSNMPNodeData>);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::CopyData), 3);
  EXPECT_EQ((SetterSlot<int, bool>()), 4);
  EXPECT_EQ((SetterSlot<unsigned int, bool>()), 5);
  EXPECT_EQ((SetterSlot<bool, bool>()), 6);
  EXPECT_EQ((SetterSlot<const std::string&, bool>()), 7);
  EXPECT_EQ((SetterSlot<const char*, bool>()), 8);
  EXPECT_EQ((SetterSlot<const unsigned char*, unsigned int, bool>()), 9);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeByteValue), 10);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeValueSize), 11);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeASNDataType), 12);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::DeleteLocalData), 13);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::OnSetNodeValue), 14);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeDataLogMessage), 15);
}

TEST(AValue, HasNoOtherVirtualOperations) {
  EXPECT_EQ(VirtualSlot<void* (NetSNMPNodeData::*)() const>(
                &NetSNMPNodeData::NodeDataValue),
            -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeIndexASNDataType), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeHandlerModes), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeWritable), -1);
  EXPECT_EQ(VirtualSlot(&NetSNMPNodeData::NodeDataToString), -1);
}

}  // namespace
