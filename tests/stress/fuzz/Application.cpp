// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Application.h"

#include <sys/select.h>

#include <cstring>

#include "NetSNMP.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPSizedCharNodeData.h"
#include "NetSNMPTableNode.h"
#include "support/Oid.h"
#include "support/Values.h"

namespace agentx = testkit::agentx;

namespace {

constexpr int kRows = 3;

// Pings come between the requests of one input, now and then.
constexpr char kConfiguration[] = "agentXPingInterval 15\n";

// Whether the agent library could read something now.
bool SomethingArrived() {
  fd_set descriptors;
  FD_ZERO(&descriptors);
  int count = 0;
  int block = 0;
  timeval timeout{};
  snmp_select_info(&count, &descriptors, &timeout, &block);
  const timespec atOnce{0, 0};
  return pselect(count, &descriptors, nullptr, nullptr, &atOnce, nullptr) > 0;
}

agentx::Oid OnWire(const Oid& oid) { return {oid.begin(), oid.end()}; }

}  // namespace

Application::Application(int masterPort)
    : subAgent_(masterPort, kConfiguration) {
  using testkit::agentx::Type;
  Oid oid = TestOid({3, 1});
  trap_ = new NetSNMPTrapNode(oid.data(), Length(oid), "trap");
  const eNodeAccessMode mode = eNodeAccessReadWrite;
  Assign();
  AddScalar("number", NetSNMPIntNodeData(&number_, mode),
            {Type::kInteger, std::int32_t{7}});
  AddScalar("count", NetSNMPUnsignedIntNodeData(&count_, mode),
            {Type::kGauge32, std::uint32_t{7}});
  AddScalar("truth", NetSNMPBoolNodeData(&truth_, mode),
            {Type::kInteger, std::int32_t{1}});
  AddScalar("text", NetSNMPStringNodeData(&text_, mode),
            {Type::kOctetString, "text"});
  AddScalar("label", NetSNMPCharNodeData(label_.data(), mode),
            {Type::kOctetString, "label"});
  AddScalar("shortLabel",
            NetSNMPSizedCharNodeData(
                shortLabel_.data(),
                static_cast<unsigned int>(shortLabel_.size()), mode),
            {Type::kOctetString, "short"});
  AddScalar(
      "address",
      NetSNMPByteNodeData(address_.data(),
                          static_cast<unsigned int>(address_.size()), mode),
      {Type::kOctetString, std::string(address_.size(), '\0')});
  BuildTable();
  subAgent_.initialize();
}

void Application::Settle() {
  for (int passes = 0; SomethingArrived(); ++passes) {
    Require(passes < 1000, "does not come to rest");
    Pass();
  }
}

void Application::AddScalar(const std::string& name,
                            const NetSNMPNodeData& value,
                            const agentx::Value& read) {
  Oid oid = TestOid({1, names_.size() + 1, 0});
  // Each SET also sends a notification.
  new NetSNMPDataNode(oid.data(), Length(oid), name, value, nullptr, "trap");
  names_.push_back(OnWire(oid));
  values_.push_back(read);
}

void Application::BuildTable() {
  Oid oid = TestOid({2});
  auto* const table = new NetSNMPTableNode(
      oid.data(), Length(oid), "table",
      NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr, nullptr),
      nullptr, "trap");
  oid.push_back(1);
  store_ = new NetSNMPTableEntryNode(oid.data(), Length(oid), "store", "row",
                                     ::Values(Int(0), Unsigned(0)), 4, table);
  for (int row = 1; row <= kRows; ++row) {
    AddRow(row);
    const auto index = static_cast<unsigned long>(row);
    names_.push_back(OnWire(TestOid({2, 1, 3, index, 1})));
    values_.push_back({agentx::Type::kInteger, std::int32_t{row}});
  }
}

void Application::AddRow(int number) {
  store_->AddRow(::Values(Index(Int(number)), Index(Unsigned(1)),
                          Int(number, eNodeAccessReadWrite),
                          NetSNMPStringNodeData(&text_, eNodeAccessReadWrite)));
}

void Application::Act(Input& input) {
  const unsigned int which = input.Below(kPassing);
  switch (input.Below(6)) {
    case 0:
      if (passing_[which] == nullptr) {
        Oid oid = TestOid({0, which, 0});
        passing_[which] = new NetSNMPDataNode(oid.data(), Length(oid),
                                              "passing" + std::to_string(which),
                                              Int(1), nullptr, "trap");
      }
      break;
    case 1:
      delete passing_[which];
      passing_[which] = nullptr;
      break;
    case 2:
      AddRow(static_cast<int>(which));
      break;
    case 3:
      store_->RemoveRow("row." + std::to_string(which) + ".1");
      break;
    case 4:
      NetSNMPDataNode::SetNodeData("number", static_cast<int>(input.U32()));
      break;
    default:
      trap_->TriggerV2Trap(
          static_cast<NetSNMPDataNode*>(NetSNMPNode::nodeMap_->at("count")));
  }
}

void Application::Assign() {
  number_ = 7;
  count_ = 7;
  truth_ = true;
  text_ = "text";
  std::strcpy(label_.data(), "label");
  std::strcpy(shortLabel_.data(), "short");
  address_.fill(0);
}

void Application::Restore() {
  Assign();
  for (NetSNMPDataNode*& node : passing_) {
    delete node;
    node = nullptr;
  }
  while (!store_->rows_.empty()) {
    store_->RemoveRow(std::string(store_->rows_.begin()->first));
  }
  for (int row = 1; row <= kRows; ++row) AddRow(row);
}
